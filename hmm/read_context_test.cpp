#include "hmm/read_context.h"

#include <gtest/gtest.h>

#include "hmm/toy_model.h"

namespace velto {
namespace {

ReadContext contextOf(const char* letters) {
  ReadContext context;
  context.index(codesOf(letters));
  return context;
}

TEST(ReadContext, FiveMersFillUpWithCodesOfTheirOwn) {
  const auto fiveMers = contextOf("TNGC").fiveMers;
  const int unknown = (7 * 1 + 3) % 4;  // 2
  EXPECT_EQ(fiveMers[0], 1);
  EXPECT_EQ(fiveMers[1], 4 * 1 + unknown);
  EXPECT_EQ(fiveMers[3], 64 * 1 + 16 * unknown + 4 * 2 + 3);
}

TEST(ReadContext, KmersNeedKnownBases) {
  const ReadContext context = contextOf("ATGNCA");
  std::vector<int> kmers;
  for (std::size_t i = 0; i < context.length(); ++i) kmers.push_back(context.kmer(i, 2));
  EXPECT_EQ(kmers, (std::vector<int>{-1, 4 * 0 + 1, 4 * 1 + 2, -1, -1, 4 * 3 + 0}));
}

TEST(ReadContext, LongestKmersAreThoseOfTheTables) {
  const ReadContext context = contextOf("ATGCATG");
  EXPECT_EQ(context.kmer(3, kMostLetters), -1);
  EXPECT_EQ(context.kmer(4, kMostLetters), 64 * 1 + 16 * 2 + 4 * 3 + 0);
  EXPECT_EQ(context.kmer(6, kMostLetters), 256 * 2 + 64 * 3 + 16 * 0 + 4 * 1 + 2);
}

TEST(ReadContext, CodonsHaveThreeKnownBases) {
  const auto codons = contextOf("ATGNGCCT").codons;
  const std::vector<int> expected = {6, 64, 64, 64, 16 * 2 + 4 * 3 + 3, 16 * 3 + 4 * 3 + 1, 64, 64};
  EXPECT_EQ(std::vector<int>(codons.begin(), codons.end()), expected);
}

TEST(ReadContext, LastStartOrStopInFrameIsTheContextOfACodon) {
  const auto starts = contextOf("ATGCCCTAACCATGNGCC").starts;
  const std::vector<int> expected = {0, 0, 0, 2, 0, 0, 2, 0, 0, 1, 0, 0, 1, 0, 2, 1, 0, 2};
  EXPECT_EQ(std::vector<int>(starts.begin(), starts.end()), expected);
}

}  // namespace
}  // namespace velto
