#include "decoder/frame_error.h"

namespace velto {

FrameError frameErrorAt(int previous, int current, int residue) {
  // Frame changes 0-1, 1-2 and 2-0 are insertions, 0-2, 2-1 and 1-0 deletions; each shows at the
  // base whose residue is the first of the new frame's codon, or the base before it.
  static constexpr int kInsertionResidue[3] = {0, 1, 2};  // [previous]
  static constexpr int kDeletionResidue[3] = {2, 0, 1};   // [previous]
  if (previous < 0 || current < 0 || previous > 2 || current > 2) return FrameError::kNone;
  if (current == (previous + 1) % 3 && residue == kInsertionResidue[previous]) {
    return FrameError::kInsertion;
  }
  if (current == (previous + 2) % 3 && residue == kDeletionResidue[previous]) {
    return FrameError::kDeletion;
  }
  return FrameError::kNone;
}

}  // namespace velto
