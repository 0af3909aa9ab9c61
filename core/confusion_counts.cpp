#include "core/confusion_counts.h"

#include <algorithm>
#include <iterator>

#include "core/class_correlation.h"

namespace velto {

std::optional<double> ConfusionCounts::correlation() const {
  const auto tp = static_cast<double>(both);
  const auto tn = static_cast<double>(neither());
  const auto fn = static_cast<double>(coding - both);
  const auto fp = static_cast<double>(called - both);
  const double sums[4] = {tp + fn, tn + fp, tp + fp, tn + fn};
  if (*std::min_element(std::begin(sums), std::end(sums)) <= 0.0) return std::nullopt;
  return classCorrelation(tp * tn, fn * fp, sums);
}

ConfusionCounts& ConfusionCounts::operator+=(const ConfusionCounts& other) {
  bases += other.bases;
  coding += other.coding;
  called += other.called;
  both += other.both;
  inFrame += other.inFrame;
  return *this;
}

ConfusionCounts countBases(std::span<const std::int8_t> known,
                           std::span<const std::int8_t> called) {
  ConfusionCounts counts;
  counts.bases = static_cast<long>(known.size());
  for (const std::int8_t frame : known) counts.coding += frame >= 0;
  for (std::size_t p = 0; p < called.size(); ++p) {
    if (called[p] < 0) continue;
    ++counts.called;
    counts.both += known[p] >= 0;
    counts.inFrame += known[p] == called[p];
  }
  return counts;
}

}  // namespace velto
