// How sure the figures of a model are: a bootstrap over transcripts.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "evaluation/evaluation_counts.h"
#include "evaluation/resampling.h"

namespace velto {

// [evaluationFigures()]; empty where no resample defines the figure.
using FigureIntervals = std::vector<std::optional<Interval>>;

// The intervals of all figures, from the counts of each transcript. Each resample draws as many
// transcripts with replacement; those in which a figure is not defined are left out of its
// interval. The same seed gives the same result.
FigureIntervals figureIntervals(const std::vector<EvaluationCounts>& byTranscript,
                                std::uint64_t seed);

}  // namespace velto
