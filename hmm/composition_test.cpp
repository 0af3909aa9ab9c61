#include "hmm/composition.h"

#include <gtest/gtest.h>

#include "core/base_code.h"
#include "core/random.h"
#include "hmm/toy_model.h"

namespace velto {
namespace {

std::vector<Composition> blocksOf(const std::vector<short>& codes) {
  std::vector<Composition> blocks;
  compose(codes, blocks);
  return blocks;
}

TEST(Composition, CountsPairsOfKnownBases) {
  const auto blocks = blocksOf(codesOf("ATGNGC"));
  ASSERT_EQ(blocks.size(), 1U);
  EXPECT_EQ(blocks[0].total, 3);  // AT, TG, GC
  EXPECT_EQ(blocks[0].pairs[4 * 0 + 1], 1);
  EXPECT_EQ(blocks[0].pairs[4 * 1 + 2], 1);
  EXPECT_EQ(blocks[0].pairs[4 * 2 + 3], 1);
  EXPECT_EQ(blocks[0].strong(), 2);
}

TEST(Composition, InputIsEightSharesLessAHalf) {
  const auto blocks = blocksOf(codesOf("AAAAT"));  // AA three times, AT once
  EXPECT_FLOAT_EQ(blocks[0].input(0), 5.5f);
  EXPECT_FLOAT_EQ(blocks[0].input(1), 1.5f);
  EXPECT_FLOAT_EQ(blocks[0].input(2), -0.5f);
}

TEST(Composition, NothingKnownIsAverage) {
  const auto blocks = blocksOf(codesOf("NANTN"));
  EXPECT_EQ(blocks[0].total, 0);
  EXPECT_EQ(blocks[0].gcClass(), 1);
  EXPECT_EQ(blocks[0].input(0), 0.0f);
}

TEST(Composition, ClassesMeetHalfwayBetweenTheirCentres) {
  Composition composition;
  composition.total = 1000;
  for (const auto& [strong, gcClass] : std::vector<std::pair<int, int>>{
           {0, 0}, {394, 0}, {395, 1}, {484, 1}, {485, 2}, {574, 2}, {575, 3}, {1000, 3}}) {
    composition.pairs = {};
    composition.pairs[3] = strong;
    EXPECT_EQ(composition.gcClass(), gcClass) << strong;
  }
}

TEST(Composition, EveryBlockCountsItsOwnWindow) {
  Random random(5);
  std::vector<short> codes;
  for (int i = 0; i < 1234; ++i) codes.push_back(static_cast<short>(random.below(5)) - 1);
  const auto blocks = blocksOf(codes);
  ASSERT_EQ(blocks.size(), (1234U + 31U) / 32U);
  for (std::size_t b = 0; b < blocks.size(); ++b) {
    const int middle = static_cast<int>(b) * 32 + 16;
    Composition expected;
    for (int i = std::max(1, middle - 249); i < std::min(1234, middle + 250); ++i) {
      const int first = codes[static_cast<std::size_t>(i - 1)];
      const int second = codes[static_cast<std::size_t>(i)];
      if (first < 0 || second < 0) continue;
      ++expected.pairs[static_cast<std::size_t>(4 * first + second)];
      ++expected.total;
    }
    EXPECT_EQ(blocks[b].pairs, expected.pairs) << b;
    EXPECT_EQ(blocks[b].total, expected.total) << b;
  }
}

}  // namespace
}  // namespace velto
