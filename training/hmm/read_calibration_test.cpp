#include "training/hmm/read_calibration.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

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

// Reads of which the strand with the higher score is the right one with log odds of the scores'
// difference + `trust` * its expected coding bases / 100.
StrandDecision fittedTo(double trust) {
  Random random(3);
  std::vector<StrandCase> cases;
  for (int i = 0; i < 60000; ++i) {
    ReadEvidence called, rival;
    for (ReadEvidence* strand : {&called, &rival}) {
      strand->logOdds = 20.0 * random.real() - 10.0;
      strand->logLikelihood = 12.0 * random.real() - 600.0;
      strand->codingBases = 300.0 * random.real();
    }
    const auto scoreOf = [](const ReadEvidence& strand) {
      return 0.3 * strand.logOdds + 0.6 * strand.logLikelihood;
    };
    if (scoreOf(called) < scoreOf(rival)) std::swap(called, rival);
    const double odds = scoreOf(called) - scoreOf(rival) + trust * codingHundreds(called);
    const bool isRight = random.real() < 1.0 / (1.0 + std::exp(-odds));
    cases.push_back(isRight ? StrandCase{called, rival} : StrandCase{rival, called});
  }
  return fitStrands(cases);
}

TEST(ReadCalibration, FindsTheStrandWeightsThatMadeTheCases) {
  const StrandDecision strand = fittedTo(0.0);
  EXPECT_NEAR(strand.logOdds, 0.3, 0.03);
  EXPECT_NEAR(strand.logLikelihood, 0.6, 0.06);
  EXPECT_NEAR(strand.constant, 0.0, 0.1);
  EXPECT_NEAR(strand.calledLogOdds, 0.0, 0.02);
  EXPECT_NEAR(strand.calledCodingBases, 0.0, 0.05);
}

TEST(ReadCalibration, FindsHowFarTheCalledStrandIsToBeTrusted) {
  const StrandDecision strand = fittedTo(-0.4);
  EXPECT_NEAR(strand.logOdds, 0.3, 0.03);
  EXPECT_NEAR(strand.logLikelihood, 0.6, 0.06);
  EXPECT_NEAR(strand.calledCodingBases, -0.4, 0.06);
}

TEST(ReadCalibration, CasesThatAreCleanlyDividedHaveFiniteWeights) {
  const ReadDecision decision = fitDecision({{-9, 0, false}, {-8, 1, false}, {9, 5, true}});
  EXPECT_TRUE(std::isfinite(decision.constant + decision.logOdds + decision.codingBases));
  EXPECT_GT(decision.logOdds, 0.0);
}

}  // namespace
}  // namespace velto
