#include "model/sliding_vote.h"

#include <gtest/gtest.h>

#include <cstring>

#include "model/window_vote.h"
#include "tests/support/models.h"
#include "tests/support/reads.h"

namespace velto {
namespace {

bool sameBits(double a, double b) {
  return std::memcmp(&a, &b, sizeof a) == 0 || (a != a && b != b);
}

TEST(ReadCodons, KnowsCodonAcidAndPartners) {
  const std::vector<short> codes = test::baseCodes("ATGNAAAAACCCGG");
  const ReadCodons read(codes.data(), 14);
  const CodonContext first = read.at(0);
  EXPECT_EQ(first.acid, 10);
  EXPECT_EQ(first.codon, 16 * 0 + 4 * 1 + 2);
  EXPECT_EQ(first.partner[0], -1);  // NAA
  EXPECT_EQ(first.partner[1], 8);   // AAA
  EXPECT_EQ(first.partner[2], 12);  // CCC
  EXPECT_EQ(first.partner[3], -1);  // GG ends the read
}

TEST(ReadCodons, HoldsNothingOutsideTheReadOrAtUnknownBases) {
  const std::vector<short> codes = test::baseCodes("ATGN");
  const ReadCodons read(codes.data(), 4);
  for (const int p : {-1, 1, 2, 3, 4, 1000}) EXPECT_EQ(read.at(p).acid, -1) << p;
  EXPECT_EQ(ReadCodons(codes.data(), 0).at(0).acid, -1);
}

TEST(SlidingVote, EmptyModelSumsToZero) {
  const ModelTables tables;
  SlidingVote vote(tables, 95, 32);
  double sums[SlidingVote::kLanes] = {9, 9, 9, 9};
  vote.sums(sums);
  for (const double sum : sums) EXPECT_EQ(sum, 0.0);
}

TEST(SlidingVote, AddedAndRemovedCodonsLeaveTheEmptyWindow) {
  ModelTables tables;
  test::addAcid(tables, 8, 1.0, 1, 0);
  const std::vector<short> codes = test::baseCodes("AAAAAA");
  const ReadCodons read(codes.data(), 6);
  SlidingVote vote(tables, 95, 32);
  double sums[SlidingVote::kLanes];
  vote.add(1, read.at(0));
  vote.sums(sums);
  EXPECT_EQ(sums[0], -1.0);
  EXPECT_EQ(sums[1], 1.0);
  vote.remove(1, read.at(0));
  vote.sums(sums);
  EXPECT_EQ(sums[1], -1.0);
}

TEST(SlidingVote, DividesPairFrequenciesInTheOrderOfTheDefinition) {
  // Five times Ala before something, once before Ser: (3/95) / (15/95) / (3/95) in this order.
  const std::vector<short> codes = test::baseCodes("GCCTCC" + test::repeated("GCCAAA", 4));
  const ReadCodons read(codes.data(), 30);
  ModelTables tables;
  test::addPair(tables, 0, 0, 15, 1.0, 1, 6.333333333333333);
  SlidingVote vote(tables, 95, 32);
  for (int p = 0; p < 30; p += 3) vote.add(0, read.at(p));
  double sums[SlidingVote::kLanes];
  vote.sums(sums);
  EXPECT_EQ(sums[0], -1.0);  // equal, so not above
}

// Random codons come and go in all lanes; each lane must vote as a sample counted anew.
void compareWithPlainVote(test::Random& random, const ModelTables& tables) {
  constexpr int kMost = 20;
  const int length = test::randomInt(random, 3, 150);
  const std::vector<short> codes = test::baseCodes(test::randomLetters(random, length, 0.02));
  const ReadCodons read(codes.data(), length);
  const int windowLength = test::randomInt(random, 0, 200);
  SlidingVote vote(tables, windowLength, kMost);
  std::vector<int> held[SlidingVote::kLanes];
  for (int step = 0; step < 40; ++step) {
    const int lane = test::randomInt(random, 0, SlidingVote::kLanes - 1);
    std::vector<int>& places = held[lane];
    if (places.size() == kMost || (!places.empty() && test::chance(random, 0.4))) {
      vote.remove(lane, read.at(places.front()));
      places.erase(places.begin());
    } else {
      places.push_back(test::randomInt(random, 0, length - 1));
      vote.add(lane, read.at(places.back()));
    }
    if (!test::chance(random, 0.5)) continue;
    double sums[SlidingVote::kLanes];
    vote.sums(sums);
    for (int l = 0; l < SlidingVote::kLanes; ++l) {
      smplTestData sample;
      sample.end = windowLength;
      for (const int p : held[l]) countCodon(sample, codes.data(), length, p);
      ASSERT_TRUE(sameBits(sums[l], voteSum(tables, sample)))
          << sums[l] << " " << voteSum(tables, sample);
    }
  }
}

TEST(SlidingVote, EqualsThePlainVoteToTheLastBitOnRandomModels) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  for (int i = 0; i < 60; ++i) {
    SCOPED_TRACE(testing::Message() << "model " << i);
    compareWithPlainVote(
        random, i % 3 == 0 ? test::usualRandomModel(random) : test::wildRandomModel(random));
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace velto
