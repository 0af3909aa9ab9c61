#include "hmm/composition.h"

#include <algorithm>
#include <numeric>

#include "core/base_code.h"

namespace velto {
namespace {

// Pair that ends at base i, behind all others where a base of it is unknown.
std::size_t pairAt(std::span<const short> codes, int i) {
  const int first = codes[static_cast<std::size_t>(i - 1)];
  const int second = codes[static_cast<std::size_t>(i)];
  const bool known = isKnownBase(first) && isKnownBase(second);
  return static_cast<std::size_t>(known ? 4 * first + second : kDinucleotides);
}

using PairCounts = std::array<int, kDinucleotides + 1>;  // [pairAt]

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
  const int length = static_cast<int>(codes.size());
  blocks.clear();
  PairCounts counts{};
  int first = 1, last = 1;  // pairs that end at bases [first, last) are counted
  for (int begin = 0; begin < length; begin += kCompositionBlock) {
    const int middle = begin + kCompositionBlock / 2;
    const int from = std::max(1, middle - kCompositionReach + 1);
    const int to = std::min(length, middle + kCompositionReach);
    for (; last < to; ++last) ++counts[pairAt(codes, last)];
    for (; first < from; ++first) --counts[pairAt(codes, first)];
    blocks.push_back(compositionOf(counts));
  }
}

}  // namespace velto
