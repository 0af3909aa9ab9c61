#include "hmm/read_decision.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
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

TEST(ReadDecision, OddsAndLikelihoodSpeakForAStrand) {
  EXPECT_DOUBLE_EQ(strandScore({0.5, 0.25}, 3.0, -100.0), -23.5);
}

TEST(ReadDecision, EvidenceOfTheCalledStrandAddsToItsTrust) {
  const StrandDecision decision{0.5, 0.25, -1.0, -0.1, 0.3};
  EXPECT_NEAR(strandTrust(decision, {20.0, 200.0}), -1.0 - 1.5 + 0.6, 1e-12);
  EXPECT_NEAR(strandProbability(-1.0, 3.0), 1.0 / (1.0 + std::exp(-2.0)), 1e-6);
}

TEST(ReadDecision, TheCalledStrandIsAsProbableAsTheOtherAtLeast) {
  EXPECT_EQ(strandProbability(0.0, 0.0), 0.5);
  EXPECT_EQ(strandProbability(-2.0, 1.0), 0.5);
}

TEST(ReadDecision, StrandsWithoutAnyPathAreAlike) {
  const double none = -std::numeric_limits<double>::infinity();
  EXPECT_EQ(strandScore({0.5, 0.25}, 3.0, none) - strandScore({0.5, 0.25}, 3.0, none), 0.0);
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

// The posterior of the first base in phase 0 holds that of a start codon; 0.6 of it are left.
TEST(ReadDecision, ReadsThatBeginInsideTheirRegionAreTold) {
  StateRow row{};
  row[kC0] = 0.1f, row[kC1] = 0.2f, row[kC2] = 0.15f, row[kS0] = 0.25f, row[kU5] = 0.05f;
  row[kNC] = 0.25f;
  StateRow last{};
  last[kU3] = 0.75f, last[kNC] = 0.25f;
  const ReadEvidence evidence = evidenceOf({{last}, {1.0f}}, std::vector{StatePosterior{row, {}}});
  EXPECT_NEAR(evidence.truncated, 0.45 / 0.75, 1e-6);
  EXPECT_NEAR(evidence.codingBases, 0.7 / 0.75, 1e-6);
}

std::vector<ReadEvidence> beginnings(std::size_t inside, std::size_t before, double sure) {
  std::vector<ReadEvidence> reads(inside, {10.0, 300.0, sure});
  reads.insert(reads.end(), before, {10.0, 300.0, 1.0 - sure});
  return reads;
}

TEST(ReadDecision, LearnsTheShareOfReadsThatClearlyBeginInside) {
  const auto reads = beginnings(150, 850, 0.9999);
  const std::vector<double> probabilities(1000, 1.0);
  EXPECT_NEAR(learnTruncatedShare(reads, probabilities, 0.7), (150 + 5 * 0.7) / 1005, 0.002);
}

TEST(ReadDecision, ReadsThatDoNotCodeSayNothingOfWhereTheyBegin) {
  const auto reads = beginnings(150, 850, 0.9999);
  EXPECT_NEAR(learnTruncatedShare(reads, std::vector<double>(1000, 0.0), 0.7), 0.7, 1e-9);
  EXPECT_EQ(learnTruncatedShare({}, {}, 0.7), 0.7);
  std::vector<double> probabilities(1000, 0.0);
  std::fill_n(probabilities.begin(), 200, 1.0);
  EXPECT_NEAR(learnTruncatedShare(reads, probabilities, 0.7), (150 + 5 * 0.7) / 205, 0.002);
}

// Of shares a and b = 1 - a at equal evidence, the weights say a / (a + b preference).
TEST(ReadDecision, ReadsThatTellNothingKeepTheShareOfTheWeights) {
  const double told = 0.7 / (0.7 + 0.3 * static_cast<double>(kUtr5Preference));
  const std::vector<ReadEvidence> reads(1000, {10.0, 300.0, told});
  EXPECT_NEAR(learnTruncatedShare(reads, std::vector<double>(1000, 1.0), 0.7), 0.7, 1e-9);
}

TEST(ReadDecision, WeightsOfBeginningsFollowTheShare) {
  PathWeights weights;
  weights.beginCoding = 0.1f, weights.beginUtr5 = 0.2f, weights.beginStart = 0.4f;
  weights.beginNoncoding = 0.5f, weights.beginUtr3 = 0.6f;
  const PathWeights same = withTruncatedShare(weights, 0.75, 0.75);
  EXPECT_EQ(same.beginCoding, 0.1f);
  EXPECT_EQ(same.beginUtr5, 0.2f);
  const PathWeights whole = withTruncatedShare(weights, 0.75, 0.25);
  EXPECT_NEAR(whole.beginCoding, 0.1 / 3, 1e-7);
  EXPECT_NEAR(whole.beginUtr5, 0.6, 1e-6);
  EXPECT_NEAR(whole.beginStart, 1.2, 1e-6);
  EXPECT_EQ(whole.beginNoncoding, 0.5f);
  EXPECT_EQ(whole.beginUtr3, 0.6f);
}

}  // namespace
}  // namespace velto
