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

}  // namespace

void callPath(const std::vector<int>& path, double score, int length, Call& call) {
  const CodingRegion region = codingRegion(path, score);
  call.score = score;
  call.coding = region.start >= 0;
  call.start = region.start;
  call.stop = region.stop;
  if (!call.coding) return;
  call.frame.assign(static_cast<std::size_t>(length), kOffPath);
  const int last = std::min(region.stop, length - 1);
  int frame = frameAt(path, region.start / 3);
  for (int p = region.start; p <= last; ++p) {
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

}  // namespace velto
