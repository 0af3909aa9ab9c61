#include "model/read_data.h"

#include <array>

#include "core/base_code.h"

namespace velto {
namespace {

// [codonIndex] amino-acid number.
constexpr std::array<signed char, kCodons> kAcidOfCodon = {
    8,  11, 8,  11,  // AA: Lys Asn
    7,  7,  10, 7,   // AT: Ile Met
    14, 15, 14, 15,  // AG: Arg Ser
    16, 16, 16, 16,  // AC: Thr
    20, 19, 20, 19,  // TA: Stp Tyr
    9,  4,  9,  4,   // TT: Leu Phe
    20, 1,  18, 1,   // TG: Stp Cys Trp
    15, 15, 15, 15,  // TC: Ser
    3,  2,  3,  2,   // GA: Glu Asp
    17, 17, 17, 17,  // GT: Val
    5,  5,  5,  5,   // GG: Gly
    0,  0,  0,  0,   // GC: Ala
    13, 6,  13, 6,   // CA: Gln His
    9,  9,  9,  9,   // CT: Leu
    14, 14, 14, 14,  // CG: Arg
    12, 12, 12, 12,  // CC: Pro
};

constexpr std::array<const char*, kAminoAcids> kAcidNames = {
    "Ala", "Cys", "Asp", "Glu", "Phe", "Gly", "His", "Ile", "Lys", "Leu", "Met",
    "Asn", "Pro", "Gln", "Arg", "Ser", "Thr", "Val", "Trp", "Tyr", "Stp"};

constexpr std::array<double, kAminoAcids> uniformRates() {
  std::array<int, kAminoAcids> codons{};
  for (const signed char acid : kAcidOfCodon) ++codons[static_cast<size_t>(acid)];
  std::array<double, kAminoAcids> rates{};
  for (size_t acid = 0; acid < kAminoAcids; ++acid) rates[acid] = 1.0 / codons[acid];
  return rates;
}

constexpr std::array<double, kAminoAcids> kUniformRate = uniformRates();

}  // namespace

int ReadData::CodonTable(int first, int second, int third) {
  const int codon = codonIndex(first, second, third);
  return codon == kNoCodon ? kNoAminoAcid : kAcidOfCodon[static_cast<size_t>(codon)];
}

double ReadData::BasicCodonRate(int first, int second, int third) {
  const int acid = CodonTable(first, second, third);
  return acid == kNoAminoAcid ? -1.0 : kUniformRate[static_cast<size_t>(acid)];
}

char ReadData::outPutBase(short code) { return baseLetter(code); }

std::string ReadData::outPutAcid(short number) {
  if (number < 0 || number >= kAminoAcids) return "";
  return kAcidNames[static_cast<size_t>(number)];
}

}  // namespace velto
