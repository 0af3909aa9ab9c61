#include "core/six_digits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace velto {
namespace {

std::string sixDigits(double number) {
  std::string text;
  appendSixDigits(text, number);
  return text;
}

std::string printed(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%.6g", number);
  return text;
}

TEST(SixDigits, AreThoseOfAnOutputStream) {
  EXPECT_EQ(sixDigits(0.0), "0");
  EXPECT_EQ(sixDigits(-10.0), "-10");
  EXPECT_EQ(sixDigits(1.5), "1.5");
  EXPECT_EQ(sixDigits(0.000012), "1.2e-05");
  EXPECT_EQ(sixDigits(-0.123456), "-0.123456");
  EXPECT_EQ(sixDigits(12.345678), "12.3457");
  EXPECT_EQ(sixDigits(9.999996), "10");
  EXPECT_EQ(sixDigits(999.9996), "1000");
  EXPECT_EQ(sixDigits(1234567.0), "1.23457e+06");
  EXPECT_EQ(sixDigits(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(sixDigits(-std::numeric_limits<double>::quiet_NaN()).find("nan"), 1U);
}

TEST(SixDigits, OfWholeMillionthsAndTheirNeighboursAreThoseOfPrintf) {
  std::mt19937_64 random(11);
  std::vector<int> numbers;
  for (int i = 0; i < 12000; ++i) numbers.push_back(i);
  for (const int decade : {1'000'000, 10'000'000, 100'000'000, 999'990'000}) {
    for (int i = -3000; i < 3000; ++i) numbers.push_back(decade + i);
  }
  for (int i = 0; i < 300000; ++i) {
    numbers.push_back(static_cast<int>(random() % 1'000'000'000 / (i % 4 == 0 ? 1000 : 1)));
  }
  for (const int size : numbers) {
    for (const int number : {size, -size}) {
      const double value = number / kMillion;
      for (const double near :
           {value, std::nextafter(value, 2000.0), std::nextafter(value, -2000.0)}) {
        ASSERT_EQ(sixDigits(near), printed(near)) << number;
      }
    }
  }
}

// What a sum that errs prints is known unless the number is a rounding edge.
TEST(RoundingEdge, IsEveryNumberWhoseDigitsAnErringSumMayChange) {
  std::mt19937_64 random(12);
  int edges = 0;
  for (int i = 0; i < 300000; ++i) {
    const int number = static_cast<int>(random() % 999'000'000 / (i % 3 == 0 ? 100 : 1));
    const double value = number / kMillion;
    if (isRoundingEdge(number)) {
      ++edges;
    } else {
      ASSERT_EQ(printed(value - 1e-10), printed(value)) << number;
      ASSERT_EQ(printed(value + 1e-10), printed(value)) << number;
    }
  }
  EXPECT_GT(edges, 1000);
  EXPECT_LT(edges, 30000);
  for (const int edge : {0, 99, -99, 1'000'005, -9'999'995, 10'000'050, 99'999'950, 100'000'500}) {
    EXPECT_TRUE(isRoundingEdge(edge)) << edge;
  }
  for (const int plain : {100, -100, 999'999, 1'000'000, 1'000'004, 1'000'050, 10'000'005,
                          10'000'500, 100'000'050, 100'000'499}) {
    EXPECT_FALSE(isRoundingEdge(plain)) << plain;
  }
}

}  // namespace
}  // namespace velto
