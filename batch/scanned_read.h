// One record with its prediction: what every output format writes from.
#pragma once

#include <string>

#include "seqio/record.h"
#include "velto/velto.h"

namespace velto {

struct ScannedRead {
  const Record& record;
  long ordinal;  // 1-based place among all records of the run
  const Prediction& prediction;
  const CodingSequence& coding;  // empty unless the status is coding
  bool nameIsRepeat = false;     // an earlier record of the run has the same name

  bool isCoding() const { return prediction.isCoding(); }
  bool isPredicted() const { return prediction.isPredicted(); }
};

// '+' or '-'.
char symbolOf(Strand strand);

// The 1-based positions of the frameshifts of one kind, comma-separated.
std::string positionList(const Prediction& prediction, Frameshift::Kind kind);

// The confidences of the same frameshifts in the same order, comma-separated; empty if the decoder
// gives none.
std::string confidenceList(const Prediction& prediction, Frameshift::Kind kind);

// The number with up to `digits` significant digits, as an output stream writes it.
std::string numberText(double number, int digits);

// The score as the one-read program prints it.
std::string scoreText(double score);

// A probability with up to six significant digits; empty if the decoder gives none.
std::string probabilityText(double probability);

}  // namespace velto
