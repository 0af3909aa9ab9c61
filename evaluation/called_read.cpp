#include "evaluation/called_read.h"

#include <algorithm>

#include "decoder/coding_region.h"
#include "decoder/layout.h"
#include "decoder/frame_error.h"

namespace velto {
namespace {

int stepAt(const std::vector<int>& path, int step) {
  return step >= 0 && step < static_cast<int>(path.size()) ? path[static_cast<size_t>(step)]
                                                           : kOffPath;
}

}  // namespace

CalledRead calledRead(const std::vector<int>& path, double score, int length) {
  CalledRead called;
  called.frame.assign(static_cast<size_t>(length), -1);
  const CodingRegion region = codingRegion(path, score);
  if (region.start < 0) return called;
  called.start = region.start;
  called.stop = region.stop;
  const int last = std::min(region.stop, length - 1);
  int frame = stepAt(path, region.start / 3);
  for (int p = region.start; p <= last; ++p) {
    const int current = stepAt(path, p / 3);
    const FrameError error = frameErrorAt(stepAt(path, p / 3 - 1), current, p % 3);
    if (error != FrameError::kNone) {
      called.shifts.push_back({p, error == FrameError::kInsertion});
      frame = current;
    }
    if (error != FrameError::kInsertion) {
      called.frame[static_cast<size_t>(p)] = static_cast<signed char>(frame);
    }
  }
  return called;
}

}  // namespace velto
