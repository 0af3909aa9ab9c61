// The corrected coding sequence of a prediction, and the parts of the read that make it up.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/genetic_code.h"
#include "velto/velto.h"

namespace velto {

// Adjoining bases of the read, first to one behind the last, 0-based on the predicted strand.
struct CodingPart {
  int begin;
  int end;
  int phase;  // bases before the first base of the next codon, 0 to 2
};

constexpr int kCodingTypes = 5;

// Whether the coding region has its start codon and its stop codon, and no stop codon between.
enum class CodingType {
  kComplete,     // both, none between
  kInterrupted,  // both, and inner stop codons
  kNoStart,      // whatever lies between in this and the next ones
  kNoStop,
  kNeither,
};

// The coding region read in frame from its first to its last whole codon.
struct CodingSequence {
  std::string bases;               // inserted bases left out, an N for each lost base; whole codons
  std::vector<CodingPart> kept;    // all bases of the read that are in it
  std::vector<CodingPart> intact;  // the same without the codons that lost a base
  CodingType type = CodingType::kNeither;
  std::string protein;  // one letter for each codon: '*' for a stop codon, X for a codon with N
  int innerStops = 0;   // stop codons but the one at the end
};

// `letters` are those of predictedLetters on the prediction's strand. A start codon of the code is
// M in the first place, a stop codon '*' in the last one, whatever they mean elsewhere. A
// prediction that is not coding has an empty sequence.
CodingSequence codingSequence(const Prediction& prediction, std::string_view letters,
                              const GeneticCode& code);

// How a protein shows the stop codons but the one at its end.
enum class InnerStops {
  kKeep,   // '*'
  kX,      // 'X', an unknown amino acid
  kSplit,  // the protein ends there, and another one begins behind it
};

// The proteins of the sequence, in order; one unless it is split, and then none without amino
// acids.
std::vector<std::string> proteins(const CodingSequence& sequence, InnerStops innerStops);

// "complete", "interrupted", "5prime_partial" (no start codon), "3prime_partial" (no stop codon) or
// "internal".
const char* nameOf(CodingType type);

// The same for people: "complete: from a start codon to a stop codon".
const char* meaningOf(CodingType type);

}  // namespace velto
