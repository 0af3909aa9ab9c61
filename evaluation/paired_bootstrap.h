// How sure the difference between two models is: a paired bootstrap over transcripts.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "evaluation/evaluation_counts.h"
#include "evaluation/evaluation_figures.h"

namespace velto {

// The difference of one figure, first model minus second. Empty where the figure is not defined for
// both models.
struct FigureDifference {
  std::optional<double> difference;      // of the reads as they are
  std::optional<double> low, high;       // 95 % of the resamples' differences lie between them
  std::optional<double> favouringFirst;  // share of the resamples; a tie counts half
};

// The differences of all evaluationFigures(). The two lists hold the counts of the same transcripts
// in the same order. Each resample draws as many transcripts with replacement and takes both
// models' counts of them. The same seed gives the same result.
std::vector<FigureDifference> pairedBootstrap(const std::vector<EvaluationCounts>& first,
                                              const std::vector<EvaluationCounts>& second,
                                              std::uint64_t seed);

}  // namespace velto
