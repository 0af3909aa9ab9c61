// A finished evaluation of one model, or of two side by side, and its text and JSON.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "evaluation/evaluation_counts.h"
#include "evaluation/figure_intervals.h"
#include "evaluation/paired_bootstrap.h"

namespace velto {

// What one model made of reads with alike error rates.
struct RatePoint {
  double shiftsPer100;  // true frameshifts per 100 coding bases
  EvaluationCounts counts;
  FigureIntervals intervals = {};  // may be empty
};

struct ModelEvaluation {
  std::string directory;
  std::string decoder;  // its name
  EvaluationCounts total;
  std::vector<EvaluationCounts> byClass;        // [readClassIndex]
  std::vector<FigureIntervals> classIntervals;  // [readClassIndex]; empty when not asked for
  std::vector<RatePoint> byRate;                // ascending; empty when not asked for
  std::vector<int> shiftDistances;              // bases, see shiftDistances; reach kDistanceReach
};

struct EvaluationReport {
  std::vector<std::pair<std::string, std::string>> input;  // what was evaluated: name, value
  std::vector<ModelEvaluation> models;                     // one or two
  long transcripts = 0;                                    // that the reads come from
  std::vector<FigureDifference> differences;  // [evaluationFigures()]; empty for one model
};

// Tables of all figures and of all classes with reads; "-" where there was nothing to be judged.
std::string reportText(const EvaluationReport& report);

// The same as a JSON object, with null in place of "-". Ends with a line feed.
std::string reportJson(const EvaluationReport& report);

}  // namespace velto
