#include "decoder/coding_region.h"

#include "decoder/layout.h"

namespace velto {
namespace {

// Last base of the codon of step i in frame f.
int lastBase(size_t i, int f) { return 3 * static_cast<int>(i) + f + 2; }

}  // namespace

CodingRegion codingRegion(const std::vector<int>& path, double score) {
  CodingRegion region{0, 0};
  if (score > kLeastCodingScore) {
    size_t i = 0;
    while (i < path.size() && path[i] == kOffPath) ++i;
    if (i < path.size()) {
      region.start = 3 * static_cast<int>(i) + path[i];
      const size_t first = i;
      while (i < path.size() && path[i] != kOffPath) ++i;
      const bool isLastStepOnly = first + 1 == path.size();
      if (!isLastStepOnly) region.stop = lastBase(i - 1, path[i - 1]);
    }
  }
  if (region.start == 0 && region.stop == 0) return {-1, -1};
  return region;
}

}  // namespace velto
