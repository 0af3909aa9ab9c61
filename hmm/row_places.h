// Where in the window network the rows of k-mers begin, for reads side by side.
#pragma once

#include <cstdint>
#include <vector>

#include "hmm/read_context.h"

namespace velto {

// Room for the farthest offsets stands on either side, all unknown k-mers.
class RowPlaces {
 public:
  // For so many reads of up to so many positions, all unknown k-mers at first.
  void arrange(const WindowNetwork& network, std::size_t reads, std::size_t positions) {
    reads_ = reads;
    stride_ = static_cast<std::uint32_t>(network.rowStride());
    const auto unknown = static_cast<std::uint32_t>(network.unknownKmer()) * stride_;
    places_.assign((positions + 2 * kMostOffset) * reads, unknown);
  }

  // Fills in the k-mers of a read that begins at a position.
  void fill(const WindowNetwork& network, const ReadContext& context, std::size_t read,
            std::size_t begin) {
    std::uint32_t* out = places_.data() + (kMostOffset + begin) * reads_ + read;
    // Kept apart from what is written, which might change them for all that a compiler knows.
    const int letters = network.letters, unknown = network.unknownKmer();
    const std::uint32_t stride = stride_;
    for (std::size_t i = 0; i < context.length(); ++i, out += reads_) {
      const int kmer = context.kmer(i, letters);
      *out = static_cast<std::uint32_t>(kmer < 0 ? unknown : kmer) * stride;
    }
  }

  // Of a position and those around it: [reads x offset of the position + read] place among the
  // rows of an offset of the network.
  const std::uint32_t* at(std::size_t position) const {
    return places_.data() + (kMostOffset + position) * reads_;
  }

 private:
  std::size_t reads_ = 1;
  std::uint32_t stride_ = 0;
  std::vector<std::uint32_t> places_;  // [position][read]
};

}  // namespace velto
