// The evaluation of one decoder of a model on sets of labelled reads.
#pragma once

#include <span>
#include <vector>

#include "evaluation/evaluation_report.h"
#include "simulation/labelled_read.h"
#include "velto/velto.h"

namespace velto {

// Reads with alike error rates.
struct ReadSet {
  std::vector<LabelledRead> reads;
  bool isWhole;  // the reads to be judged; others only serve the series of error rates
};

// Where the points of ModelEvaluation::byRate come from.
enum class RateSeries {
  kNone,
  kSets,   // a point for each set
  kReads,  // the whole set's reads, grouped by their own rates
};

struct JudgedModel {
  ModelEvaluation evaluation;
  std::vector<EvaluationCounts> byTranscript;  // of the whole set, see totalsByTranscript
};

// Judges the predictions along the reads as they are, by a decoder fitted to each set. Exactly one set is whole.
// Uses all threads of the calling arena; the result does not depend on their number.
JudgedModel judgeModel(const Predictor& predictor, std::span<const ReadSet> sets,
                       RateSeries series);

}  // namespace velto
