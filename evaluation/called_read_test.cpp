#include "evaluation/called_read.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

constexpr double kFound = 5.0;

std::vector<int> frames(const CalledRead& called) {
  return {called.frame.begin(), called.frame.end()};
}

TEST(CalledRead, BasesOfThePathsCodonsAreCalledInTheirFrame) {
  // Steps 1 and 2 in frame 1: codons at bases 4 to 6 and 7 to 9.
  const CalledRead called = calledRead({-1, 1, 1, -1}, kFound, 12);
  EXPECT_EQ(called.start, 4);
  EXPECT_EQ(called.stop, 9);
  EXPECT_EQ(frames(called), (std::vector<int>{-1, -1, -1, -1, 1, 1, 1, 1, 1, 1, -1, -1}));
  EXPECT_TRUE(called.shifts.empty());
}

TEST(CalledRead, InsertedBaseIsNotCalledAndTheFrameChangesBehindIt) {
  // Frame 0, codons 0-2 and 3-5; base 6 inserted; frame 1, codons 7-9 and 10-12.
  const CalledRead called = calledRead({0, 0, 1, 1, -1}, kFound, 14);
  EXPECT_EQ(called.shifts, (std::vector<FrameShift>{{6, true}}));
  EXPECT_EQ(frames(called), (std::vector<int>{0, 0, 0, 0, 0, 0, -1, 1, 1, 1, 1, 1, 1, -1}));
}

TEST(CalledRead, InsertionFromFrameTwoToNoughtKeepsTheOldCodonWhole) {
  // Frame 2, codon 2-4 of step 0; step 1 in frame 0: base 5 is inserted, codons go on at 6.
  const CalledRead called = calledRead({2, 0, 0, -1}, kFound, 9);
  EXPECT_EQ(called.shifts, (std::vector<FrameShift>{{5, true}}));
  EXPECT_EQ(frames(called), (std::vector<int>{-1, -1, 2, 2, 2, -1, 0, 0, 0}));
}

TEST(CalledRead, BasesOfACodonCutByADeletionKeepTheOldFrame) {
  // Frame 0 up to base 5; bases 6 and 7 lost their third base; frame 2 from base 8.
  const CalledRead called = calledRead({0, 0, 2, 2, -1}, kFound, 14);
  EXPECT_EQ(called.shifts, (std::vector<FrameShift>{{8, false}}));
  EXPECT_EQ(frames(called), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0, 2, 2, 2, 2, 2, 2}));
}

TEST(CalledRead, ScoreOfMinusNineCallsNothing) {
  const CalledRead called = calledRead({0, 0, 1, 1, -1}, -9.0, 14);
  EXPECT_FALSE(called.isCoding());
  EXPECT_EQ(called.stop, -1);
  EXPECT_EQ(frames(called), std::vector<int>(14, -1));
  EXPECT_TRUE(called.shifts.empty());
}

TEST(CalledRead, FramesEndWithTheRead) {
  // Step 1 in frame 2 would reach base 7 of a read of seven bases.
  const CalledRead called = calledRead({2, 2, -1}, kFound, 7);
  EXPECT_EQ(called.stop, 7);
  EXPECT_EQ(frames(called), (std::vector<int>{-1, -1, 2, 2, 2, 2, 2}));
}

}  // namespace
}  // namespace velto
