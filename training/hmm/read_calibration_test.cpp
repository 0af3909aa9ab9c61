#include "training/hmm/read_calibration.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/random.h"

namespace velto {
namespace {

TEST(ReadCalibration, FindsTheWeightsThatMadeTheCases) {
  Random random(2);
  std::vector<DecisionCase> cases;
  double coding = 0;
  for (int i = 0; i < 60000; ++i) {
    const double odds = 20.0 * random.real() - 10.0, hundreds = 6.0 * random.real();
    const double p = 1.0 / (1.0 + std::exp(1.5 - 0.4 * odds - 0.7 * hundreds));
    cases.push_back({odds, hundreds, random.real() < p});
    coding += cases.back().coding ? 1 : 0;
  }
  const ReadDecision decision = fitDecision(cases);
  EXPECT_NEAR(decision.constant, -1.5, 0.07);
  EXPECT_NEAR(decision.logOdds, 0.4, 0.02);
  EXPECT_NEAR(decision.codingBases, 0.7, 0.03);
  EXPECT_NEAR(decision.codingShare, coding / 60000, 1e-12);
}

TEST(ReadCalibration, CasesThatAreCleanlyDividedHaveFiniteWeights) {
  const ReadDecision decision = fitDecision({{-9, 0, false}, {-8, 1, false}, {9, 5, true}});
  EXPECT_TRUE(std::isfinite(decision.constant + decision.logOdds + decision.codingBases));
  EXPECT_GT(decision.logOdds, 0.0);
}

}  // namespace
}  // namespace velto
