#include "core/confusion_counts.h"

#include <gtest/gtest.h>

#include <vector>

namespace velto {
namespace {

using Frames = std::vector<std::int8_t>;

TEST(ConfusionCounts, BasesAreCountedByTruthAndCall) {
  // True 1 to 5, called 3 to 7, base 4 in another frame.
  const Frames known = {-1, 0, 0, 0, 0, 0, -1, -1, -1}, called = {-1, -1, -1, 0, 1, 0, 0, 0, -1};
  const ConfusionCounts counts = countBases(known, called);
  EXPECT_EQ(counts.bases, 9);
  EXPECT_EQ(counts.coding, 5);
  EXPECT_EQ(counts.called, 5);
  EXPECT_EQ(counts.both, 3);
  EXPECT_EQ(counts.inFrame, 2);
  EXPECT_EQ(counts.neither(), 2);
}

TEST(ConfusionCounts, NothingCalledLeavesTheTruth) {
  const ConfusionCounts counts = countBases(Frames{0, 0, -1}, {});
  EXPECT_EQ(counts.coding, 2);
  EXPECT_EQ(counts.called, 0);
  EXPECT_EQ(counts.neither(), 1);
}

TEST(ConfusionCounts, CorrelationFollowsItsDefinition) {
  ConfusionCounts counts{.bases = 100, .coding = 40, .called = 50, .both = 30, .inFrame = 20};
  // (30 x 40 - 20 x 10) / sqrt(50 x 40 x 60 x 50)
  EXPECT_NEAR(counts.correlation().value(), 0.408248, 1e-6);
  counts += ConfusionCounts{.bases = 1, .coding = 1, .called = 1, .both = 1, .inFrame = 1};
  EXPECT_EQ(counts.bases, 101);
  EXPECT_EQ(counts.inFrame, 21);
  // (31 x 40 - 20 x 10) / sqrt(51 x 41 x 60 x 50)
  EXPECT_NEAR(counts.correlation().value(), 0.415237, 1e-6);
}

TEST(ConfusionCounts, CorrelationNeedsBothKindsInTruthAndCall) {
  EXPECT_FALSE(countBases(Frames{0, 0}, Frames{0, -1}).correlation());
  EXPECT_FALSE(countBases(Frames{0, -1}, Frames{0, 0}).correlation());
  EXPECT_FALSE(countBases(Frames{0, -1}, {}).correlation());
  EXPECT_EQ(countBases(Frames{0, -1}, Frames{0, -1}).correlation(), 1.0);
}

}  // namespace
}  // namespace velto
