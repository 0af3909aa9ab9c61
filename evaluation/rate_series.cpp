#include "evaluation/rate_series.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace velto {
namespace {

// Upper bounds of the groups, frameshifts per 100 coding bases.
constexpr double kGroupMost[] = {0.0, 0.5, 1.0, 2.0, std::numeric_limits<double>::infinity()};

}  // namespace

std::vector<double> indelShares(const ErrorRates& rates) {
  if (rates.insertion + rates.deletion <= 0.0) return {1.0};
  return {0.0, 1.0 / 3.0, 2.0 / 3.0, 1.0};
}

double shiftsPer100(const EvaluationCounts& counts) {
  if (counts.coding == 0) return 0.0;
  return 100.0 * static_cast<double>(counts.shifts.known) / static_cast<double>(counts.coding);
}

std::vector<ReadPlaces> placesByRate(const std::vector<ReadEvaluation>& evaluations) {
  std::vector<ReadPlaces> groups(std::size(kGroupMost));
  for (std::uint32_t i = 0; i < evaluations.size(); ++i) {
    const EvaluationCounts& counts = evaluations[i].counts;
    if (counts.coding == 0) continue;
    const auto group =
        std::lower_bound(std::begin(kGroupMost), std::end(kGroupMost), shiftsPer100(counts));
    groups[static_cast<std::size_t>(group - std::begin(kGroupMost))].push_back(i);
  }
  std::erase_if(groups, [](const ReadPlaces& places) { return places.empty(); });
  return groups;
}

}  // namespace velto
