#include "decoder/coding_region.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

void expectRegion(const std::vector<int>& path, double score, int start, int stop) {
  const CodingRegion region = codingRegion(path, score);
  EXPECT_EQ(region.start, start);
  EXPECT_EQ(region.stop, stop);
}

TEST(CodingRegion, PathFromStepZeroInFrameZeroStartsAtBaseZero) {
  expectRegion({0, 0, 0, -1}, 5.0, 0, 8);  // last codon: step 2, bases 6 to 8
}

TEST(CodingRegion, StopIsTheLastBaseOfTheCodonBeforeThePathIsLeft) {
  expectRegion({-1, 1, 1, 2, -1, -1}, 5.0, 4, 13);  // step 3, frame 2: bases 11 to 13
}

TEST(CodingRegion, PathThatRunsToItsLastStepStopsThere) {
  expectRegion({-1, 2, 2, 2}, 5.0, 5, 13);  // 3 x 3 + 2 + 2
}

TEST(CodingRegion, PathEnteredAtItsVeryLastStepHasStopZero) {
  expectRegion({-1, -1, 1}, 5.0, 7, 0);
}

TEST(CodingRegion, OnlyTheFirstCodingRunCounts) { expectRegion({-1, 0, 0, -1, 1, 1}, 5.0, 3, 8); }

TEST(CodingRegion, ScoreOfMinusNineIsNothingFound) {
  expectRegion({0, 0, 0, -1}, -9.0, -1, -1);
  expectRegion({0, 0, 0, -1}, -8.999, 0, 8);
  expectRegion({0, 0, 0, -1}, -10.0, -1, -1);
}

TEST(CodingRegion, PathWithoutACodingStepIsNothingFound) {
  expectRegion({-1, -1}, 5.0, -1, -1);
  expectRegion({}, 5.0, -1, -1);
}

TEST(CodingRegion, SingleStepPathInFrameZeroIsNothingFound) {
  expectRegion({0}, 5.0, -1, -1);  // start and stop are both 0
}

}  // namespace
}  // namespace velto
