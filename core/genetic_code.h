// The genetic codes of the NCBI list: amino acids, start and stop codons.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velto {

// Codons are three letters; one with another letter than A, C, G and T is unknown. Constant.
struct GeneticCode {
  int number;  // in the list
  // Both have a letter for each codon in the order of the list, TTT, TTC, TTA, TTG, TCT to GGG.
  std::string_view acids;    // one-letter code, '*' for a codon that only ends proteins
  std::string_view signals;  // 'M': may begin a protein, '*': may end one, '-': neither

  // 'X' for an unknown codon.
  char acidOf(std::string_view codon) const;
  bool mayStart(std::string_view codon) const;
  bool mayStop(std::string_view codon) const;

  // The codons that may end a protein, in the order of the list.
  std::vector<std::string> stops() const;
};

// All codes, by number. Code 1 has ATG as its only start codon, though the list names CTG and TTG
// too, which begin few proteins and many fragments.
std::span<const GeneticCode> geneticCodes();

// Code 1.
const GeneticCode& standardCode();

// Null if the list has no such number.
const GeneticCode* geneticCode(int number);

}  // namespace velto
