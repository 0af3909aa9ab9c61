#include "decoder/placed_call.h"

#include <algorithm>

#include "decoder/coding_region.h"
#include "decoder/frame_error.h"
#include "decoder/layout.h"

namespace velto {
namespace {

int frameAt(const std::vector<int>& path, int step) {
  const bool inside = step >= 0 && step < static_cast<int>(path.size());
  return inside ? path[static_cast<std::size_t>(step)] : kOffPath;
}

// The first step from this one on whose frame is not that of the step before, at most `steps`.
int nextChange(const std::vector<int>& path, int step, int steps) {
  while (step < steps && frameAt(path, step) == frameAt(path, step - 1)) ++step;
  return step;
}

// Calls the bases from `p` up to `end`, all of one step, whose frame differs from that of the step
// before. `frame` is that of the bases before, and then that of the last base.
void callChange(const std::vector<int>& path, int p, int end, int& frame, Call& call) {
  for (; p < end; ++p) {
    const int current = frameAt(path, p / 3);
    const FrameError error = frameErrorAt(frameAt(path, p / 3 - 1), current, p % 3);
    const bool inserted = error == FrameError::kInsertion;
    if (error != FrameError::kNone) {
      call.frameshifts.push_back(
          {inserted ? Frameshift::Kind::kInsertion : Frameshift::Kind::kDeletion, p});
      frame = current;
    }
    if (!inserted) call.frame[static_cast<std::size_t>(p)] = static_cast<std::int8_t>(frame);
  }
}

// Calls the bases from `start` up to `end`.
void callRegion(const std::vector<int>& path, int start, int end, Call& call) {
  const int steps = (end + 2) / 3;
  int frame = frameAt(path, start / 3);
  for (int p = start; p < end;) {
    const int change = std::max(p, std::min(end, 3 * nextChange(path, p / 3, steps)));
    std::fill(call.frame.begin() + p, call.frame.begin() + change, static_cast<std::int8_t>(frame));
    p = std::min(end, change - change % 3 + 3);
    callChange(path, change, p, frame, call);
  }
}

}  // namespace

void callPath(const std::vector<int>& path, double score, int length, Call& call) {
  const CodingRegion region = codingRegion(path, score);
  call.score = call.strandScore = score;
  call.coding = region.start >= 0;
  call.start = region.start;
  call.stop = region.stop;
  if (!call.coding) return;
  call.frame.assign(static_cast<std::size_t>(length), kOffPath);
  callRegion(path, region.start, std::min(region.stop + 1, length), call);
}

}  // namespace velto
