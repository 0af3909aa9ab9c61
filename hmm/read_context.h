// What stands around each base of a read.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "core/base_code.h"
#include "hmm/composition.h"
#include "hmm/hmm_model.h"

namespace velto {

// The codon that begins at a base, 16 x first + 4 x second + third base code; kUnreadCodon where it
// has an unknown base or reaches beyond the read.
using CodonIndex = std::uint8_t;
constexpr CodonIndex kUnreadCodon = kCodons;

constexpr bool isStopCodon(CodonIndex codon) {
  return codon == codonIndex(1, 0, 0) || codon == codonIndex(1, 0, 2) ||
         codon == codonIndex(1, 2, 0);
}

// Longest words of bases that are looked at.
constexpr int kMostLetters = 5;

struct ReadContext {
  // The 5-mer that ends at base i, base codes in base 4 with the last base lowest: bases before the
  // read count as code 0, an unknown base j as code (7 j + 3) mod 4.
  std::vector<std::uint16_t> fiveMers;
  std::vector<std::uint8_t> knownRun;  // [base] known bases in a row up to it, at most kMostLetters
  std::vector<CodonIndex> codons;      // [base] that begin there
  std::vector<StartContext> starts;    // [base] what stands before those codons
  std::vector<Composition> blocks;

  void index(std::span<const short> codes);

  std::size_t length() const { return fiveMers.size(); }

  // Whether base i is unknown, and so are all within two bases of it in the read: what stands around
  // it says little about it, and nothing within a long gap.
  bool isInGap(std::size_t i) const {
    constexpr std::size_t kReach = 2;
    const std::size_t first = std::max(i, kReach) - kReach;
    const std::size_t end = std::min(i + kReach + 1, length());
    return std::all_of(knownRun.data() + first, knownRun.data() + end,
                       [](std::uint8_t known) { return known == 0; });
  }

  // The word of so many letters, at most kMostLetters, that ends at base i; -1 where one of its
  // bases is unknown or before the read.
  int kmer(std::size_t i, int letters) const {
    return knownRun[i] >= letters ? fiveMers[i] & ((1 << (2 * letters)) - 1) : -1;
  }
};

// Calls use(i) for every unknown base i, of which known[i] is 0.
template <class Use>
void eachUnknownBase(std::span<const std::uint8_t> known, Use use) {
  for (std::size_t i = 0; i < known.size(); ++i) {
    const void* found = std::memchr(known.data() + i, 0, known.size() - i);
    if (found == nullptr) return;
    i = static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - known.data());
    use(i);
  }
}

}  // namespace velto
