#include "hmm/read_groups.h"

#include <algorithm>
#include <numeric>

#ifdef VELTO_HIGHWAY
#include "hmm/lane_emissions.h"
#endif

namespace velto {
namespace {

#ifdef VELTO_HIGHWAY
constexpr std::size_t kMostReads = kLanes;
#else
constexpr std::size_t kMostReads = 1;
#endif

// Longer reads, of which eight would take more than 30 MB, are run alone.
constexpr std::size_t kMostBases = 20000;

// Lanes take as long for one read as for eight.
constexpr std::size_t kLeastReads = 4;

}  // namespace

ReadGroups::ReadGroups(std::span<const ReadView> reads) : order_(reads.size()) {
  const auto length = [&](std::size_t index) { return reads[index].codes.size(); };
  std::iota(order_.begin(), order_.end(), std::size_t{0});
  std::stable_sort(order_.begin(), order_.end(),
                   [&](std::size_t a, std::size_t b) { return length(a) > length(b); });
  for (std::size_t first = 0; first < order_.size(); first = ends_.back()) {
    const std::size_t count = std::min(kMostReads, order_.size() - first);
    const bool isAlone = count < kLeastReads || length(order_[first]) > kMostBases;
    ends_.push_back(first + (isAlone ? 1 : count));
  }
}

}  // namespace velto
