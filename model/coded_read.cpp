#include "model/coded_read.h"

#include "core/base_code.h"

namespace velto {
namespace {

constexpr int kBehindRead = 3 * kPairGaps;  // bases up to the last partner of a codon

// Both numbers of a codon; entry kCodons stands for no codon.
struct CodonLookup {
  std::array<std::uint8_t, kCodons + 1> acid;
  std::array<std::uint8_t, kCodons + 1> synonym;
};

int acidOf(int codon) { return ReadData::CodonTable(codon / 16, codon / 4 % 4, codon % 4); }

std::array<std::uint8_t, kCodons> makeSynonyms() {
  std::array<std::uint8_t, kCodons> synonyms{};
  std::uint8_t next[kAminoAcids] = {};
  for (size_t codon = 0; codon < kCodons; ++codon) {
    synonyms[codon] = next[acidOf(static_cast<int>(codon))]++;
  }
  return synonyms;
}

CodonLookup makeLookup() {
  CodonLookup lookup{};
  lookup.acid.fill(kUncountedAcid);
  for (size_t codon = 0; codon < kCodons; ++codon) {
    lookup.acid[codon] = static_cast<std::uint8_t>(acidOf(static_cast<int>(codon)));
    lookup.synonym[codon] = codonSynonyms()[codon];
  }
  return lookup;
}

}  // namespace

const std::array<std::uint8_t, kCodons>& codonSynonyms() {
  static const std::array<std::uint8_t, kCodons> synonyms = makeSynonyms();
  return synonyms;
}

void CodedRead::assign(const short* seq, int length) {
  static const CodonLookup lookup = makeLookup();
  const size_t bases = static_cast<size_t>(length);
  acids_.assign(bases + kBehindRead, kUncountedAcid);
  synonyms_.assign(bases, 0);
  for (size_t p = 0; p + 2 < bases; ++p) {
    const int codon = codonIndex(seq[p], seq[p + 1], seq[p + 2]);
    const int number = codon == kNoCodon ? kCodons : codon;
    acids_[p] = lookup.acid[static_cast<size_t>(number)];
    synonyms_[p] = lookup.synonym[static_cast<size_t>(number)];
  }
}

}  // namespace velto
