// One read with its prediction: what every drawing is made from.
#pragma once

#include <string_view>

#include "core/genetic_code.h"
#include "velto/velto.h"

namespace velto {

// What it points to must outlive it.
struct DrawnRead {
  std::string_view name;  // any bytes
  // With scores if the curves are to be drawn. They are probabilities, 0 to 1, if the prediction
  // has a probability, else votes, which are above 0 for coding.
  const Prediction& prediction;
  std::string_view letters;  // of predictedLetters on the prediction's strand
  // Amino acid of each corrected codon, '*' for a stop, 'X' for a codon that lost a base; empty
  // unless coding.
  std::string_view protein;
  const GeneticCode& code;  // whose start and stop codons are shown
};

}  // namespace velto
