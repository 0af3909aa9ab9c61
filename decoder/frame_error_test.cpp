#include "decoder/frame_error.h"

#include <gtest/gtest.h>

#include <map>
#include <tuple>

namespace velto {
namespace {

TEST(FrameError, HoldsForExactlySixChangesAtOneResidueEach) {
  const std::map<std::tuple<int, int, int>, FrameError> known = {
      {{0, 1, 0}, FrameError::kInsertion}, {{1, 2, 1}, FrameError::kInsertion},
      {{2, 0, 2}, FrameError::kInsertion}, {{0, 2, 2}, FrameError::kDeletion},
      {{2, 1, 1}, FrameError::kDeletion},  {{1, 0, 0}, FrameError::kDeletion}};
  for (int previous = -1; previous <= 2; ++previous) {
    for (int current = -1; current <= 2; ++current) {
      for (int residue = 0; residue < 3; ++residue) {
        const auto at = known.find({previous, current, residue});
        EXPECT_EQ(frameErrorAt(previous, current, residue),
                  at == known.end() ? FrameError::kNone : at->second)
            << previous << " " << current << " " << residue;
      }
    }
  }
}

TEST(FrameError, NeedsTwoFrames) {
  EXPECT_EQ(frameErrorAt(3, 1, 0), FrameError::kNone);
  EXPECT_EQ(frameErrorAt(2, 3, 0), FrameError::kNone);
}

}  // namespace
}  // namespace velto
