// The evaluation of one decoder of a model on sets of labelled reads.
#pragma once

#include <cstdint>
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
enum class RatePoints {
  kNone,
  kSets,   // a point for each set
  kReads,  // the whole set's reads, grouped by their own rates
};

// What is computed for plots; with points, the intervals of classes and points too.
struct RateSeries {
  RatePoints points = RatePoints::kNone;
  std::uint64_t seed = 1;  // of the intervals, see figureIntervals
};

struct JudgedModel {
  ModelEvaluation evaluation;
  std::vector<EvaluationCounts> byTranscript;  // of the whole set, see totalsByTranscript
};

// Judges the predictions along the reads as they are, by a decoder fitted to each set. Exactly one
// set is whole.
// Uses all threads of the calling arena; the result does not depend on their number.
JudgedModel judgeModel(const Predictor& predictor, std::span<const ReadSet> sets,
                       const RateSeries& series = {});

}  // namespace velto
