// A record of an input predicted for a drawing.
#pragma once

#include <cstddef>
#include <string>

#include "core/genetic_code.h"
#include "draw/drawn_read.h"
#include "draw/page.h"
#include "seqio/record.h"
#include "velto/velto.h"

namespace velto {

// Longer reads are not kept for the drawings of a report.
constexpr std::size_t kMostDrawnBases = 20'000;

struct DrawableRead {
  std::string name;       // "unnamed read" if the record has none
  Prediction prediction;  // with scores
  std::string letters;
  CodingSequence coding;
  const GeneticCode& code;

  DrawnRead drawn() const { return {name, prediction, letters, coding.protein, code}; }
};

// Predicts the record as `options` say, but with scores.
DrawableRead drawableRead(const Predictor& predictor, const Record& record, PredictOptions options,
                          const GeneticCode& code, bool useQualities);

// What is known of the read, from its description to the model that served.
Facts factsOf(const Record& record, const DrawableRead& read);

}  // namespace velto
