#include "evaluation/figure_intervals.h"

#include <algorithm>

#include "evaluation/evaluation_figures.h"

namespace velto {

FigureIntervals figureIntervals(const std::vector<EvaluationCounts>& byTranscript,
                                std::uint64_t seed) {
  const std::vector<Figure>& figures = evaluationFigures();
  FigureIntervals intervals(figures.size());
  if (byTranscript.empty()) return intervals;
  std::vector<std::vector<double>> resampled(figures.size());  // [figure][resample]
  forEachResample(byTranscript.size(), seed, [&](const std::vector<std::uint32_t>& chosen) {
    const EvaluationCounts counts = sumOf(byTranscript, chosen);
    for (std::size_t f = 0; f < figures.size(); ++f) {
      const FigureValue value = figures[f].of(counts);
      if (value.value) resampled[f].push_back(*value.value);
    }
  });
  for (std::size_t f = 0; f < figures.size(); ++f) {
    if (resampled[f].empty()) continue;
    std::sort(resampled[f].begin(), resampled[f].end());
    intervals[f] = intervalOf(resampled[f]);
  }
  return intervals;
}

}  // namespace velto
