#include "evaluation/paired_bootstrap.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/random.h"

namespace velto {
namespace {

std::optional<double> difference(const Figure& figure, const EvaluationCounts& first,
                                 const EvaluationCounts& second) {
  const FigureValue a = figure.of(first);
  const FigureValue b = figure.of(second);
  if (!a.value || !b.value) return std::nullopt;
  return *a.value - *b.value;
}

// The value below which a share of the sorted values lies, interpolated between neighbours.
double quantile(const std::vector<double>& sorted, double share) {
  const double place = share * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  return sorted[below] + (place - std::floor(place)) * (sorted[above] - sorted[below]);
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

EvaluationCounts sum(const std::vector<EvaluationCounts>& counts,
                     const std::vector<std::uint32_t>& chosen) {
  EvaluationCounts total;
  for (const std::uint32_t i : chosen) total += counts[i];
  return total;
}

// Calls use(first, second) with both models' sums over each resample of the transcripts.
template <typename Use>
void forEachResample(const std::vector<EvaluationCounts>& first,
                     const std::vector<EvaluationCounts>& second, std::uint64_t seed, Use use) {
  std::vector<std::uint32_t> chosen(first.size());
  for (std::uint64_t resample = 0; resample < kResamples; ++resample) {
    Random random = Random::split(seed, resample);
    for (std::uint32_t& i : chosen) i = random.below(static_cast<std::uint32_t>(first.size()));
    use(sum(first, chosen), sum(second, chosen));
  }
}

FigureDifference summary(const Figure& figure, std::optional<double> ofAll,
                         std::vector<double>& resampled) {
  FigureDifference result;
  result.difference = ofAll;
  if (!ofAll || resampled.empty()) return result;
  std::sort(resampled.begin(), resampled.end());
  result.low = quantile(resampled, kIntervalTail);
  result.high = quantile(resampled, 1.0 - kIntervalTail);
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
    forEachResample(first, second, seed, [&](const auto& a, const auto& b) {
      for (std::size_t f = 0; f < figures.size(); ++f) {
        const std::optional<double> d = difference(figures[f], a, b);
        if (d) resampled[f].push_back(*d);
      }
    });
  }
  std::vector<std::uint32_t> all(first.size());
  std::iota(all.begin(), all.end(), 0U);
  const EvaluationCounts totals[2] = {sum(first, all), sum(second, all)};
  std::vector<FigureDifference> result;
  for (std::size_t f = 0; f < figures.size(); ++f) {
    const std::optional<double> ofAll = difference(figures[f], totals[0], totals[1]);
    result.push_back(summary(figures[f], ofAll, resampled[f]));
  }
  return result;
}

}  // namespace velto
