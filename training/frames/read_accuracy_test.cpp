#include "training/frames/read_accuracy.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

// A read of 18 bases, coding from 3 to 14 in frame 0.
SimulatedRead exampleRead() {
  SimulatedRead read;
  read.bases.assign(18, 0);
  read.frame.assign(18, -1);
  for (std::size_t i = 3; i <= 14; ++i) read.frame[i] = 0;
  read.start = 3;
  read.stop = 14;
  read.startInside = read.stopInside = true;
  return read;
}

TEST(ReadAccuracy, ExactPathIsWhollyRight) {
  AccuracyTally tally;
  tallyRead(exampleRead(), {-1, 0, 0, 0, 0, -1}, {3, 14}, tally);
  EXPECT_EQ(tally.bases, 18);
  EXPECT_EQ(tally.coding, 12);
  EXPECT_EQ(tally.called, 12);
  EXPECT_EQ(tally.codingCalled, 12);
  EXPECT_EQ(tally.inFrame, 12);
  EXPECT_EQ(tally.exactRate(), 1.0);
  EXPECT_EQ(tally.frameF1(), 1.0);
  EXPECT_EQ(tally.correlation(), 1.0);
}

TEST(ReadAccuracy, OtherFrameIsCodingButNotRight) {
  AccuracyTally tally;
  // Codons at 4 and 7.
  tallyRead(exampleRead(), {-1, 1, 1, -1, -1, -1}, {4, 9}, tally);
  EXPECT_EQ(tally.called, 6);
  EXPECT_EQ(tally.codingCalled, 6);
  EXPECT_EQ(tally.inFrame, 0);
  EXPECT_EQ(tally.exactRegions, 0);
}

TEST(ReadAccuracy, BaseSkippedByAFrameChangeBelongsToTheCodonBehindIt) {
  AccuracyTally tally;
  // Codons at 3 and 7: base 6 is called in the second frame, as are 7 to 9.
  tallyRead(exampleRead(), {-1, 0, 1, -1, -1, -1}, {3, 9}, tally);
  EXPECT_EQ(tally.called, 7);
  EXPECT_EQ(tally.inFrame, 3);
}

TEST(ReadAccuracy, ReadWithoutCallCountsItsCodingBases) {
  AccuracyTally tally;
  tallyRead(exampleRead(), std::vector<int>(6, -1), {-1, -1}, tally);
  EXPECT_EQ(tally.reads, 1);
  EXPECT_EQ(tally.readsCalled, 0);
  EXPECT_EQ(tally.frameRecall(), 0.0);
  EXPECT_EQ(tally.frameF1(), 0.0);
  EXPECT_EQ(tally.correlation(), 0.0);
}

TEST(ReadAccuracy, SharesFollowTheirDefinition) {
  AccuracyTally tally;
  tally.bases = 100;
  tally.coding = 40;
  tally.called = 50;
  tally.codingCalled = 30;
  tally.inFrame = 20;
  EXPECT_DOUBLE_EQ(tally.frameRecall(), 0.5);
  EXPECT_DOUBLE_EQ(tally.framePrecision(), 0.4);
  EXPECT_DOUBLE_EQ(tally.frameF1(), 2 * 0.5 * 0.4 / 0.9);
  // (30 x 40 - 20 x 10) / sqrt(50 x 40 x 60 x 50)
  EXPECT_NEAR(tally.correlation(), 0.408248, 1e-6);
}

}  // namespace
}  // namespace velto
