#include "hmm/base_rates.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace velto {
namespace {

TEST(BaseRates, BinsReachToTheirHighestValue) {
  const QualityBin bins[] = {{10, {2, 2, 2}}, {30, {1, 1, 1}}, {255, {0.5, 0.5, 0.5}}};
  const FileRates rates({0.01, 0.02, 0.03}, bins);
  EXPECT_TRUE(rates.byQuality);
  EXPECT_EQ(rates.binOf[0], 0);
  EXPECT_EQ(rates.binOf[10], 0);
  EXPECT_EQ(rates.binOf[11], 1);
  EXPECT_EQ(rates.binOf[31], 2);
  EXPECT_FLOAT_EQ(rates.ofBin[0].insertion, 0.02f);
  EXPECT_FLOAT_EQ(rates.ofBin[2].deletion, 0.01f);
}

TEST(BaseRates, RatesAreCut) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const QualityBin bins[] = {{10, {1e300, 1e300, 1e300}}, {20, {nan, -1, 0}}};
  const FileRates rates({0.01, 0.02, 0.03}, bins);
  EXPECT_EQ(rates.ofBin[0].insertion, 0.06f);
  EXPECT_EQ(rates.ofBin[0].deletion, 0.12f);
  EXPECT_EQ(rates.ofBin[0].substitution, 0.3f);
  EXPECT_EQ(rates.ofBin[1].insertion, 0.0f);
  EXPECT_EQ(rates.ofBin[1].deletion, 0.0f);
  EXPECT_EQ(rates.ofBin[1].substitution, 1e-5f);
  EXPECT_EQ(rates.binOf[255], 1);
}

// 1e-4 is a fifth of the least trained rate, hence a fifth of itself is left.
TEST(BaseRates, RareFrameshiftsAreTakenForRarer) {
  const QualityBin bins[] = {{20, {50, 1, 1}}, {255, {0.5, 0.5, 0.5}}};
  const FileRates rates({1e-4, 5e-4, 1e-4}, bins);
  EXPECT_FLOAT_EQ(rates.mean.insertion, 2e-5f);
  EXPECT_FLOAT_EQ(rates.mean.deletion, 5e-4f);
  EXPECT_FLOAT_EQ(rates.mean.substitution, 1e-4f);
  EXPECT_FLOAT_EQ(rates.ofBin[0].insertion, 5e-3f);
  EXPECT_FLOAT_EQ(rates.ofBin[1].insertion, 5e-6f);
  EXPECT_FLOAT_EQ(rates.ofBin[1].deletion, 1.25e-4f);
}

TEST(BaseRates, MoreBinsThanASampleGivesAreHarmless) {
  std::vector<QualityBin> bins(300);
  for (std::size_t b = 0; b < bins.size(); ++b) bins[b].most = static_cast<std::uint8_t>(b / 2);
  const FileRates rates({0.01, 0.02, 0.03}, bins);
  for (const std::uint8_t bin : rates.binOf) EXPECT_LT(bin, kQualityBins);
}

}  // namespace
}  // namespace velto
