#include "hmm/composition.h"

#include <algorithm>

#include "core/base_code.h"

namespace velto {
namespace {

// Adds `change` for the pair that ends at base i.
void count(std::span<const short> codes, int i, int change, Composition& composition) {
  const int first = codes[static_cast<std::size_t>(i - 1)];
  const int second = codes[static_cast<std::size_t>(i)];
  if (!isKnownBase(first) || !isKnownBase(second)) return;
  composition.pairs[static_cast<std::size_t>(4 * first + second)] += change;
  composition.total += change;
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
  Composition now;
  int first = 1, last = 1;  // pairs that end at bases [first, last) are counted
  for (int begin = 0; begin < length; begin += kCompositionBlock) {
    const int middle = begin + kCompositionBlock / 2;
    const int from = std::max(1, middle - kCompositionReach + 1);
    const int to = std::min(length, middle + kCompositionReach);
    for (; last < to; ++last) count(codes, last, 1, now);
    for (; first < from; ++first) count(codes, first, -1, now);
    blocks.push_back(now);
  }
}

}  // namespace velto
