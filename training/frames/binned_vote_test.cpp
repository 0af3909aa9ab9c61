#include "training/frames/binned_vote.h"

#include <gtest/gtest.h>

#include <sstream>

#include "core/random.h"
#include "model/model_file.h"
#include "model/plain_engine.h"

namespace velto {
namespace {

std::vector<short> randomBases(int length, Random& random) {
  std::vector<short> bases;
  for (int i = 0; i < length; ++i) {
    const bool unknown = random.below(50) == 0;
    bases.push_back(unknown ? short{-1} : static_cast<short>(random.below(4)));
  }
  return bases;
}

// Distinct stumps of every kind with random weights.
Vote randomVote(Random& random) {
  Vote vote;
  vote.bias = 0.125;
  for (int feature = 0; feature < kFirstPairFeature; feature += 2) {
    vote.stumps.push_back({{feature, static_cast<int>(random.below(6))}, random.real() - 0.5});
  }
  for (int pair = 0; pair < kPairCodes; pair += 5) {
    const int threshold = static_cast<int>(random.below(2));
    vote.stumps.push_back({{kFirstPairFeature + pair, threshold}, random.real() - 0.5});
  }
  return vote;
}

TEST(BinnedVote, ScoresAreThoseOfTheWrittenModel) {
  Random random(20240611);
  const BinnedVote vote(randomVote(random));
  for (const int width : {96, 196}) {
    ModelTables tables;
    vote.write(width, 0.0, tables);
    for (const int length : {width, width + 1, width + 2, width + 30, 700}) {
      const std::vector<short> bases = randomBases(length, random);
      const WindowScores fast = vote.score(width, bases.data(), length);
      const WindowScores plain = PlainEngine({tables, width}, bases.data(), length).scores();
      for (int f = 0; f < 3; ++f) {
        ASSERT_EQ(fast.frame[f].size(), plain.frame[f].size());
        for (std::size_t k = 0; k < fast.frame[f].size(); ++k) {
          EXPECT_NEAR(fast.frame[f][k], plain.frame[f][k], 1e-9);
        }
      }
    }
  }
}

TEST(BinnedVote, WrittenModelIsUnchangedByItsFile) {
  Random random(5);
  ModelTables tables;
  BinnedVote(randomVote(random)).write(96, 0.0, tables);
  const std::string text = parameterFileText(tables);
  std::istringstream in(text);
  ModelTables read;
  EXPECT_TRUE(readParameterFile(in, kModelHypotheses, read).regular());
  EXPECT_EQ(parameterFileText(read), text);
  const std::vector<short> bases = randomBases(400, random);
  const WindowScores before = PlainEngine({tables, 96}, bases.data(), 400).scores();
  const WindowScores after = PlainEngine({read, 96}, bases.data(), 400).scores();
  for (int f = 0; f < 3; ++f) EXPECT_EQ(before.frame[f], after.frame[f]);
}

TEST(BinnedVote, ShiftJoinsTheWrittenConstantOnly) {
  Random random(7);
  const BinnedVote vote(randomVote(random));
  ModelTables plain, shifted;
  vote.write(96, 0.0, plain);
  vote.write(96, -0.25, shifted);
  EXPECT_NEAR(shifted.fh[0].alpha, plain.fh[0].alpha - 0.25, 1e-9);
  for (std::size_t i = 1; i < kModelHypotheses; ++i) {
    EXPECT_EQ(shifted.fh[i].alpha, plain.fh[i].alpha);
  }
}

TEST(BinnedVote, EmptyVoteIsItsBiasEverywhere) {
  Vote vote;
  vote.bias = -0.75;
  const std::vector<short> bases(120, 0);
  const WindowScores scores = BinnedVote(vote).score(96, bases.data(), 120);
  ASSERT_EQ(scores.frame[0].size(), 8U);
  for (const double score : scores.frame[0]) EXPECT_EQ(score, -0.75);
}

}  // namespace
}  // namespace velto
