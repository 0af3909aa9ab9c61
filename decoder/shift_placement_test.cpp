// 1. Paths by hand  2. Sliding against plain
#include "decoder/shift_placement.h"

#include <gtest/gtest.h>

#include "decoder/layout.h"
#include "model/plain_engine.h"
#include "model/sliding_engine.h"
#include "tests/support/reads.h"

namespace velto {
namespace {

using test::repeated;

std::vector<int> placed(const ModelTables& tables, const std::string& letters, int endStep,
                        std::vector<int> path, int width = 96) {
  const std::vector<short> codes = test::baseCodes(letters);
  SlidingEngine votes({tables, width}, codes.data(), static_cast<int>(codes.size()));
  placeShifts(votes, width, endStep, path);
  return path;
}

// `count` times `frame`, for a path written as runs.
std::vector<int> runs(std::initializer_list<std::pair<int, int>> list) {
  std::vector<int> path;
  for (const auto& run : list) path.insert(path.end(), static_cast<size_t>(run.first), run.second);
  return path;
}

// One vote for each of many Ala counts: the more GCC codons in frame, the higher the score.
ModelTables countingAla() {
  ModelTables tables;
  for (int least = 0; least < 32; ++least) test::addAcid(tables, 0, 1.0, 1, least);
  return tables;
}

// All trials score alike: the earliest wins, trial 0.
const ModelTables kIndifferent;

// ---- 1. Paths by hand

TEST(ShiftPlacement, OneRunInOneFrameIsUnchanged) {
  const std::vector<int> path = runs({{5, -1}, {80, 1}, {5, -1}});
  EXPECT_EQ(placed(countingAla(), repeated("GCC", 90), 84, path), path);
  const std::vector<int> whole = runs({{80, 1}});
  EXPECT_EQ(placed(countingAla(), repeated("GCC", 80), 79, whole), whole);
}

TEST(ShiftPlacement, InsertedBaseIsPlacedOneStepBehindTheFirstCodonOfTheNewFrame) {
  // 40 GCC in frame 0, an inserted T, 40 GCC in frame 1. The path changes at step 44. The window
  // of k = 44 begins at step 28; with h = 16 trial t reads t codons in the old frame. Codons 28 to
  // 39 (12 of them) read Ala in the old frame, from 40 on in the new one: trial 12 is the best, and
  // the change moves to step 12 + 1 + 28 = 41.
  const std::string letters = repeated("GCC", 40) + "T" + repeated("GCC", 40);
  const std::vector<int> path = runs({{44, 0}, {30, 1}, {6, -1}});
  EXPECT_EQ(placed(countingAla(), letters, 73, path), runs({{41, 0}, {33, 1}, {6, -1}}));
}

TEST(ShiftPlacement, LostBaseMovesFromFrameZeroToFrameTwo) {
  // The 41st codon lost a base: 40 GCC, CC, 39 GCC; behind it the codons begin at 3k + 2. Codon 40
  // of the old frame (CCG) is Pro. Trial 12 reads codon 40 two bases further on: Ala again.
  const std::string letters = repeated("GCC", 40) + "CC" + repeated("GCC", 40);
  const std::vector<int> path = runs({{37, 0}, {37, 2}, {6, -1}});
  // k = 37, the window begins at step 21: 19 codons read Ala in the old frame; 19 + 1 + 21 = 41.
  EXPECT_EQ(placed(countingAla(), letters, 73, path), runs({{41, 0}, {33, 2}, {6, -1}}));
}

TEST(ShiftPlacement, EarliestOfEqualTrialsWins) {
  // Trial 0: the change moves to step 0 + 1 + (44 - 16) = 29.
  EXPECT_EQ(placed(kIndifferent, repeated("GCC", 80), 73, runs({{44, 0}, {30, 1}, {6, -1}})),
            runs({{29, 0}, {45, 1}, {6, -1}}));
}

TEST(ShiftPlacement, WithoutATrialAboveMinusThousandTheChangeMovesOneStepOn) {
  ModelTables tables;
  test::addConstant(tables, -1000.0);
  EXPECT_EQ(placed(tables, repeated("GCC", 80), 73, runs({{44, 0}, {30, 1}, {6, -1}})),
            runs({{45, 0}, {29, 1}, {6, -1}}));
}

TEST(ShiftPlacement, ChangeWhoseWindowIsTooShortStays) {
  // (2 x 96) / 3 = 64 bases are needed. At step 4 the window holds 3 x 20 + 3 = 63.
  const std::string letters = repeated("GCC", 80);
  const std::vector<int> early = runs({{4, 0}, {70, 1}, {6, -1}});
  EXPECT_EQ(placed(kIndifferent, letters, 73, early), early);
  // At step 5 it holds 66 and is placed: step 0 + 1 + (5 - 16) lies before the read, so that all
  // steps behind the path's first are of the new frame.
  EXPECT_EQ(placed(kIndifferent, letters, 73, runs({{5, 0}, {69, 1}, {6, -1}})),
            runs({{1, 0}, {73, 1}, {6, -1}}));
}

TEST(ShiftPlacement, ChangeNeverMovesBeyondTheEndStep) {
  // Only the old frame reads Ala: the last trial, without a shift, is the best: 32 + 1 + 28 = 61.
  const std::string letters = repeated("GCC", 80);
  EXPECT_EQ(placed(countingAla(), letters, 70, runs({{44, 0}, {27, 1}, {9, -1}})),
            runs({{61, 0}, {10, 1}, {9, -1}}));
  // The same with the end step 50, where the path is left at step 51.
  EXPECT_EQ(placed(countingAla(), letters, 50, runs({{44, 0}, {7, 1}, {29, -1}})),
            runs({{50, 0}, {1, 1}, {29, -1}}));
}

TEST(ShiftPlacement, LastFrameChangeOfAPathToTheLastStepStays) {
  const std::vector<int> path = runs({{44, 0}, {36, 1}});
  EXPECT_EQ(placed(kIndifferent, repeated("GCC", 80), 79, path), path);
}

TEST(ShiftPlacement, CloseChangesNeverCrossEachOthersFirstSteps) {
  // Trial 0 would move the change at 44 to 29 and that at 50 to 35; the rewriting of the second
  // stops behind step 44, where the first was recorded.
  EXPECT_EQ(
      placed(kIndifferent, repeated("GCC", 90), 79, runs({{44, 0}, {6, 1}, {30, 2}, {10, -1}})),
      runs({{29, 0}, {16, 1}, {35, 2}, {10, -1}}));
}

TEST(ShiftPlacement, LaterChangeStartsFromTheFrameThatAnEarlierOneWrote) {
  // Only frame 0 reads Ala. The change at 44 moves as far as the one at 50 lets it, so that frame 0
  // stands before that one too; its window, read from frame 0, moves it to 32 + 1 + 34 = 67.
  EXPECT_EQ(
      placed(countingAla(), repeated("GCC", 90), 79, runs({{44, 0}, {6, 1}, {30, 2}, {10, -1}})),
      runs({{67, 0}, {13, 2}, {10, -1}}));
}

// The letters A with one GCC, at base `at`: Ala in that base's frame only.
std::string oneAla(int length, int at) {
  return repeated("A", at) + "GCC" + repeated("A", length - at - 3);
}

TEST(ShiftPlacement, LastCodonOfATrialMayEndOnTheWindowsLastBase) {
  // The window of step 44, read from frame 2, reaches from base 86 to base 183. Two bases further
  // on its last codon is that of the bases 181 to 183. Ala there votes against every trial but the
  // last, which reads it in the old frame: the change moves to 32 + 1 + 28 = 61.
  ModelTables tables;
  test::addAcid(tables, 0, -1.0, 1, 0);
  EXPECT_EQ(placed(tables, oneAla(240, 181), 73, runs({{44, 2}, {30, 1}, {6, -1}})),
            runs({{61, 2}, {13, 1}, {6, -1}}));
}

TEST(ShiftPlacement, CodonThatReachesBeyondTheWindowsLastBaseIsNotCounted) {
  // The window of step 100, read from frame 0, reaches from base 204 to base 399. Two bases further
  // on its last codon would be that of the bases 398 to 400: all trials are equal.
  ModelTables tables;
  test::addAcid(tables, 0, -1.0, 1, 0);
  EXPECT_EQ(placed(tables, oneAla(700, 398), 180, runs({{100, 0}, {81, 2}, {19, -1}}), 196),
            runs({{69, 0}, {112, 2}, {19, -1}}));
}

TEST(ShiftPlacement, PairsAreWeighedByTheWindowsLengthInBases) {
  // The window of step 44 in frame 0 reaches from base 84 to base 183: its length is 99. Its codon
  // 5 is Ala, codon 6 Ser. With one of each the value of the pair is (3/99) / (3/99) / (3/99) = 33,
  // in every trial that reads codon 5 in the old frame; in the others it is not a number.
  const std::string letters = repeated("A", 99) + "GCCTCC" + repeated("A", 135);
  const std::vector<int> path = runs({{44, 0}, {30, 1}, {6, -1}});
  ModelTables tables;
  test::addPair(tables, 0, 0, 15, 1.0, 1, 32.9);
  EXPECT_EQ(placed(tables, letters, 73, path), runs({{35, 0}, {39, 1}, {6, -1}}));  // 6 + 1 + 28
  tables.pairAcidTrsld[0].trsld = 33.1;
  EXPECT_EQ(placed(tables, letters, 73, path), runs({{29, 0}, {45, 1}, {6, -1}}));  // trial 0
}

TEST(ShiftPlacement, EmptyPathIsUnchanged) {
  EXPECT_TRUE(placed(kIndifferent, repeated("GCC", 20), 0, {}).empty());
}

// ---- 2. Sliding against plain

std::vector<int> randomPath(test::Random& random, int steps) {
  std::vector<int> path;
  while (static_cast<int>(path.size()) < steps) {
    const int frame = test::chance(random, 0.2) ? -1 : test::randomInt(random, 0, 2);
    path.insert(path.end(), static_cast<size_t>(test::randomInt(random, 1, 40)), frame);
  }
  path.resize(static_cast<size_t>(steps));
  return path;
}

TEST(ShiftPlacementAtRandom, SlidingEqualsPlain) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  ModelTables tables;
  int moved = 0;
  for (int round = 0; round < 2000; ++round) {
    if (round % 4 == 0) {
      tables = round % 8 == 0 ? test::usualRandomModel(random) : test::wildRandomModel(random);
    }
    const int length = test::randomInt(random, 30, 400);
    const std::vector<short> codes = test::baseCodes(test::randomLetters(random, length, 0.01));
    const int width = test::chance(random, 0.7) ? 96 : 196;
    const std::vector<int> path = randomPath(random, length / 3 + test::randomInt(random, 0, 20));
    const int endStep = test::randomInt(random, 0, static_cast<int>(path.size()));
    std::vector<int> sliding = path;
    std::vector<int> plain = path;
    SlidingEngine slidingVotes({tables, width}, codes.data(), length);
    placeShifts(slidingVotes, width, endStep, sliding);
    PlainEngine plainVotes({tables, width}, codes.data(), length);
    placeShifts(plainVotes, width, endStep, plain);
    ASSERT_EQ(sliding, plain) << "round " << round;
    moved += sliding != path;
  }
  EXPECT_GT(moved, 500);
}

}  // namespace
}  // namespace velto
