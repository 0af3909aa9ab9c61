#include "draw/lanes.h"

#include <gtest/gtest.h>

#include <cmath>

#include "draw/test_read.h"

namespace velto {
namespace {

using test::KnownRead;

TEST(Lanes, ColumnsAreMeansOfTheirBases) {
  KnownRead read = test::longRead(5, 0.0, 0.9);
  read.prediction.scores[1] = {0.2, 0.4, 0.6, 0.8, 1.0};
  const LaneCurves curves = laneCurves(read.prediction, 2);  // bases 0 to 1, 2 to 4
  ASSERT_EQ(curves.values[1].size(), 2U);
  EXPECT_DOUBLE_EQ(curves.values[1][0], 0.3);
  EXPECT_DOUBLE_EQ(curves.values[1][1], 0.8);
  EXPECT_FALSE(curves.isVote);
  EXPECT_EQ(curves.most, 1.0);
}

TEST(Lanes, ShortReadsHaveAColumnABase) {
  EXPECT_EQ(laneCurves(test::longRead(5, 0.5, 0.9).prediction, 100).values[2].size(), 5U);
}

TEST(Lanes, VotesAreScaledByTheLargestAndPlacesWithoutAVoteTakeTheOneBefore) {
  KnownRead read = test::longRead(4, 1.0, std::nan(""));
  read.prediction.scores[0] = {-10.0, 2.0, -10.0, -3.0};
  const LaneCurves curves = laneCurves(read.prediction, 4);
  EXPECT_TRUE(curves.isVote);
  EXPECT_EQ(curves.most, 3.0);
  EXPECT_EQ(curves.values[0], (std::vector<double>{0.0, 2.0, 2.0, -3.0}));
}

TEST(Lanes, WithoutScoresThereAreNoCurves) {
  EXPECT_TRUE(laneCurves(test::codingRead().prediction, 10).empty());
}

TEST(Lanes, ThePathMeetsItselfInTheMiddleOfAnInsertedBase) {
  const std::vector<FrameRun> runs = calledRuns(test::codingRead().prediction, 1);
  ASSERT_EQ(runs.size(), 3U);
  EXPECT_EQ(runs[0].begin, 6);
  EXPECT_EQ(runs[0].end, 20);
  EXPECT_EQ(runs[0].frame, 0);
  EXPECT_EQ(runs[1].begin, 20);
  EXPECT_EQ(runs[1].end, 35.5);
  EXPECT_EQ(runs[1].frame, 2);
  EXPECT_EQ(runs[2].begin, 35.5);
  EXPECT_EQ(runs[2].end, 51);
  EXPECT_EQ(runs[2].frame, 0);
}

TEST(Lanes, RunsThatHoldTheMiddleOfNoCellJoinTheRunBefore) {
  // Cells of 40 bases have their middles at 20 and 60: the run from 20 to 35.5 holds the first.
  const std::vector<FrameRun> runs = calledRuns(test::codingRead().prediction, 40);
  ASSERT_EQ(runs.size(), 2U);
  EXPECT_EQ(runs[0].end, 20);
  EXPECT_EQ(runs[1].end, 51);
  EXPECT_EQ(runs[1].frame, 2);
}

TEST(Lanes, ThePathOfARegionBeyondTheReadEndsWithTheRead) {
  KnownRead read = test::longRead(31, 0, 0.9);
  read.prediction.stop = 32;
  EXPECT_EQ(calledRuns(read.prediction, 1).back().end, 31);
}

TEST(Lanes, NoncodingReadsHaveNoPath) {
  EXPECT_TRUE(
      calledRuns(test::otherRead(Prediction::Status::kNoncoding, 60).prediction, 1).empty());
}

TEST(Lanes, StartsAndStopsAreFoundInTheirFrames) {
  const SignalCodons codons =
      signalCodons("ATGATAAGTGA", *geneticCode(1));  // ATG 0, TGA 1, TAA 4, TGA 8
  EXPECT_EQ(codons.starts[0], std::vector<int>{0});
  EXPECT_EQ(codons.stops[1], (std::vector<int>{1, 4}));
  EXPECT_EQ(codons.stops[2], std::vector<int>{8});
  EXPECT_TRUE(codons.stops[0].empty());
}

TEST(Lanes, StartsAndStopsAreThoseOfTheGeneticCode) {
  // Code 2, of mitochondria: ATT 0 and ATA 5 may start, TAG 6, AGA 7 and AGG 9 stop, TGA 3 neither.
  const SignalCodons codons = signalCodons("ATTTGATAGAGG", *geneticCode(2));
  EXPECT_EQ(codons.starts[0], std::vector<int>{0});
  EXPECT_EQ(codons.starts[2], std::vector<int>{5});
  EXPECT_EQ(codons.stops[0], (std::vector<int>{6, 9}));
  EXPECT_EQ(codons.stops[1], std::vector<int>{7});
}

TEST(Lanes, ReadsOfFewerThanThreeBasesHaveNoCodons) {
  EXPECT_TRUE(signalCodons("TA", *geneticCode(1)).stops[0].empty());
}

}  // namespace
}  // namespace velto
