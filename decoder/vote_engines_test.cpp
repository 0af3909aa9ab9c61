// The integer vote against its definition: every window class and every placed frame change.

#include <gtest/gtest.h>

#include <cmath>

#include "core/six_digits.h"
#include "decoder/layout.h"
#include "decoder/shift_placement.h"
#include "model/integer_engine.h"
#include "model/plain_engine.h"
#include "model/window_vote.h"
#include "tests/support/reads.h"
#include "tests/support/trained_models.h"

namespace velto {
namespace {

using test::PriorForm;
using test::Random;

struct Tally {
  long windows = 0;
  long zeroSums = 0;  // windows whose integer sum did not decide
  long edges = 0;     // windows whose integer sum does not tell the digits
  long placed = 0;    // paths changed by the placing
  long unusable = 0;  // models without integer tables
  long moving = 0;    // pair hypotheses that move with the counts of their amino acids
  long steadyModels = 0;
};

std::vector<int> randomPath(Random& random, int steps) {
  std::vector<int> path(static_cast<size_t>(steps), kOffPath);
  int frame = test::randomInt(random, 0, 2);
  const int begin = test::randomInt(random, 0, steps / 4);
  const int end = test::chance(random, 0.8) ? steps - test::randomInt(random, 1, steps / 4) : steps;
  for (int k = begin; k < end; ++k) {
    if (test::chance(random, 0.05)) frame = (frame + test::randomInt(random, 1, 2)) % 3;
    path[static_cast<size_t>(k)] = frame;
  }
  return path;
}

PlainEngine plainEngine(const VotingRead& read) {
  return PlainEngine(read.model, read.seq, read.length);
}

void expectSameClasses(const VotingRead& read, IntegerVote& vote, Tally& tally) {
  WindowClasses classes;
  IntegerEngine(read, vote).classify(classes);
  const WindowScores plain = plainEngine(read).scores();
  for (int f = 0; f < 3; ++f) {
    ASSERT_EQ(classes.frame[f].size(), plain.frame[f].size());
    for (size_t k = 0; k < plain.frame[f].size(); ++k) {
      ASSERT_EQ(int{classes.frame[f][k]}, windowClass(plain.frame[f][k]))
          << "frame " << f << " window " << k << " score " << plain.frame[f][k];
      ++tally.windows;
      tally.zeroSums += std::abs(plain.frame[f][k]) < 1e-7;
    }
  }
}

std::string sixDigits(double number) {
  std::string text;
  appendSixDigits(text, number);
  return text;
}

void expectSameDigits(const VotingRead& read, IntegerVote& vote, Tally& tally) {
  const WindowScores scores = IntegerEngine(read, vote).scores();
  const WindowScores plain = plainEngine(read).scores();
  for (int f = 0; f < 3; ++f) {
    ASSERT_EQ(scores.frame[f].size(), plain.frame[f].size());
    for (size_t k = 0; k < plain.frame[f].size(); ++k) {
      const double score = scores.frame[f][k];
      const double wanted = plain.frame[f][k];
      ASSERT_NEAR(score, wanted, 1e-10);
      ASSERT_EQ(sixDigits(score), sixDigits(wanted));
      ASSERT_EQ(score > 0.0, wanted > 0.0);
      if (!isRoundingEdge(static_cast<int>(std::lrint(wanted * kMillion)))) continue;
      ASSERT_EQ(score, wanted);
      ++tally.edges;
    }
  }
}

void expectSamePlaces(const VotingRead& read, IntegerVote& vote, Random& random, Tally& tally) {
  const int steps = read.length / 3;
  const std::vector<int> path = randomPath(random, steps);
  const int endStep = test::randomInt(random, 0, steps - 1);
  std::vector<int> plain = path;
  PlainEngine definition = plainEngine(read);
  placeShifts(definition, read.model.windowWidth, endStep, plain);
  std::vector<int> fast = path;
  IntegerEngine integers(read, vote);
  placeShifts(integers, read.model.windowWidth, endStep, fast);
  ASSERT_EQ(fast, plain);
  tally.placed += fast != path;
}

void compare(Random& random, const ModelTables& tables, int width, int reads, Tally& tally,
             const test::MadeUpSpecies* species = nullptr) {
  const ModelView model{tables, width};
  const VoteTables votes(model);
  if (!votes.usable()) {
    ++tally.unusable;
    return;
  }
  const size_t moving = votes.pairTables(3 * votes.codons() - 1)->moving.size();
  tally.moving += static_cast<long>(moving);
  tally.steadyModels += moving == 0;
  IntegerVote vote;
  CodedRead codons;
  for (int i = 0; i < reads; ++i) {
    const int length = test::randomInt(random, 30, 3 * width);
    const std::vector<short> codes = test::baseCodes(species == nullptr || test::chance(random, 0.3)
                                                         ? test::randomLetters(random, length, 0.01)
                                                         : species->read(random, length, 0.01));
    const int bases = static_cast<int>(codes.size());
    codons.assign(codes.data(), bases);
    const VotingRead read{model, votes, codes.data(), bases, codons};
    ASSERT_NO_FATAL_FAILURE(expectSameClasses(read, vote, tally));
    ASSERT_NO_FATAL_FAILURE(expectSameDigits(read, vote, tally));
    ASSERT_NO_FATAL_FAILURE(expectSamePlaces(read, vote, random, tally));
  }
}

int randomWidth(Random& random) { return test::chance(random, 0.5) ? 96 : 196; }

void roundWeights(ModelTables& tables) {
  for (fnlHypo& h : tables.fh) {
    if (std::abs(h.alpha) < 1e3) h.alpha = std::nearbyint(h.alpha * 1e6) / 1e6;
  }
}

TEST(IntegerEngine, DecideAsTheDefinitionForTrainedModelsOfBothPriorForms) {
  Random random(test::testSeed());
  SCOPED_TRACE(test::testSeed());
  Tally tally;
  for (int m = 0; m < 24; ++m) {
    const test::MadeUpSpecies species(random);
    const PriorForm form = m % 2 == 0 ? PriorForm::kFollowCounts : PriorForm::kNearlyConstant;
    const int width = randomWidth(random);
    const ModelTables tables = species.model(random, form, width);
    ASSERT_NO_FATAL_FAILURE(compare(random, tables, width, 40, tally, &species));
  }
  EXPECT_GT(tally.windows, 50000);
  EXPECT_GT(tally.edges, 1000);
  EXPECT_GT(tally.placed, 300);
  EXPECT_GT(tally.moving, 0);
  EXPECT_GT(tally.steadyModels, 0);
  EXPECT_EQ(tally.unusable, 0);
}

TEST(IntegerEngine, LeaveSumsOfZeroAndEqualTrialsToTheDoubles) {
  Random random(test::testSeed());
  SCOPED_TRACE(test::testSeed());
  Tally tally;
  for (int m = 0; m < 16; ++m) {
    const test::MadeUpSpecies species(random);
    const int width = randomWidth(random);
    const ModelTables tables = species.model(random, PriorForm::kNearlyConstant, width, 1 + m % 3);
    ASSERT_NO_FATAL_FAILURE(compare(random, tables, width, 30, tally, &species));
  }
  EXPECT_GT(tally.zeroSums, 200);
}

TEST(IntegerEngine, DecideAsTheDefinitionForModelsThatMakeNoSense) {
  Random random(test::testSeed());
  SCOPED_TRACE(test::testSeed());
  Tally tally;
  for (int m = 0; m < 300; ++m) {
    ModelTables tables = test::wildRandomModel(random);
    roundWeights(tables);
    ASSERT_NO_FATAL_FAILURE(compare(random, tables, randomWidth(random), 4, tally));
  }
  EXPECT_GT(tally.windows, 50000);
  EXPECT_GT(tally.unusable, 10);
  EXPECT_LT(tally.unusable, 250);
}

// One Ala before a Lys is enough, whatever the length is taken for: (3 + 0) / L over 1 is above 0.
TEST(VoteTables, OfLengthsWithTheSameVotesAreShared) {
  ModelTables tables;
  test::addPair(tables, 0, 0, 8, 0.5, 1, 0.0);
  for (auto& prior : tables.snglAcidPriproTable) prior[0] = 1e9;  // rates that hardly move
  const VoteTables votes({tables, 96});
  ASSERT_TRUE(votes.pairTables(95)->moving.empty());
  EXPECT_EQ(votes.pairTables(95), votes.pairTables(80));
  EXPECT_EQ(votes.pairTables(95)->leastPlaces[kPairGaps], PairTables::place(kPairGaps, 1));
}

TEST(VoteTables, OfLengthsWithOtherVotesAreTheirOwn) {
  ModelTables tables;
  test::addPair(tables, 0, 0, 8, 0.5, 1, 6.2);
  for (auto& prior : tables.snglAcidPriproTable) {
    prior[0] = 1e9;
    prior[1] = 1e9;  // rates of about 1
  }
  tables.pairAcidPriproTable[0][0][8][1] = -89.5;  // 3 counts / 5.5 of 95, 3 counts / 0.5 of 90
  const VoteTables votes({tables, 96});
  ASSERT_TRUE(votes.pairTables(95)->moving.empty());
  ASSERT_TRUE(votes.pairTables(90)->moving.empty());
  EXPECT_EQ(votes.pairTables(90)->leastPlaces[kPairGaps], PairTables::place(kPairGaps, 2));
  EXPECT_EQ(votes.pairTables(95)->leastPlaces[kPairGaps], PairTables::place(kPairGaps, 12));
  EXPECT_NE(votes.pairTables(95), votes.pairTables(90));
}

TEST(VoteTables, RefuseWeightsThatAreNoWholeMillionths) {
  ModelTables tables;
  test::addAcid(tables, 0, 0.25, 1, 3);
  EXPECT_TRUE(VoteTables({tables, 96}).usable());
  tables.fh[0].alpha = 0.2500005;
  EXPECT_FALSE(VoteTables({tables, 96}).usable());
  tables.fh[0].alpha = std::nextafter(0.25, 1.0);
  EXPECT_FALSE(VoteTables({tables, 96}).usable());
}

TEST(VoteTables, RefuseWeightsThatSumTo1000) {
  ModelTables tables;
  test::addAcid(tables, 0, 999.0, 1, 3);
  EXPECT_TRUE(VoteTables({tables, 96}).usable());
  test::addAcid(tables, 1, -0.000001, 1, 3);
  EXPECT_FALSE(VoteTables({tables, 96}).usable());
}

TEST(VoteTables, UncountedHypothesesMayHaveAnyWeight) {
  ModelTables tables;
  tables.fh.push_back({7, 0.123456789, 0, 0, 0, 0});
  EXPECT_TRUE(VoteTables({tables, 96}).usable());
}

}  // namespace
}  // namespace velto
