#include "hmm/poly_a.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "core/base_code.h"

namespace velto {
namespace {

constexpr std::size_t kStretch = 30;
constexpr std::size_t kLeastLike = 25;  // of a stretch; the others are sequencing errors
constexpr std::size_t kMargin = 10;     // left at either end, as transcripts may have them

// Of A and T, each in half of a number: 1 for each in a stretch.
constexpr unsigned kOne[2] = {1, 1 << 16};
constexpr std::array<unsigned, 5> kCounts = {0, kOne[0], kOne[1], 0, 0};  // [base code + 1]
static_assert(baseCode('A') == 0 && baseCode('T') == 1 && kUnknownBase == -1);

unsigned countOf(short code) { return kCounts[static_cast<std::size_t>(code + 1)]; }

// Whether one of the counts, at most kStretch, is kLeastLike or more: then it reaches bit 5.
bool isAlike(unsigned counts) {
  constexpr unsigned kBit = 32, kBoth = kOne[0] + kOne[1];
  return ((counts + (kBit - kLeastLike) * kBoth) & (kBit * kBoth)) != 0;
}

}  // namespace

void hidePolyA(std::span<short> codes) {
  if (codes.size() < kStretch) return;
  unsigned counts = 0;
  for (const short code : codes.first(kStretch)) counts += countOf(code);
  std::vector<std::size_t> alike;  // stretches, by their first base
  if (isAlike(counts)) alike.push_back(0);
  for (std::size_t first = 1; first + kStretch <= codes.size(); ++first) {
    counts += countOf(codes[first + kStretch - 1]) - countOf(codes[first - 1]);
    if (isAlike(counts)) alike.push_back(first);
  }
  for (const std::size_t first : alike) {
    std::ranges::fill(codes.subspan(first + kMargin, kStretch - 2 * kMargin), kUnknownBase);
  }
}

}  // namespace velto
