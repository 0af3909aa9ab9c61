#include "core/random.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

TEST(Random, SeedZeroGivesTheKnownFirstNumber) {
  // State from SplitMix64 of seed 0: 0xe220a8397b1dcdaf, 0x6e789e6aa1b965f4, 0x06c45d188009454f,
  // 0xf88bb8a8724c81ec; the first number is rotl(s0 + s3, 23) + s0.
  const std::uint64_t sum = 0xe220a8397b1dcdafU + 0xf88bb8a8724c81ecU;
  const std::uint64_t expected = ((sum << 23) | (sum >> 41)) + 0xe220a8397b1dcdafU;
  EXPECT_EQ(Random(0).next(), expected);
}

TEST(Random, BelowCoversItsRangeEvenly) {
  Random random(5);
  long count[7] = {};
  for (int i = 0; i < 70000; ++i) ++count[random.below(7)];
  // Four standard deviations of 70000 draws at 1/7: 4 x sqrt(70000 x 6/49) = 371.
  for (const long of : count) EXPECT_NEAR(static_cast<double>(of), 10000.0, 371.0);
}

TEST(Random, BelowOneIsZero) {
  Random random(5);
  EXPECT_EQ(random.below(1), 0U);
}

TEST(Random, RealLiesInTheHalfOpenUnitInterval) {
  Random random(5);
  double sum = 0.0;
  for (int i = 0; i < 100000; ++i) {
    const double x = random.real();
    ASSERT_GE(x, 0.0);
    ASSERT_LT(x, 1.0);
    sum += x;
  }
  // Four standard deviations of the mean: 4 x sqrt(1/12 / 100000) = 0.0037.
  EXPECT_NEAR(sum / 100000, 0.5, 0.0037);
}

TEST(Random, SplitDependsOnSeedAndIndexAlone) {
  EXPECT_EQ(Random::split(1, 2).next(), Random::split(1, 2).next());
  EXPECT_NE(Random::split(1, 2).next(), Random::split(1, 3).next());
  EXPECT_NE(Random::split(1, 2).next(), Random::split(2, 2).next());
}

}  // namespace
}  // namespace velto
