#include "evaluation/rate_series.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace velto {
namespace {

// Upper bounds of the groups, frameshifts per 100 coding bases.
constexpr double kGroupMost[] = {0.0, 0.5, 1.0, 2.0, std::numeric_limits<double>::infinity()};

double shiftsPer100(const EvaluationCounts& counts) {
  if (counts.coding == 0) return 0.0;
  return 100.0 * static_cast<double>(counts.shifts.known) / static_cast<double>(counts.coding);
}

}  // namespace

std::vector<double> indelShares(const ErrorRates& rates) {
  if (rates.insertion + rates.deletion <= 0.0) return {1.0};
  return {0.0, 1.0 / 3.0, 2.0 / 3.0, 1.0};
}

RatePoint ratePoint(const EvaluationCounts& counts) { return {shiftsPer100(counts), counts}; }

std::vector<RatePoint> ratePointsOfReads(const std::vector<ReadEvaluation>& evaluations) {
  EvaluationCounts groups[std::size(kGroupMost)];
  for (const ReadEvaluation& evaluation : evaluations) {
    if (evaluation.counts.coding == 0) continue;
    const auto group = std::lower_bound(std::begin(kGroupMost), std::end(kGroupMost),
                                        shiftsPer100(evaluation.counts));
    groups[group - std::begin(kGroupMost)] += evaluation.counts;
  }
  std::vector<RatePoint> points;
  for (const EvaluationCounts& group : groups) {
    if (group.reads > 0) points.push_back(ratePoint(group));
  }
  return points;
}

}  // namespace velto
