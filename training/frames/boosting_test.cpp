#include "training/frames/boosting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "core/random.h"

namespace velto {
namespace {

constexpr BoostingPlan kPlan{
    .stumps = 5, .batch = 1, .batchesPerSweep = 1, .finalSweeps = 20, .ridge = 0.1};

// Windows of 20 codons drawn at random, some coding by `isCoding`.
template <typename IsCoding>
WindowSet randomWindows(std::size_t count, IsCoding isCoding) {
  Random random(20240611);
  WindowSet windows;
  for (std::size_t i = 0; i < count; ++i) {
    std::vector<short> bases(72);
    for (short& base : bases) base = static_cast<short>(random.below(4));
    smplTestData counts;
    for (int j = 0; j < 20; ++j) countCodon(counts, bases.data(), 72, 3 * j);
    windows.add(counts, isCoding(counts), 1.0F);
  }
  windows.finish();
  return windows;
}

// Loss of the best vote that answers `stump` alone, from the four counts of a two by two table.
double lossOfOneStump(const WindowSet& windows, Stump stump) {
  const auto yes = windows.yes(stump);
  const std::set<WindowSet::Index> members(yes.begin(), yes.end());
  double counts[2][2] = {};
  for (std::size_t i = 0; i < windows.size(); ++i) {
    ++counts[members.count(static_cast<WindowSet::Index>(i))][windows.coding(i) ? 1 : 0];
  }
  double loss = 0.0;
  for (const auto& answer : counts) {
    const double all = answer[0] + answer[1];
    for (const double part : answer) {
      if (part > 0.0) loss -= part * std::log(part / all);
    }
  }
  return loss;
}

TEST(Boosting, PlantedRuleIsTheFirstStump) {
  const auto rule = [](const smplTestData& counts) { return counts.pairAcidCnt[2][9][15] > 0; };
  const WindowSet windows = randomWindows(600, rule);
  const Vote vote = boostVote(windows, kPlan);
  ASSERT_FALSE(vote.stumps.empty());
  EXPECT_EQ(vote.stumps[0].stump, (Stump{pairFeatureIndex(2, 9, 15), 0}));
  EXPECT_GT(vote.stumps[0].weight, 1.0);
}

TEST(Boosting, PairsPassedOverInOneLookAreFoundInALaterOne) {
  for (int acid = 12; acid < 16; ++acid) {
    const auto rule = [acid](const smplTestData& counts) {
      return counts.pairAcidCnt[2][9][acid] + counts.pairAcidCnt[1][15][acid] > 0;
    };
    const WindowSet windows = randomWindows(2000, rule);
    std::set<int> asked;
    for (const WeightedStump& q : boostVote(windows, kPlan).stumps) {
      asked.insert(q.stump.feature);
    }
    EXPECT_TRUE(asked.count(pairFeatureIndex(2, 9, acid))) << acid;
    EXPECT_TRUE(asked.count(pairFeatureIndex(1, 15, acid))) << acid;
  }
}

TEST(Boosting, FirstStumpHasTheSmallestLossOfAll) {
  // A noisy rule on amino-acid counts, so that many stumps compete.
  Random noise(7);
  const auto rule = [&noise](const smplTestData& counts) {
    return counts.snglAcidCnt[9] + counts.snglAcidCnt[14] + static_cast<int>(noise.below(3)) > 5;
  };
  const WindowSet windows = randomWindows(500, rule);
  const Vote vote = boostVote(
      windows, {.stumps = 1, .batch = 1, .batchesPerSweep = 1, .finalSweeps = 0, .ridge = 1e-6});
  ASSERT_EQ(vote.stumps.size(), 1U);
  const double chosen = lossOfOneStump(windows, vote.stumps[0].stump);
  double smallest = 1e9;
  for (int feature = 0; feature < kWindowFeatures; ++feature) {
    const int thresholds = feature < kFirstPairFeature ? 30 : WindowSet::kPairThresholds;
    for (int threshold = 0; threshold < thresholds; ++threshold) {
      smallest = std::min(smallest, lossOfOneStump(windows, {feature, threshold}));
    }
  }
  // The choice goes by the second order of the loss, the comparison by the loss itself.
  EXPECT_LE(chosen, 1.01 * smallest);
}

TEST(Boosting, StumpsAreAllDifferentAndAsManyAsPlanned) {
  const WindowSet windows = randomWindows(400, [](const smplTestData& counts) {
    return counts.snglAcidCnt[0] > counts.snglAcidCnt[5];
  });
  const Vote vote = boostVote(
      windows, {.stumps = 40, .batch = 5, .batchesPerSweep = 1, .finalSweeps = 2, .ridge = 5.0});
  ASSERT_EQ(vote.stumps.size(), 40U);
  std::set<std::pair<int, int>> seen;
  for (const WeightedStump& q : vote.stumps) {
    EXPECT_TRUE(seen.insert({q.stump.feature, q.stump.threshold}).second);
  }
}

TEST(Boosting, BiasAloneIsTheLogOddsWhenNothingMayBeAsked) {
  // One window in four is coding: log(1/3).
  int i = 0;
  const WindowSet windows = randomWindows(400, [&i](const smplTestData&) { return i++ % 4 == 0; });
  EXPECT_NEAR(
      boostVote(windows,
                {.stumps = 0, .batch = 1, .batchesPerSweep = 1, .finalSweeps = 10, .ridge = 1.0})
          .bias,
      std::log(1.0 / 3.0), 1e-4);
}

TEST(Boosting, WeightOfOneStumpIsTheDifferenceOfTheLogOdds) {
  int i = 0;
  const WindowSet windows = randomWindows(2000, [&i](const smplTestData& counts) {
    return counts.snglAcidCnt[9] > 1 ? ++i % 3 != 0 : ++i % 5 == 0;
  });
  const Vote vote = boostVote(
      windows, {.stumps = 1, .batch = 1, .batchesPerSweep = 1, .finalSweeps = 50, .ridge = 1e-6});
  ASSERT_EQ(vote.stumps.size(), 1U);
  double counts[2][2] = {};
  const auto yes = windows.yes(vote.stumps[0].stump);
  const std::set<WindowSet::Index> members(yes.begin(), yes.end());
  for (std::size_t w = 0; w < windows.size(); ++w) {
    ++counts[members.count(static_cast<WindowSet::Index>(w))][windows.coding(w) ? 1 : 0];
  }
  const double no = std::log(counts[0][1] / counts[0][0]);
  EXPECT_NEAR(vote.bias, no, 1e-3);
  EXPECT_NEAR(vote.stumps[0].weight, std::log(counts[1][1] / counts[1][0]) - no, 1e-3);
}

TEST(Logistic, AgreesWithTheExponentialOfTheLibrary) {
  for (double x = -70.0; x <= 70.0; x += 0.37) {
    const double exact = 1.0 / (1.0 + std::exp(-std::max(-60.0, std::min(60.0, x))));
    EXPECT_NEAR(static_cast<double>(logistic(static_cast<float>(x))), exact, 1e-6) << x;
  }
  EXPECT_EQ(logistic(0.0F), 0.5F);
}

}  // namespace
}  // namespace velto
