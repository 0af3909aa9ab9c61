#include "hmm/poly_a.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "core/base_code.h"

namespace velto {
namespace {

constexpr std::size_t kStretch = 30;
constexpr std::size_t kLeastLike = 25;  // of a stretch; the others are sequencing errors
constexpr std::size_t kMargin = 10;     // left at either end, as transcripts may have them

using Stretch = std::span<const short, kStretch>;

std::size_t basesLike(short base, Stretch stretch) {
  short count = 0;  // of two bytes, as the codes: compilers add several at once
  for (const short code : stretch) count = static_cast<short>(count + (code == base ? 1 : 0));
  return static_cast<std::size_t>(count);
}

}  // namespace

void hidePolyA(std::span<short> codes) {
  std::vector<std::size_t> alike;  // stretches, by their first base
  for (std::size_t first = 0; first + kStretch <= codes.size();) {
    const Stretch stretch = codes.subspan(first).first<kStretch>();
    const std::size_t most =
        std::max(basesLike(baseCode('A'), stretch), basesLike(baseCode('T'), stretch));
    if (most >= kLeastLike) alike.push_back(first);
    // From stretch to stretch there is one more at most.
    first += most < kLeastLike ? kLeastLike - most : 1;
  }
  for (const std::size_t first : alike) {
    const std::span<short> middle = codes.subspan(first + kMargin, kStretch - 2 * kMargin);
    std::fill(middle.begin(), middle.end(), kUnknownBase);
  }
}

}  // namespace velto
