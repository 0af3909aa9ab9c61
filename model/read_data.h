// The genetic code on base codes: amino-acid numbers, uniform codon shares, letters and names.
#pragma once

#include <string>

namespace velto {

// Number of amino acids with the stop signal, which is a full member of the alphabet.
constexpr int kAminoAcids = 21;
// Amino-acid numbers follow the one-letter codes alphabetically, the stop signal last.
constexpr int kMethionine = 10;
constexpr int kStopSignal = 20;
// Amino-acid number of a codon with an unknown base.
constexpr int kNoAminoAcid = -1;

// Pure functions; any thread may call them. The names are fixed.
class ReadData {
 public:
  // Amino-acid number (0 to 20) of the codon with these base codes in reading order by the standard
  // genetic code; -1 if any code is not 0 to 3.
  static int CodonTable(int first, int second, int third);

  // Share of this codon among the codons of its amino acid under uniform usage (1, 1/2, 1/3, 1/4
  // or 1/6); -1.0 if any code is not 0 to 3.
  static double BasicCodonRate(int first, int second, int third);

  // 'A', 'T', 'G' or 'C' for the codes 0 to 3, lower-case 'n' for every other value.
  static char outPutBase(short code);

  // Three-letter name ("Ala" ... "Tyr", "Stp") of 0 to 20; empty for any other value.
  static std::string outPutAcid(short number);
};

}  // namespace velto
