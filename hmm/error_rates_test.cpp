#include "hmm/error_rates.h"

#include <gtest/gtest.h>

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
  const ToyReads reads = readsOf(300, {0.004, 0.008});
  const FileRates rates = learnErrorRates(toyModel(), reads.views());
  EXPECT_NEAR(rates.mean.insertion, 0.8 * 0.004, 0.0008);
  EXPECT_NEAR(rates.mean.deletion, 0.8 * 0.008, 0.0012);
  EXPECT_FLOAT_EQ(rates.mean.substitution, rates.mean.insertion + rates.mean.deletion);
  EXPECT_FALSE(rates.byQuality);
}

TEST(ErrorRates, FrequentErrorsAreKeptWhole) {
  const ToyReads reads = readsOf(300, {0.03, 0.05});
  const FileRates rates = learnErrorRates(toyModel(), reads.views());
  EXPECT_NEAR(rates.mean.insertion, 0.03, 0.008);
  EXPECT_NEAR(rates.mean.deletion, 0.05, 0.01);
  EXPECT_FLOAT_EQ(rates.mean.substitution, 0.013f);
}

TEST(ErrorRates, CleanReadsHaveNextToNone) {
  const ToyReads reads = readsOf(300, {});
  const FileRates rates = learnErrorRates(toyModel(), reads.views());
  EXPECT_LT(rates.mean.insertion, 1e-4);
  EXPECT_LT(rates.mean.deletion, 1e-4);
  EXPECT_FLOAT_EQ(rates.mean.substitution, 0.001f);
}

TEST(ErrorRates, FewReadsKeepTheDefaults) {
  const ToyReads reads = readsOf(19, {});
  const FileRates rates = learnErrorRates(toyModel(), reads.views());
  EXPECT_EQ(rates.mean.insertion, kDefaultRates.insertion);
  EXPECT_EQ(rates.mean.deletion, kDefaultRates.deletion);
}

TEST(ErrorRates, ReadsThatDoNotCodeTellNothing) {
  ToyReads reads(3);
  for (int i = 0; i < 100; ++i) reads.addEven(300);
  const FileRates rates = learnErrorRates(toyModel(), reads.views());
  EXPECT_FLOAT_EQ(rates.mean.insertion, 0.8f * 0.005f);
  EXPECT_FLOAT_EQ(rates.mean.deletion, 0.8f * 0.007f);
}

TEST(ErrorRates, EmptyAndUnknownReadsAreHarmless) {
  std::vector<std::vector<short>> codes(40);
  for (std::size_t r = 20; r < 40; ++r) codes[r].assign(r - 19, kUnknownBase);
  std::vector<ReadView> views;
  for (const auto& read : codes) views.push_back({read, {}});
  EXPECT_GT(learnErrorRates(toyModel(), views).mean.insertion, 0.0f);
  EXPECT_EQ(learnErrorRates(toyModel(), {}).mean.insertion, kDefaultRates.insertion);
}

TEST(ErrorRates, DoubtfulBasesGetTheErrors) {
  const ToyReads reads = readsOf(300, {0.006, 0.008, 0.1, 8, 40});
  const FileRates rates = learnErrorRates(toyModel(), reads.views(true));
  ASSERT_TRUE(rates.byQuality);
  const BaseRates& low = rates.ofBin[rates.binOf[8]];
  const BaseRates& high = rates.ofBin[rates.binOf[40]];
  EXPECT_GT(low.insertion, 10 * high.insertion);
  EXPECT_GT(low.deletion, 5 * high.deletion);
  EXPECT_LE(low.insertion, 0.06f);
  EXPECT_LE(low.deletion, 0.12f);
}

TEST(ErrorRates, EqualQualitiesAreOff) {
  const ToyReads reads = readsOf(100, {0.006, 0.008, 0.1, 20, 20});
  EXPECT_FALSE(learnErrorRates(toyModel(), reads.views(true)).byQuality);
}

TEST(ErrorRates, GivenRatesStayAndQualitiesAreLearnt) {
  const ToyReads reads = readsOf(300, {0.006, 0.008, 0.1, 8, 40});
  const FileRates rates = learnQualityRates(toyModel(), {0.01f, 0.02f, 0.03f}, reads.views(true));
  EXPECT_EQ(rates.mean.insertion, 0.01f);
  EXPECT_EQ(rates.mean.deletion, 0.02f);
  EXPECT_EQ(rates.mean.substitution, 0.03f);
  EXPECT_GT(rates.ofBin[rates.binOf[8]].insertion, rates.ofBin[rates.binOf[40]].insertion);
}

}  // namespace
}  // namespace velto
