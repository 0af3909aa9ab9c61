// The corrected coding sequence of a prediction by any genetic code, and its proteins.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/genetic_code.h"
#include "velto/velto.h"

namespace velto {

constexpr int kCodingTypes = 5;

// As the one of velto.h.
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

// What a type says to people: "complete: from a start codon to a stop codon".
const char* meaningOf(CodingType type);

}  // namespace velto
