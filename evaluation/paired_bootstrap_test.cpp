#include "evaluation/paired_bootstrap.h"

#include <gtest/gtest.h>

#include "evaluation/test_transcripts.h"

namespace velto {
namespace {

std::vector<EvaluationCounts> transcripts(const std::vector<long>& found) {
  std::vector<EvaluationCounts> list;
  for (const long n : found) list.push_back(transcriptOf(n));
  return list;
}

TEST(PairedBootstrap, DifferenceIsFirstMinusSecond) {
  const auto result = pairedBootstrap(transcripts({6, 8}), transcripts({5, 4}), 1);
  EXPECT_DOUBLE_EQ(*valueOf("sensitivity", result).difference, 14.0 / 20 - 9.0 / 20);
}

TEST(PairedBootstrap, OneTranscriptLeavesNoDoubt) {
  const auto d = valueOf("sensitivity", pairedBootstrap(transcripts({6}), transcripts({5}), 1));
  EXPECT_DOUBLE_EQ(*d.low, *d.difference);
  EXPECT_DOUBLE_EQ(*d.high, *d.difference);
  EXPECT_EQ(*d.favouringFirst, 1.0);
}

TEST(PairedBootstrap, EqualModelsTieInEveryResample) {
  const auto list = transcripts({1, 5, 9, 2, 2});
  const auto d = valueOf("sensitivity", pairedBootstrap(list, list, 3));
  EXPECT_EQ(*d.difference, 0.0);
  EXPECT_EQ(*d.low, 0.0);
  EXPECT_EQ(*d.high, 0.0);
  EXPECT_EQ(*d.favouringFirst, 0.5);
}

TEST(PairedBootstrap, PairingKeepsAConstantGainSureThoughTranscriptsDiffer) {
  const auto d = valueOf("sensitivity",
                         pairedBootstrap(transcripts({2, 9, 5, 7}), transcripts({1, 8, 4, 6}), 3));
  EXPECT_NEAR(*d.low, 0.1, 1e-12);
  EXPECT_NEAR(*d.high, 0.1, 1e-12);
}

TEST(PairedBootstrap, IntervalOfTwoTranscriptsCoversAllTheirMixtures) {
  // Differences 0 and 0.2: resamples give 0, 0.1 or 0.2 with chances 1/4, 1/2, 1/4.
  const auto d =
      valueOf("sensitivity", pairedBootstrap(transcripts({5, 7}), transcripts({5, 5}), 3));
  EXPECT_NEAR(*d.low, 0.0, 1e-12);
  EXPECT_NEAR(*d.high, 0.2, 1e-12);
  // 3/4 favour the first, 1/4 tie: 0.875 expected, with a standard error of 0.007.
  EXPECT_NEAR(*d.favouringFirst, 0.875, 0.03);
}

TEST(PairedBootstrap, FewerCallsOfNoncodingReadsFavourTheFirst) {
  EvaluationCounts first, second;
  first.noncodingReads = second.noncodingReads = 10;
  first.noncodingCalled = 1;
  second.noncodingCalled = 3;
  const auto d = valueOf("noncoding_called", pairedBootstrap({first}, {second}, 1));
  EXPECT_NEAR(*d.difference, -0.2, 1e-12);
  EXPECT_EQ(*d.favouringFirst, 1.0);
}

TEST(PairedBootstrap, UndefinedFiguresHaveNoDifference) {
  const auto d = valueOf("start_exact", pairedBootstrap(transcripts({6}), transcripts({5}), 1));
  EXPECT_FALSE(d.difference);
  EXPECT_FALSE(d.low);
  EXPECT_FALSE(d.high);
  EXPECT_FALSE(d.favouringFirst);
  EXPECT_FALSE(valueOf("sensitivity", pairedBootstrap({}, {}, 1)).difference);
}

TEST(PairedBootstrap, SameSeedGivesTheSameResultAndAnotherSeedAnother) {
  const auto first = transcripts({1, 9, 3, 7, 4, 10, 2});
  const auto second = transcripts({4, 2, 6, 7, 1, 5, 9});
  const auto a = valueOf("frame_f1", pairedBootstrap(first, second, 11));
  const auto b = valueOf("frame_f1", pairedBootstrap(first, second, 11));
  const auto c = valueOf("frame_f1", pairedBootstrap(first, second, 12));
  EXPECT_EQ(*a.low, *b.low);
  EXPECT_EQ(*a.high, *b.high);
  EXPECT_EQ(*a.favouringFirst, *b.favouringFirst);
  EXPECT_NE(*a.favouringFirst, *c.favouringFirst);
}

}  // namespace
}  // namespace velto
