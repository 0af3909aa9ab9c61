#include "model/window_vote.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/models.h"
#include "tests/support/reads.h"

namespace velto {
namespace {

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

// The sample of a window that begins at base 0 and holds the whole text.
smplTestData windowOf(const std::string& letters) {
  const std::vector<short> codes = test::baseCodes(letters);
  const auto length = static_cast<int>(codes.size());
  smplTestData sample;
  for (int p = 0; p + 2 < length; p += 3) countCodon(sample, codes.data(), length, p);
  sample.end = length - 1;
  return sample;
}

// ---- Counting

TEST(CountCodon, CountsTheCodonItsAcidAndItsPairs) {
  // Ala Lys Met Trp Ala Cys
  const smplTestData s = windowOf("GCTAAAATGTGGGCATGC");
  EXPECT_EQ(s.snglAcidCnt[0], 2);
  EXPECT_EQ(s.codonCnt[2][3][1], 1);         // GCT
  EXPECT_EQ(s.codonCnt[2][3][0], 1);         // GCA
  EXPECT_EQ(s.pairAcidCnt[0][0][8], 1);      // Ala Lys
  EXPECT_EQ(s.pairAcidCnt[3][0][0], 1);      // Ala to Ala, four codons on
  EXPECT_EQ(s.pairAcidSnglCnt[0][0][0], 2);  // both Ala are followed
  EXPECT_EQ(s.pairAcidSnglCnt[0][1][0], 1);  // one Ala follows
  EXPECT_EQ(s.pairAcidSnglCnt[0][0][1], 0);  // Cys is the last codon
  EXPECT_EQ(s.pairAcidSnglCnt[3][0][8], 1);  // Lys to Cys
}

TEST(CountCodon, UnknownBaseDropsItsCodonAndThePairsWithIt) {
  const smplTestData s = windowOf("GCTANAATG");
  EXPECT_EQ(s.snglAcidCnt[8], 0);
  EXPECT_EQ(s.pairAcidSnglCnt[0][0][0], 0);
  EXPECT_EQ(s.pairAcidCnt[1][0][10], 1);  // Ala to Met across the unknown codon
}

TEST(CountCodon, PartnerIsLimitedByTheReadsEndOnly) {
  const std::vector<short> codes = test::baseCodes("GCTAAAATG");
  smplTestData s;
  EXPECT_EQ(countCodon(s, codes.data(), 9, 0), 0);  // only the first codon is in the window
  EXPECT_EQ(s.pairAcidCnt[1][0][10], 1);
  EXPECT_EQ(s.snglAcidCnt[10], 0);
}

// ---- Vote

TEST(WindowVote, EmptyModelSumsToZeroAndIsNotCoding) {
  EXPECT_EQ(voteSum(ModelTables(), windowOf("GCTGCT")), 0.0);
  EXPECT_EQ(windowClass(0.0), -1);
}

TEST(WindowVote, OnlySumsAboveZeroAreCoding) {
  EXPECT_EQ(windowClass(1e-300), -10);
  EXPECT_EQ(windowClass(-1e-300), -1);
  EXPECT_EQ(windowClass(kNotANumber), -1);
}

TEST(WindowVote, CodonOfAnAbsentAminoAcidHasItsUniformShare) {
  ModelTables tables;
  test::addCodon(tables, 2, 3, 1, 0.5, 1, 0.2);  // GCT, share 0.25 without alanine
  EXPECT_EQ(voteSum(tables, windowOf("AAAAAA")), 0.5);
  tables.codonTrsld[0].trsld = 0.25;  // equal is not above
  EXPECT_EQ(voteSum(tables, windowOf("AAAAAA")), -0.5);
}

TEST(WindowVote, CodonFeatureIsTheShareAmongItsAminoAcidsCodons) {
  const fnlHypo gct{kCodonKind, 1.0, 2, 3, 1, 0};
  EXPECT_EQ(codonFeature(gct, 3, 4), 0.75);
  EXPECT_EQ(codonFeature(gct, 0, 4), 0.0);
  EXPECT_EQ(codonFeature(gct, 0, 0), 0.25);
  ModelTables tables;
  test::addCodon(tables, 2, 3, 1, 0.5, 1, 0.7499);
  const smplTestData threeOfFour = windowOf("GCTGCTGCTGCA");
  EXPECT_EQ(voteSum(tables, threeOfFour), 0.5);
  tables.codonTrsld[0].trsld = 0.75;
  EXPECT_EQ(voteSum(tables, threeOfFour), -0.5);
}

TEST(WindowVote, AcidCountEqualToItsThresholdIsNotAbove) {
  ModelTables tables;
  test::addAcid(tables, 8, 0.5, 0, 2);                      // Lys, polarity 0
  EXPECT_EQ(voteSum(tables, windowOf("AAAAAA")), 0.5);      // 2 is not above 2
  EXPECT_EQ(voteSum(tables, windowOf("AAAAAAAAA")), -0.5);  // 3 is
  tables.snglAcidTrsld[0].polarity = -7;                    // any polarity but 0
  EXPECT_EQ(voteSum(tables, windowOf("AAAAAA")), -0.5);
  EXPECT_EQ(voteSum(tables, windowOf("AAAAAAAAA")), 0.5);
}

TEST(WindowVote, UnknownKindsNeverChangeTheSum) {
  for (const int kind : {1, -1, 4, 1000000}) {
    ModelTables tables;
    tables.fh.push_back({kind, 1000.0, 0, 0, 0, 0});
    EXPECT_EQ(voteSum(tables, windowOf("AAAAAA")), 0.0) << kind;
  }
}

TEST(WindowVote, PairFeatureIsObservedOverExpected) {
  ModelTables tables;
  test::addPair(tables, 0, 8, 8, 0.5, 1, 0.0);  // Lys Lys
  tables.pairAcidPriproTable[0][8][8][0] = 1.0;
  tables.pairAcidPriproTable[0][8][8][1] = 5.0;
  tables.snglAcidPriproTable[8][0] = 2.0;
  tables.snglAcidPriproTable[8][1] = 15.0;
  // fp = (3 x 2 + 1) / (5 + 5) = 0.7; f1 = (3 x 3 + 2) / (5 + 15) = 0.55;
  // f2 = (3 x 1 + 2) / (5 + 15) = 0.25; v = 0.7 / 0.55 / 0.25 = 5.0909...
  const double expected = 0.7 / 0.55 / 0.25;
  EXPECT_EQ(pairFeature(tables, tables.fh[0], 2, 3, 1, 5), expected);
  smplTestData sample;
  sample.start = 100;
  sample.end = 105;
  sample.pairAcidCnt[0][8][8] = 2;
  sample.pairAcidSnglCnt[0][0][8] = 3;
  sample.pairAcidSnglCnt[0][1][8] = 1;
  tables.pairAcidTrsld[0].trsld = 5.09;
  EXPECT_EQ(voteSum(tables, sample), 0.5);
  tables.pairAcidTrsld[0].trsld = expected;
  EXPECT_EQ(voteSum(tables, sample), -0.5);
}

TEST(WindowVote, PairFeatureIsDividedByTheFirstMemberThenByTheSecond) {
  ModelTables tables;
  test::addPair(tables, 0, 0, 15, 0.5, 1, 0.0);
  // (3/95) / (15/95) / (3/95); divided in another order the last digit is 4.
  EXPECT_EQ(pairFeature(tables, tables.fh[0], 1, 5, 1, 95), 6.333333333333333);
  EXPECT_EQ((3.0 / 95) / (3.0 / 95) / (15.0 / 95), 6.333333333333334);
  EXPECT_EQ((3.0 / 95) / ((15.0 / 95) * (3.0 / 95)), 6.333333333333334);
}

TEST(WindowVote, PairOfZeroLengthAndZeroPriorsIsNotANumberAndNotAbove) {
  ModelTables tables;
  test::addPair(tables, 0, 8, 8, 0.5, 1, -1e300);
  EXPECT_TRUE(std::isnan(pairFeature(tables, tables.fh[0], 0, 0, 0, 0)));
  EXPECT_EQ(voteSum(tables, smplTestData()), -0.5);
  tables.pairAcidTrsld[0].polarity = 0;
  EXPECT_EQ(voteSum(tables, smplTestData()), 0.5);
}

TEST(WindowVote, ThresholdThatIsNotANumberIsNeverPassed) {
  ModelTables tables;
  test::addCodon(tables, 2, 3, 1, 0.5, 1, kNotANumber);
  EXPECT_EQ(voteSum(tables, windowOf("GCTGCT")), -0.5);
}

TEST(WindowVote, ThresholdBelongsToTheHypothesisOfTheSameNumber) {
  ModelTables tables;
  test::addAcid(tables, 8, 1.0, 1, 0);
  test::addCodon(tables, 0, 0, 0, 0.25, 1, 0.9);  // AAA among Lys
  tables.codonTrsld[0] = {1, 2.0};                // of no use: hypothesis 0 is no codon
  EXPECT_EQ(voteSum(tables, windowOf("AAAAAA")), 1.25);
}

TEST(WindowVote, SumIsFormedInFileOrder) {
  ModelTables tables;
  test::addConstant(tables, 1e17);
  test::addConstant(tables, 3.0);
  test::addConstant(tables, -1e17);
  EXPECT_EQ(voteSum(tables, smplTestData()), (1e17 + 3.0) - 1e17);
  EXPECT_NE(voteSum(tables, smplTestData()), 3.0);
}

TEST(WindowVote, HypothesesOutsideTheirTablesAreNeverCounted) {
  ModelTables tables;
  for (const fnlHypo& h :
       {fnlHypo{kCodonKind, 9.0, 4, 0, 0, 0}, fnlHypo{kCodonKind, 9.0, -1, 0, 0, 0},
        fnlHypo{kSingleAcidKind, 9.0, 21, 0, 0, 0}, fnlHypo{kSingleAcidKind, 9.0, -1, 0, 0, 0},
        fnlHypo{kPairKind, 9.0, 0, 21, 0, 0}, fnlHypo{kPairKind, 9.0, 0, 0, 0, 4},
        fnlHypo{kPairKind, 9.0, 2147483647, 0, 0, -2147483647}}) {
    tables.fh.push_back(h);
  }
  test::addConstant(tables, 0.5);
  EXPECT_EQ(voteSum(tables, windowOf("AAAAAA")), 0.5);
}

TEST(WindowVote, HypothesesBeyond500HaveNoThresholdAndAreNotCounted) {
  ModelTables tables;
  tables.fh.assign(501, {kSingleAcidKind, 1.0, 0, 0, 0, 0});
  EXPECT_TRUE(isCounted(tables, 499));
  EXPECT_FALSE(isCounted(tables, 500));
  EXPECT_EQ(voteSum(tables, smplTestData()), 500.0);  // polarity 0, none above 0
}

TEST(WindowVote, TrainingSampleVotesAsThePredictionSample) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(test::testSeed());
  const ModelTables tables = test::usualRandomModel(random);
  const std::vector<short> codes = test::baseCodes(test::randomLetters(random, 96));
  smplTestData a;
  smplData b;
  for (int p = 0; p + 2 < 96; p += 3) {
    countCodon(a, codes.data(), 96, p);
    countCodon(b, codes.data(), 96, p);
  }
  a.end = b.end = 95;
  EXPECT_EQ(voteSum(tables, a), voteSum(tables, b));
}

}  // namespace
}  // namespace velto
