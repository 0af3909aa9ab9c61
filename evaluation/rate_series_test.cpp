#include "evaluation/rate_series.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

ReadEvaluation read(long coding, long shifts) {
  ReadEvaluation evaluation;
  evaluation.counts.reads = 1;
  evaluation.counts.coding = coding;
  evaluation.counts.shifts.known = shifts;
  return evaluation;
}

TEST(RateSeries, IndelRatesAreScaledInThirdsUnlessThereAreNone) {
  EXPECT_EQ(indelShares({0.01, 0.005, 0.0, 0.0}).size(), 4U);
  EXPECT_EQ(indelShares({0.01, 0.0, 0.0, 0.01}), (std::vector<double>{1.0}));
}

TEST(RateSeries, ReadsAreGroupedByTheirShiftsPer100CodingBases) {
  // 0; 0.5 and 0.4; 0.6; 3.0; a read without coding bases is left out.
  const std::vector<ReadPlaces> groups = placesByRate(
      {read(200, 1), read(50, 0), read(250, 1), read(500, 3), read(100, 3), read(0, 0)});
  EXPECT_EQ(groups, (std::vector<ReadPlaces>{{1}, {0, 2}, {3}, {4}}));
}

TEST(RateSeries, RatesAreShiftsPer100CodingBases) {
  EXPECT_DOUBLE_EQ(shiftsPer100(read(500, 3).counts), 0.6);
  EXPECT_EQ(shiftsPer100({}), 0.0);
}

}  // namespace
}  // namespace velto
