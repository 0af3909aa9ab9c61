// The figures of an evaluation, each computed from the counts of any set of reads.
#pragma once

#include <optional>
#include <vector>

#include "evaluation/evaluation_counts.h"

namespace velto {

// A figure of some reads. `value` is empty where nothing was there to be judged.
struct FigureValue {
  std::optional<double> value;
  long part = 0;   // numerator; 0 for the correlation
  long whole = 0;  // denominator; for the correlation the bases
};

struct Figure {
  const char* id;     // key in JSON
  const char* label;  // in tables
  bool lowerIsBetter;
  bool isRatio;  // value = part / whole; false for the correlation alone
  FigureValue (*of)(const EvaluationCounts& counts);
};

// All figures in the order of the reports.
const std::vector<Figure>& evaluationFigures();

// The figures that stand in tables by class, in plots and in model cards.
FigureValue sensitivityOf(const EvaluationCounts& counts);
FigureValue precisionOf(const EvaluationCounts& counts);
FigureValue correlationOf(const EvaluationCounts& counts);
FigureValue frameSensitivityOf(const EvaluationCounts& counts);
FigureValue framePrecisionOf(const EvaluationCounts& counts);
FigureValue frameF1Of(const EvaluationCounts& counts);
FigureValue noncodingCalledOf(const EvaluationCounts& counts);
FigureValue bothExactOf(const EvaluationCounts& counts);

}  // namespace velto
