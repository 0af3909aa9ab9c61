// Composition of a read around each block of bases: its class of G and C, its dinucleotides.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "hmm/hmm_model.h"

namespace velto {

constexpr int kCompositionBlock = 32;   // bases that share one composition
constexpr int kCompositionReach = 250;  // bases counted on either side of a block's middle

// Counts of the pairs of known bases in [middle - reach, middle + reach), cut to the read.
struct Composition {
  std::array<int, kDinucleotides> pairs{};  // [4 x first + second]
  int total = 0;

  // Pairs whose second base is G or C.
  int strong() const;
  // 0 to 3 by the nearest of the centres .35 .44 .53 .62; 1 where nothing is known.
  int gcClass() const;
  // 8 x (share of the pair) - 0.5; 0 where nothing is known.
  float input(int pair) const {
    return total == 0 ? 0.0f
                      : 8.0f * static_cast<float>(pairs[static_cast<std::size_t>(pair)]) /
                                static_cast<float>(total) -
                            0.5f;
  }
};

// One for each block, the last of which may be short; time linear in the length.
void compose(std::span<const short> codes, std::vector<Composition>& blocks);

}  // namespace velto
