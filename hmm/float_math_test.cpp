#include "hmm/float_math.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

TEST(FloatMath, PowersOfTwoAreNearTheTrueOnes) {
  for (float x = -99.9f; x < 100.0f; x += 0.0371f) {
    const double expected = std::exp2(static_cast<double>(x));
    EXPECT_NEAR(powerOfTwo(x) / expected, 1.0, 4e-7) << x;
  }
}

TEST(FloatMath, WholePowersOfTwoAreExact) {
  for (int n = -100; n <= 100; ++n) {
    EXPECT_EQ(powerOfTwo(static_cast<float>(n)), std::ldexp(1.0f, n)) << n;
  }
}

TEST(FloatMath, InversePowerBringsANumberBetweenOneAndTwo) {
  for (const float x : {1e-37f, 0.3f, 0.5f, 1.0f, 1.999f, 7.0f, 1e30f}) {
    const float scaled = x * inversePower(x);
    EXPECT_GE(scaled, 1.0f) << x;
    EXPECT_LT(scaled, 2.0f) << x;
  }
  EXPECT_EQ(inversePower(8.0f), 0.125f);
}

TEST(FloatMath, LogarithmsAreNearTheTrueOnes) {
  for (double x = 1e-38; x < 1e38; x *= 1.37) EXPECT_NEAR(naturalLog(x), std::log(x), 1e-11) << x;
  EXPECT_EQ(naturalLog(1.0), 0.0);
}

TEST(FloatMath, LogisticIsAProbability) {
  EXPECT_EQ(logisticOf(0.0), 0.5);
  EXPECT_NEAR(logisticOf(2.0), 0.880797, 1e-6);
  EXPECT_NEAR(logisticOf(-2.0), 0.119203, 1e-6);
  EXPECT_GT(logisticOf(-1e300), 0.0);
  EXPECT_LE(logisticOf(1e300), 1.0);
}

}  // namespace
}  // namespace velto
