#include "batch/histogram.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

const std::vector<double> kEdges = {0, 10, 20, 30};

TEST(Histogram, ABinHoldsItsLowerEdgeAndNotItsUpperOne) {
  Histogram histogram(kEdges);
  histogram.add(10, true);
  histogram.add(19.9, false);
  const BinCounts bins = histogram.occupied();
  EXPECT_EQ(bins.edges, (std::vector<double>{10, 20}));
  EXPECT_EQ(bins.coding, std::vector<long>{1});
  EXPECT_EQ(bins.others, std::vector<long>{1});
}

TEST(Histogram, ValuesBeyondTheEdgesAreInTheOuterBins) {
  Histogram histogram(kEdges);
  histogram.add(-5, true);
  histogram.add(30, true);
  histogram.add(1e9, true);
  EXPECT_EQ(histogram.occupied().coding, (std::vector<long>{1, 0, 2}));
}

TEST(Histogram, PartsAddUpToTheWhole) {
  Histogram first(kEdges);
  Histogram second(kEdges);
  first.add(5, true);
  second.add(5, true);
  second.add(25, false);
  first.add(second);
  EXPECT_EQ(first.reads(), 3);
  EXPECT_EQ(first.occupied().coding, (std::vector<long>{2, 0, 0}));
  EXPECT_EQ(first.occupied().others, (std::vector<long>{0, 0, 1}));
}

TEST(Histogram, WithoutReadsThereAreNoBins) {
  EXPECT_TRUE(Histogram(kEdges).occupied().coding.empty());
}

TEST(Histogram, EdgesAreRoundNumbers) {
  EXPECT_EQ(evenEdges(2, 1), (std::vector<double>{0, 0.5, 1}));
  const std::vector<double> coarse = powerEdges(false);
  EXPECT_EQ(coarse.size(), 71U);  // ten for each of seven powers, and the last
  EXPECT_EQ(coarse[1], 12.5);
  EXPECT_EQ(coarse.back(), 1e8);
  EXPECT_EQ(powerEdges(true)[21], 112);
}

}  // namespace
}  // namespace velto
