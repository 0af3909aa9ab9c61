// The codons of one read as the integer vote takes them: table numbers base by base.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "model/model_tables.h"

namespace velto {

// Amino acid of a codon that counts nothing, chosen so that tables need no test for it.
constexpr std::uint8_t kUncountedAcid = kAminoAcids;
constexpr int kCodons = 64;

// Codons numbered so that those of one amino acid stand together: the slots of acid a are
// first[a] to first[a + 1] - 1.
struct CodonSlots {
  std::array<std::uint8_t, kAminoAcids + 1> first;
  std::array<std::uint8_t, kCodons> slotOf;  // [16 x first + 4 x second + third base code]
};
const CodonSlots& codonSlots();

// Reusable for one read after another; for one thread at a time.
class CodedRead {
 public:
  void assign(const short* seq, int length);

  // Amino acid and slot of the codon at base p, 0 <= p < length; the acids may be asked for up to
  // four codons behind the read.
  std::uint8_t acid(int p) const { return acids_[static_cast<size_t>(p)]; }
  std::uint8_t slot(int p) const { return slots_[static_cast<size_t>(p)]; }

 private:
  std::vector<std::uint8_t> acids_;  // [base], kUncountedAcid where there is no codon
  std::vector<std::uint8_t> slots_;  // [base], 0 where there is no codon
};

}  // namespace velto
