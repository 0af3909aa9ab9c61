// Reads of like length, which lanes run together.
#pragma once

#include <span>
#include <vector>

#include "core/read_view.h"

namespace velto {

// Groups of some reads, the longest reads first. Lanes run the reads of a group together; a group
// of one read is run alone.
class ReadGroups {
 public:
  explicit ReadGroups(std::span<const ReadView> reads);

  std::size_t size() const { return ends_.size(); }

  // Indexes of the reads of a group.
  std::span<const std::size_t> operator[](std::size_t group) const {
    const std::size_t begin = group == 0 ? 0 : ends_[group - 1];
    return std::span(order_).subspan(begin, ends_[group] - begin);
  }

 private:
  std::vector<std::size_t> order_;  // indexes of the reads
  std::vector<std::size_t> ends_;   // [group] place in the order behind its last read
};

}  // namespace velto
