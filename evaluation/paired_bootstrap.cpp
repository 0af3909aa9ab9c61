#include "evaluation/paired_bootstrap.h"

#include <algorithm>
#include <numeric>

#include "evaluation/resampling.h"

namespace velto {
namespace {

std::optional<double> difference(const Figure& figure, const EvaluationCounts& first,
                                 const EvaluationCounts& second) {
  const FigureValue a = figure.of(first);
  const FigureValue b = figure.of(second);
  if (!a.value || !b.value) return std::nullopt;
  return *a.value - *b.value;
}

double favouring(const std::vector<double>& differences, bool lowerIsBetter) {
  double share = 0.0;
  for (const double d : differences) {
    if (d == 0.0) {
      share += 0.5;
    } else if ((d < 0.0) == lowerIsBetter) {
      share += 1.0;
    }
  }
  return share / static_cast<double>(differences.size());
}

FigureDifference summary(const Figure& figure, std::optional<double> ofAll,
                         std::vector<double>& resampled) {
  FigureDifference result;
  result.difference = ofAll;
  if (!ofAll || resampled.empty()) return result;
  std::sort(resampled.begin(), resampled.end());
  const Interval interval = intervalOf(resampled);
  result.low = interval.low;
  result.high = interval.high;
  result.favouringFirst = favouring(resampled, figure.lowerIsBetter);
  return result;
}

}  // namespace

std::vector<FigureDifference> pairedBootstrap(const std::vector<EvaluationCounts>& first,
                                              const std::vector<EvaluationCounts>& second,
                                              std::uint64_t seed) {
  const std::vector<Figure>& figures = evaluationFigures();
  std::vector<std::vector<double>> resampled(figures.size());  // [figure][resample]
  if (!first.empty()) {
    forEachResample(first.size(), seed, [&](const std::vector<std::uint32_t>& chosen) {
      const EvaluationCounts a = sumOf(first, chosen);
      const EvaluationCounts b = sumOf(second, chosen);
      for (std::size_t f = 0; f < figures.size(); ++f) {
        const std::optional<double> d = difference(figures[f], a, b);
        if (d) resampled[f].push_back(*d);
      }
    });
  }
  std::vector<std::uint32_t> all(first.size());
  std::iota(all.begin(), all.end(), 0U);
  const EvaluationCounts totals[2] = {sumOf(first, all), sumOf(second, all)};
  std::vector<FigureDifference> result;
  for (std::size_t f = 0; f < figures.size(); ++f) {
    const std::optional<double> ofAll = difference(figures[f], totals[0], totals[1]);
    result.push_back(summary(figures[f], ofAll, resampled[f]));
  }
  return result;
}

}  // namespace velto
