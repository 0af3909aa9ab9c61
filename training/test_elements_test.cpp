#include "training/test_elements.h"

#include <gtest/gtest.h>

#include "tests/support/reads.h"

namespace velto {
namespace {

constexpr int kO = kOtherCodon, kE = kKnownError, kC = kCodingWindow, kN = kNonCodingWindow;

TEST(ApplyErrors, WithoutErrorsMarksTheRegionInItsFrame) {
  std::vector<short> seq = test::baseCodes("CATGAAATAACC");  // ATG AAA TAA in frame 1
  const layout lay = applyErrors(seq, {1, 9}, {});
  EXPECT_EQ(lay.met[0], (std::vector<int>{kO, kO, kO, kO}));
  EXPECT_EQ(lay.met[1], (std::vector<int>{kAtgCodon, kO, kO}));
  EXPECT_EQ(lay.rfm, (std::vector<int>{1, 1, 1, -1}));
  EXPECT_EQ(lay.crr[0], (std::vector<int>{kN, kN, kN, kN}));
  EXPECT_EQ(lay.crr[1], (std::vector<int>{kC, kC, kC}));
  EXPECT_EQ(lay.errMark, (std::vector<int>{kO, kO, kO, kO}));
  EXPECT_EQ(lay.start, 1);
  EXPECT_EQ(lay.stop, 9);
}

TEST(ApplyErrors, InsertedBaseDoublesTheBaseAndShiftsTheFrameByOne) {
  std::vector<short> seq = test::baseCodes("ATGAAACCCTAA");
  const layout lay = applyErrors(seq, {0, 11}, {{7, 0}});  // in the codon CCC
  EXPECT_EQ(seq, test::baseCodes("ATGAAACCCCTAA"));
  EXPECT_EQ(lay.rfm, (std::vector<int>{0, 0, 0, 1}));
  EXPECT_EQ(lay.errMark, (std::vector<int>{kO, kO, kE, kO}));
  EXPECT_EQ(lay.stop, 12);
}

TEST(ApplyErrors, RemovedBaseShiftsTheFrameByTwoAndMarksTheBaseBehindIt) {
  std::vector<short> seq = test::baseCodes("ATGAAACCCTAA");
  const layout lay = applyErrors(seq, {0, 11}, {{3, 1}});
  EXPECT_EQ(seq, test::baseCodes("ATGAACCCTAA"));
  // The codon AAA lost its first base: step 1 begins no codon in frame 0, CCC begins at base 5.
  EXPECT_EQ(lay.rfm, (std::vector<int>{0, 2, 2}));
  EXPECT_EQ(lay.errMark, (std::vector<int>{kO, kE, kO}));
}

TEST(ApplyErrors, StepsOfABrokenCodonKeepTheFrameBefore) {
  // Two bases inserted into the codon AAA: CCC begins at base 8; step 2 keeps frame 2 of base 8.
  std::vector<short> seq = test::baseCodes("ATGAAACCCTAA");
  EXPECT_EQ(applyErrors(seq, {0, 11}, {{4, 0}, {4, 0}}).rfm, (std::vector<int>{0, 0, 2, 2}));
  // One base lost at the start of the read's second codon, and one more in front of the third:
  // no codon begins in step 1.
  std::vector<short> longer = test::baseCodes("ATGAAACCCGGGTAA");
  EXPECT_EQ(applyErrors(longer, {0, 14}, {{3, 1}, {5, 1}}).rfm, (std::vector<int>{0, 0, 1, 1}));
}

TEST(ApplyErrors, ErrorsAreAppliedInListOrderToTheSequenceAsChangedSoFar) {
  std::vector<short> first = test::baseCodes("ATGC");
  applyErrors(first, {0, -1}, {{0, 1}, {0, 0}});
  EXPECT_EQ(first, test::baseCodes("TTGC"));
  std::vector<short> second = test::baseCodes("ATGC");
  applyErrors(second, {0, -1}, {{0, 0}, {0, 1}});
  EXPECT_EQ(second, test::baseCodes("ATGC"));
}

TEST(ApplyErrors, InsertionAtTheEndDoublesTheLastBaseAndPositionsOutsideArePassedOver) {
  std::vector<short> seq = test::baseCodes("ATG");
  applyErrors(seq, {0, -1}, {{3, 0}, {9, 0}, {4, 1}, {-1, 0}, {-1, 1}});
  EXPECT_EQ(seq, test::baseCodes("ATGG"));
  std::vector<short> empty;
  EXPECT_TRUE(applyErrors(empty, {0, -1}, {{0, 0}, {0, 1}}).rfm.empty());
}

TEST(ApplyErrors, WithoutARegionStartAndStopAreMinusOne) {
  std::vector<short> seq = test::baseCodes("ATGAAA");
  const layout lay = applyErrors(seq, {0, -1}, {});
  EXPECT_EQ(lay.start, -1);
  EXPECT_EQ(lay.stop, -1);
  EXPECT_EQ(lay.rfm, (std::vector<int>{-1, -1}));
}

TEST(TallyElements, CountsPairsAndNeighboursOfOneFrame) {
  const std::vector<short> seq = test::baseCodes("ATGAAANAAGCC");  // Met Lys ? Ala
  const TestElements e = tallyElements(seq, layout(), 0, 0);
  EXPECT_EQ(e.acidPairs[10][8], 1.0);
  EXPECT_EQ(e.acidPairs[8][0], 0.0);  // the unknown codon lies between
  EXPECT_EQ(e.basePairs[0][1], 1.0);  // A T
  EXPECT_EQ(e.basePairs[1][2], 1.0);  // T G
  EXPECT_EQ(e.basePairs[0][0], 2.0);  // A A in AAA only: NAA is left out
  EXPECT_EQ(e.basePairs[2][0], 0.0);  // G A lies between two codons
  EXPECT_EQ(tallyElements(seq, layout(), 1, 0).acidPairs[8][0], 1.0);
}

TEST(TallyElements, FollowsTheKnownPathForFrameMinusOne) {
  layout lay;
  lay.rfm = {-1, 1};
  const std::vector<short> seq = test::baseCodes("GGGGAAATTT");  // frame 1 of step 1: AAA
  const TestElements e = tallyElements(seq, lay, 0, -1);
  EXPECT_EQ(e.acidPairs[8][4], 1.0);  // Lys Phe
  EXPECT_EQ(e.basePairs[2][2], 0.0);
}

TEST(TallyElements, OfAnUnknownPairClassOrFrameAreZero) {
  const std::vector<short> seq = test::baseCodes("ATGAAA");
  EXPECT_EQ(tallyElements(seq, layout(), 4, 0).basePairs[0][0], 0.0);
  EXPECT_EQ(tallyElements(seq, layout(), -1, 0).basePairs[0][0], 0.0);
  EXPECT_EQ(tallyElements(seq, layout(), 0, 3).basePairs[0][0], 0.0);
}

TEST(CountTestElements, ChangesTheSequenceAndAppendsItsLayout) {
  velto::Test tester;
  std::vector<short> seq = test::baseCodes("ATGAAACCCTAA");
  const TestElements e = tester.CountTestElements(seq, 0, 11, 0, -1, {{7, 0}});
  EXPECT_EQ(seq.size(), 13U);
  ASSERT_EQ(tester.layoutList->size(), 1U);
  EXPECT_EQ(tester.layoutList->front().rfm, (std::vector<int>{0, 0, 0, 1}));
  EXPECT_EQ(e.acidPairs[10][8], 1.0);
}

}  // namespace
}  // namespace velto
