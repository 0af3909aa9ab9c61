// The codons of one read as the integer vote takes them: table numbers base by base.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "core/base_code.h"
#include "model/model_tables.h"

namespace velto {

// Amino acid of a codon that counts nothing, chosen so that tables need no test for it.
constexpr std::uint8_t kUncountedAcid = kAminoAcids;

// Most codons of one amino acid.
constexpr int kSynonyms = 6;

// [codonIndex]: the codon's number, 0 to kSynonyms - 1, among those
// of its amino acid.
const std::array<std::uint8_t, kCodons>& codonSynonyms();

// Reusable for one read after another; for one thread at a time.
class CodedRead {
 public:
  void assign(const short* seq, int length);

  // Amino acid of the codon at base p, 0 <= p < length, and the codon's number among its synonyms;
  // the acids may be asked for up to four codons behind the read.
  std::uint8_t acid(int p) const { return acids_[static_cast<size_t>(p)]; }
  std::uint8_t synonym(int p) const { return synonyms_[static_cast<size_t>(p)]; }

 private:
  std::vector<std::uint8_t> acids_;     // [base], kUncountedAcid where there is no codon
  std::vector<std::uint8_t> synonyms_;  // [base], 0 where there is no codon
};

}  // namespace velto
