#include "hmm/composition.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

#include "core/base_code.h"

namespace velto {
namespace {

// [base] the pair that ends there, behind all others where a base of it is unknown or missing.
std::vector<std::uint8_t> indexPairs(std::span<const short> codes) {
  std::vector<std::uint8_t> pairs(codes.size(), kDinucleotides);
  for (std::size_t i = 1; i < codes.size(); ++i) {
    const int first = codes[i - 1], second = codes[i];
    // Without a branch.
    const bool known = (int{isKnownBase(first)} & int{isKnownBase(second)}) != 0;
    pairs[i] = static_cast<std::uint8_t>(known ? 4 * first + second : kDinucleotides);
  }
  return pairs;
}

using PairCounts = std::array<int, kDinucleotides + 1>;  // [pair]

Composition compositionOf(const PairCounts& counts) {
  Composition composition;
  std::copy_n(counts.begin(), kDinucleotides, composition.pairs.begin());
  composition.total = std::accumulate(composition.pairs.begin(), composition.pairs.end(), 0);
  return composition;
}

}  // namespace

int Composition::strong() const {
  int sum = 0;
  for (std::size_t pair = 0; pair < pairs.size(); ++pair) sum += pair % 4 >= 2 ? pairs[pair] : 0;
  return sum;
}

int Composition::gcClass() const {
  if (total == 0) return 1;
  const long share = 1000L * strong();  // compared with thousandths of the total
  return (share >= 395L * total) + (share >= 485L * total) + (share >= 575L * total);
}

void compose(std::span<const short> codes, std::vector<Composition>& blocks) {
  constexpr std::size_t kReach = kCompositionReach;
  const std::vector<std::uint8_t> pairs = indexPairs(codes);
  blocks.clear();
  PairCounts counts{};
  std::size_t first = 0, last = 0;  // pairs that end at bases [first, last) are counted
  for (std::size_t begin = 0; begin < codes.size(); begin += kCompositionBlock) {
    const std::size_t middle = begin + kCompositionBlock / 2;
    const std::size_t from = middle < kReach ? 0 : middle - kReach + 1;
    const std::size_t to = std::min(codes.size(), middle + kReach);
    for (; last < to; ++last) ++counts[pairs[last]];
    for (; first < from; ++first) --counts[pairs[first]];
    blocks.push_back(compositionOf(counts));
  }
}

}  // namespace velto
