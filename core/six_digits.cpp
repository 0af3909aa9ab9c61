#include "core/six_digits.h"

#include <cmath>
#include <cstdlib>

#include "core/plain_real.h"

namespace velto {
namespace {

// Smallest size that is printed as whole millionths or tens, hundreds or thousands of them.
constexpr int kLeastPlain = 100;
constexpr int kMostPlain = 999'999'499;

// Millionths of one unit of the sixth digit.
int unitOf(int size) {
  if (size < 1'000'000) return 1;
  if (size < 10'000'000) return 10;
  return size < 100'000'000 ? 100 : 1000;
}

// Writes `count` digits of the number before `end`; returns the first of them.
char* writeDigits(char* end, int number, int count) {
  for (int i = 0; i < count; ++i, number /= 10) *--end = static_cast<char>('0' + number % 10);
  return end;
}

int digitsOf(int number) {
  int digits = 1;
  while (number >= 10) {
    number /= 10;
    ++digits;
  }
  return digits;
}

void appendMillionths(std::string& text, int millionths) {
  const int size = std::abs(millionths);
  const int unit = unitOf(size);
  const int rounded = (size + unit / 2) / unit * unit;
  constexpr int kWhole = 1'000'000;
  char digits[16];
  char* const end = digits + sizeof digits;
  char* begin = writeDigits(end, rounded % kWhole, 6);
  *--begin = '.';
  const int whole = rounded / kWhole;
  begin = writeDigits(begin, whole, digitsOf(whole));
  if (millionths < 0) *--begin = '-';
  char* last = end;
  while (last[-1] == '0') --last;
  if (last[-1] == '.') --last;
  text.append(begin, static_cast<std::size_t>(last - begin));
}

}  // namespace

// By constants, which divide faster than unitOf(size) does.
bool isRoundingEdge(int millionths) {
  const int size = std::abs(millionths);
  if (size < 1'000'000) return size < kLeastPlain;
  if (size < 10'000'000) return size % 10 == 5;
  if (size < 100'000'000) return size % 100 == 50;
  return size % 1000 == 500 || size > kMostPlain;
}

void appendSixDigits(std::string& text, double number) {
  if (std::abs(number) < 1000.0) {
    const int millionths = static_cast<int>(std::lrint(number * kMillion));
    if (millionths / kMillion == number && !isRoundingEdge(millionths)) {
      appendMillionths(text, millionths);
      return;
    }
  }
  appendRounded(text, number, 6);
}

}  // namespace velto
