// Exponential and logarithm by the four basic operations alone, so that every machine, and any
// number of lanes, gets the same bits.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace velto {

// Adding it rounds a float to the nearest whole number, which then stands in the low bits.
constexpr float kPowerRounder = 12582912.0f;  // 1.5 x 2^23
// ln(2)^k / k!, k = 6 to 0.
constexpr float kPowerTerms[] = {1.5403530e-4f, 1.3333558e-3f, 9.6181291e-3f, 5.5504109e-2f,
                                 2.4022651e-1f, 6.9314718e-1f, 1.0f};

// 2^x for -100 <= x <= 100, within 3e-7 of the value. The order of the operations is part of the
// contract: lanes repeat it.
inline float powerOfTwo(float x) {
  const float rounded = x + kPowerRounder;
  const float rest = x - (rounded - kPowerRounder);  // -0.5 to 0.5
  float p = kPowerTerms[0];
  for (std::size_t t = 1; t < std::size(kPowerTerms); ++t) p = p * rest + kPowerTerms[t];
  const auto power = std::bit_cast<std::uint32_t>(rounded) << 23;  // exponent field, may wrap
  return std::bit_cast<float>(std::bit_cast<std::uint32_t>(p) + power);
}

// Largest power of two that is not above `x`, inverted; x is a positive normal number below 2^126.
inline float inversePower(float x) {
  const std::uint32_t exponent = std::bit_cast<std::uint32_t>(x) & 0x7f800000U;
  return std::bit_cast<float>(0x7f000000U - exponent);
}

// The exponent of a positive power of two.
inline int powerOf(float x) { return static_cast<int>(std::bit_cast<std::uint32_t>(x) >> 23) - 127; }

constexpr double kLogOfTwo = 0.69314718055994531;

// Natural logarithm of a positive normal number, within 1e-12.
inline double naturalLog(double x) {
  int exponent = 0;
  double mantissa = std::frexp(x, &exponent);  // exact
  if (mantissa < 0.70710678118654752) {
    mantissa *= 2.0;
    --exponent;
  }
  // ln m = 2 artanh t, t = (m - 1) / (m + 1), |t| < 0.172.
  const double t = (mantissa - 1.0) / (mantissa + 1.0), square = t * t;
  double sum = 0.0;
  for (int k = 17; k >= 1; k -= 2) sum = sum * square + 1.0 / k;
  return 2.0 * t * sum + kLogOfTwo * exponent;
}

// 1 / (1 + e^-x); x is cut to -60 to 60.
inline double logisticOf(double x) {
  const double y = (x < -60.0 ? -60.0 : x > 60.0 ? 60.0 : x) * 1.4426950408889634;
  return 1.0 / (1.0 + static_cast<double>(powerOfTwo(static_cast<float>(-y))));
}

}  // namespace velto
