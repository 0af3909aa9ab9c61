#include "training/frames/window_features.h"

#include <gtest/gtest.h>

#include "model/window_vote.h"

namespace velto {
namespace {

TEST(WindowFeatures, FeaturesAreNumberedAcidsCodonsPairs) {
  EXPECT_EQ(kFirstCodonFeature, 21);
  EXPECT_EQ(kFirstPairFeature, 85);
  EXPECT_EQ(pairFeatureIndex(0, 0, 0), 85);
  EXPECT_EQ(pairFeatureIndex(3, 20, 20), kWindowFeatures - 1);
}

TEST(WindowFeatures, UsageBinCountsTheThresholdsBelow) {
  const int lysine = 0;  // AAA, one of two codons
  EXPECT_EQ(usageBin(lysine, 0, 3), 0);
  EXPECT_EQ(usageBin(lysine, 3, 3), kUsageBins - 1);
  // Half: the thresholds up to 0.47 lie below, 0.515 above; the same for the uniform usage.
  EXPECT_EQ(usageBin(lysine, 2, 4), 17);
  EXPECT_EQ(usageBin(lysine, 0, 0), 17);
  EXPECT_GT(0.5, kUsageThresholds[16]);
  EXPECT_LT(0.5, kUsageThresholds[17]);
}

TEST(WindowFeatures, NoFractionOfSmallDenominatorLiesOnAThreshold) {
  for (const double threshold : kUsageThresholds) {
    for (int acids = 1; acids <= 12; ++acids) {
      for (int codons = 0; codons <= acids; ++codons) {
        EXPECT_NE(static_cast<double>(codons) / acids, threshold);
      }
    }
  }
}

// The windows of a scan are 95 or 194 bases long, those that place the shifts from 64 up to 198.
TEST(WindowFeatures, PairHypothesisIsAPlainCountAtEveryWindowLength) {
  ModelTables tables;
  tables.fh.resize(1);
  setCountPriors(tables);
  for (const int scanned : {95, 194}) {
    for (int threshold = 0; threshold < 3; ++threshold) {
      setHypothesis(tables, 0, {pairFeatureIndex(1, 4, 9), threshold}, 0.5, scanned);
      for (int length = 64; length <= 198; ++length) {
        for (short count = 0; count < 6; ++count) {
          const double value = pairFeature(tables, tables.fh[0], count, 30, 1, length);
          EXPECT_EQ(value > tables.pairAcidTrsld[0].trsld, count > threshold)
              << length << " " << count;
        }
      }
    }
  }
}

TEST(WindowFeatures, HypothesisVotesInFavourAboveItsThreshold) {
  ModelTables tables;
  tables.fh.resize(1);
  setHypothesis(tables, 0, {3, 2}, 0.25, 95);
  smplTestData counts;
  counts.snglAcidCnt[3] = 2;
  EXPECT_EQ(voteSum(tables, counts), -0.25);
  counts.snglAcidCnt[3] = 3;
  EXPECT_EQ(voteSum(tables, counts), 0.25);
}

TEST(WindowFeatures, ConstantVotesTheSameForEveryWindow) {
  ModelTables tables;
  tables.fh.resize(1);
  setConstantHypothesis(tables, 0, -1.5);
  EXPECT_EQ(voteSum(tables, smplTestData()), -1.5);
  smplTestData counts;
  counts.snglAcidCnt[kStopSignal] = 4;
  EXPECT_EQ(voteSum(tables, counts), -1.5);
}

}  // namespace
}  // namespace velto
