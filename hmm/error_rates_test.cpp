#include "hmm/error_rates.h"

#include <gtest/gtest.h>

#include "core/in_turn.h"
#include "hmm/toy_reads.h"

namespace velto {
namespace {

ToyReads readsOf(int count, const ToyReads::Errors& errors) {
  ToyReads reads(17);
  for (int i = 0; i < count; ++i) reads.addCoding(200, errors);
  return reads;
}

// Of what the reads hold, a share is kept for the network: 0.8 where errors are rare.
TEST(ErrorRates, FindsTheRatesOfReads) {
  const ToyReads reads = readsOf(300, {0.0016, 0.0024});
  const LearntRates rates = learnErrorRates(toyModel(), reads.views(), inTurn);
  EXPECT_NEAR(rates.mean.insertion, 0.8 * 0.0016, 0.0003);
  EXPECT_NEAR(rates.mean.deletion, 0.8 * 0.0024, 0.0004);
  EXPECT_GE(rates.mean.substitution, rates.mean.insertion + rates.mean.deletion);
  EXPECT_LE(rates.mean.substitution, 0.013);
  EXPECT_TRUE(rates.qualities.empty());
}

TEST(ErrorRates, FrequentErrorsAreKeptWhole) {
  const ToyReads some = readsOf(300, {0.01, 0.015});
  EXPECT_NEAR(learnErrorRates(toyModel(), some.views(), inTurn).mean.deletion, 0.015, 0.002);
  const ToyReads reads = readsOf(300, {0.03, 0.05});
  const LearntRates rates = learnErrorRates(toyModel(), reads.views(), inTurn);
  EXPECT_NEAR(rates.mean.insertion, 0.03, 0.008);
  EXPECT_NEAR(rates.mean.deletion, 0.05, 0.01);
  EXPECT_EQ(rates.mean.substitution, 0.013);
}

TEST(ErrorRates, CleanReadsHaveNextToNone) {
  const ToyReads reads = readsOf(300, {});
  const LearntRates rates = learnErrorRates(toyModel(), reads.views(), inTurn);
  EXPECT_LT(rates.mean.insertion, 1e-4);
  EXPECT_LT(rates.mean.deletion, 1e-4);
  EXPECT_LT(rates.mean.substitution, 1e-4);
}

TEST(ErrorRates, CleanReadsHaveTheFewerTheMoreBasesTheyAre) {
  const ToyReads few = readsOf(20, {}), many = readsOf(200, {});
  const BaseErrorRates ofFew = learnErrorRates(toyModel(), few.views(), inTurn).mean;
  const BaseErrorRates ofMany = learnErrorRates(toyModel(), many.views(), inTurn).mean;
  EXPECT_NEAR(ofFew.insertion, 0.1 / 13000, 1e-6);
  EXPECT_NEAR(ofFew.deletion, 0.1 / 13000, 1e-6);
  EXPECT_NEAR(ofMany.insertion, 0.1 / 121000, 1e-7);
  EXPECT_NEAR(ofMany.deletion, 0.1 / 121000, 1e-7);
}

TEST(ErrorRates, SubstitutionsAreLearntFromInnerStopCodons) {
  const ToyReads reads = readsOf(300, {0.0, 0.0, 1.0, 10, 10, 0.004});
  const LearntRates rates = learnErrorRates(toyModel(), reads.views(), inTurn);
  EXPECT_LT(rates.mean.insertion + rates.mean.deletion, 2e-4);
  EXPECT_GT(rates.mean.substitution, 0.001);
}

TEST(ErrorRates, FewReadsKeepTheDefaults) {
  const ToyReads reads = readsOf(19, {});
  const LearntRates rates = learnErrorRates(toyModel(), reads.views(), inTurn);
  EXPECT_EQ(rates.mean.insertion, kDefaultRates.insertion);
  EXPECT_EQ(rates.mean.deletion, kDefaultRates.deletion);
}

TEST(ErrorRates, ReadsThatDoNotCodeTellNothing) {
  ToyReads reads(3);
  for (int i = 0; i < 100; ++i) reads.addEven(300);
  const LearntRates rates = learnErrorRates(toyModel(), reads.views(), inTurn);
  const double kept = 0.8 + 0.2 * 0.2;
  EXPECT_NEAR(rates.mean.insertion, kept * 0.005, 6e-5);
  EXPECT_NEAR(rates.mean.deletion, kept * 0.007, 6e-5);
}

TEST(ErrorRates, EmptyAndUnknownReadsAreHarmless) {
  std::vector<std::vector<short>> codes(40);
  for (std::size_t r = 20; r < 40; ++r) codes[r].assign(r - 19, kUnknownBase);
  std::vector<ReadView> views;
  for (const auto& read : codes) views.push_back({read, {}});
  EXPECT_GT(learnErrorRates(toyModel(), views, inTurn).mean.insertion, 0.0);
  EXPECT_EQ(learnErrorRates(toyModel(), {}, inTurn).mean.insertion, kDefaultRates.insertion);
}

TEST(ErrorRates, DoubtfulBasesGetTheErrors) {
  const ToyReads reads = readsOf(300, {0.006, 0.008, 0.1, 8, 40});
  const LearntRates rates = learnErrorRates(toyModel(), reads.views(true), inTurn);
  ASSERT_EQ(rates.qualities.size(), 2U);
  const BaseErrorRates &low = rates.qualities[0].factors, &high = rates.qualities[1].factors;
  EXPECT_EQ(rates.qualities[0].most, 8);
  EXPECT_EQ(rates.qualities[1].most, 255);
  EXPECT_GT(low.insertion, 10 * high.insertion);
  EXPECT_GT(low.deletion, 5 * high.deletion);
  EXPECT_NEAR(0.1 * low.insertion + 0.9 * high.insertion, 1.0, 0.08);
}

TEST(ErrorRates, QualitiesLeaveTheMeanRatesAsTheyAre) {
  const ToyReads reads = readsOf(100, {0.03, 0.05, 0.3, 8, 10});
  const BaseErrorRates with = learnErrorRates(toyModel(), reads.views(true), inTurn).mean;
  const BaseErrorRates without = learnErrorRates(toyModel(), reads.views(), inTurn).mean;
  EXPECT_EQ(with.insertion, without.insertion);
  EXPECT_EQ(with.deletion, without.deletion);
  EXPECT_EQ(with.substitution, without.substitution);
}

TEST(ErrorRates, EqualQualitiesAreOff) {
  const ToyReads reads = readsOf(100, {0.006, 0.008, 0.1, 20, 20});
  EXPECT_TRUE(learnErrorRates(toyModel(), reads.views(true), inTurn).qualities.empty());
}

TEST(ErrorRates, GivenRatesStayAndQualitiesAreLearnt) {
  const ToyReads reads = readsOf(300, {0.006, 0.008, 0.1, 8, 40});
  const LearntRates rates =
      learnQualityRates(toyModel(), {0.01, 0.02, 0.03}, reads.views(true), inTurn);
  EXPECT_EQ(rates.mean.insertion, 0.01);
  EXPECT_EQ(rates.mean.deletion, 0.02);
  EXPECT_EQ(rates.mean.substitution, 0.03);
  EXPECT_GT(rates.qualities[0].factors.insertion, rates.qualities[1].factors.insertion);
}

}  // namespace
}  // namespace velto
