// Some reads of a sample, spread over it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "core/read_view.h"

namespace velto {

// Ascending indexes of up to `most` of so many reads.
inline std::vector<std::size_t> chosenIndexes(std::size_t reads, std::size_t most) {
  std::vector<std::size_t> indexes(std::min(most, reads));
  for (std::size_t k = 0; k < indexes.size(); ++k) indexes[k] = k * reads / indexes.size();
  return indexes;
}

// The reads at these indexes that have a base.
inline std::vector<ReadView> chosenReads(std::span<const ReadView> sample, std::size_t most) {
  std::vector<ReadView> chosen;
  for (const std::size_t index : chosenIndexes(sample.size(), most)) {
    if (!sample[index].codes.empty()) chosen.push_back(sample[index]);
  }
  return chosen;
}

}  // namespace velto
