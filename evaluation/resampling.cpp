#include "evaluation/resampling.h"

#include <algorithm>
#include <cmath>

namespace velto {
namespace {

// The value below which a share of the sorted values lies, interpolated between neighbours.
double quantile(const std::vector<double>& sorted, double share) {
  const double place = share * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  return sorted[below] + (place - std::floor(place)) * (sorted[above] - sorted[below]);
}

}  // namespace

Interval intervalOf(const std::vector<double>& sorted) {
  return {quantile(sorted, kIntervalTail), quantile(sorted, 1.0 - kIntervalTail)};
}

}  // namespace velto
