#include "hmm/read_decision.h"

#include <gtest/gtest.h>

#include <vector>

namespace velto {
namespace {

TEST(ReadDecision, EvidenceIsCut) {
  EXPECT_EQ(cutLogOdds({40.0, 0.0}), 15.0);
  EXPECT_EQ(cutLogOdds({-40.0, 0.0}), -15.0);
  EXPECT_EQ(codingHundreds({0.0, 250.0}), 2.5);
  EXPECT_EQ(codingHundreds({0.0, 5000.0}), 6.0);
}

TEST(ReadDecision, ProbabilityIsLogistic) {
  const ReadDecision decision{-1.0, 0.5, 0.25, 0.5};
  EXPECT_NEAR(codingProbability(decision, {2.0, 400.0}), 1.0 / (1.0 + std::exp(-1.0)), 1e-6);
}

TEST(ReadDecision, StrandsOfEqualLogOddsAreEquallyProbable) {
  const ReadDecision decision{-1.0, 0.5, 0.25, 0.5};
  EXPECT_EQ(strandProbability(decision, 7.0, 7.0), 0.5);
  EXPECT_NEAR(strandProbability(decision, 3.0, -1.0), 1.0 / (1.0 + std::exp(-2.0)), 1e-6);
}

TEST(ReadDecision, ShareOfTheCalibrationChangesNothing) {
  EXPECT_NEAR(withShare(0.3, 0.58, 0.58), 0.3, 1e-12);
  EXPECT_NEAR(withShare(0.5, 0.5, 0.9), 0.9, 1e-12);
  EXPECT_EQ(withShare(0.0, 0.5, 0.9), 0.0);
  EXPECT_EQ(withShare(1.0, 0.5, 0.1), 1.0);
}

TEST(ReadDecision, FewReadsKeepTheCalibrationsShare) {
  EXPECT_EQ(learnCodingShare(std::vector<double>(49, 0.01), 0.58), 0.58);
  EXPECT_EQ(learnCodingShare({}, 0.58), 0.58);
  EXPECT_LT(learnCodingShare(std::vector<double>(50, 0.01), 0.58), 0.3);
}

TEST(ReadDecision, LearnsTheShareOfClearReads) {
  std::vector<double> probabilities(800, 0.001);
  probabilities.insert(probabilities.end(), 200, 0.999);
  EXPECT_NEAR(learnCodingShare(probabilities, 0.58), (200 + 20 * 0.58) / 1020, 0.003);
}

TEST(ReadDecision, ReadsThatTellNothingKeepTheCalibrationsShare) {
  EXPECT_NEAR(learnCodingShare(std::vector<double>(1000, 0.58), 0.58), 0.58, 1e-9);
}

TEST(ReadDecision, ShareIsBounded) {
  EXPECT_EQ(learnCodingShare(std::vector<double>(100000, 1e-9), 0.58), 0.03);
  EXPECT_EQ(learnCodingShare(std::vector<double>(100000, 1.0), 0.58), 0.97);
}

}  // namespace
}  // namespace velto
