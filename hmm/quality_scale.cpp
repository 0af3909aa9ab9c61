#include "hmm/quality_scale.h"

#include <algorithm>
#include <cmath>

#include "hmm/float_math.h"

namespace velto {
namespace {

// Upper ends of the bins, as shares of the bases in order of quality.
constexpr BinSums kBinEnds = {0.02, 0.05, 0.1, 0.2, 0.35, 0.5, 0.75, 1.0};

// Counts this small are not taken at their word.
constexpr double kPriorEvents = 50.0;

double errorProbability(std::size_t phred) {
  constexpr float kHighest = 90.0f;
  return powerOfTwo(-0.33219281f * std::min(static_cast<float>(phred), kHighest));
}

}  // namespace

QualityScale::QualityScale(std::span<const ReadView> sample) {
  std::array<double, 256> count{};
  double total = 0.0;
  for (const ReadView& read : sample) {
    for (const std::uint8_t phred : read.phred) count[phred] += 1.0;
    total += static_cast<double>(read.phred.size());
  }
  if (std::count_if(count.begin(), count.end(), [](double n) { return n > 0.0; }) < 2) return;
  double below = 0.0;
  auto end = kBinEnds.begin();  // of the bin that is being filled
  for (std::size_t phred = 0; phred < count.size(); ++phred) {
    if (count[phred] == 0.0) continue;
    const double rank = std::min(1.0, (below + 0.5 * count[phred]) / total);
    if (most_.empty() || rank > *end) most_.push_back(0);
    while (rank > *end) ++end;
    most_.back() = static_cast<std::uint8_t>(phred);
    share_[most_.size() - 1] += count[phred] / total;
    error_[most_.size() - 1] += count[phred] / total * errorProbability(phred);
    below += count[phred];
  }
  most_.back() = 255;
  for (std::size_t b = 0; b < most_.size(); ++b) error_[b] /= share_[b];
}

BinMultipliers QualityScale::statedMultipliers() const {
  double mean = 0.0;
  for (std::size_t b = 0; b < kQualityBins; ++b) mean += share_[b] * error_[b];
  BinMultipliers multipliers;
  for (std::size_t b = 0; b < kQualityBins; ++b) {
    multipliers[b] = b < most_.size() ? std::sqrt(error_[b] / mean) : 1.0;
  }
  normalise(multipliers);
  return multipliers;
}

void QualityScale::refine(const BinSums& expected, const BinSums& modelled,
                          BinMultipliers& multipliers) const {
  double allExpected = 0.0, allModelled = 0.0;
  for (std::size_t b = 0; b < kQualityBins; ++b) {
    allExpected += expected[b];
    allModelled += modelled[b];
  }
  if (allModelled <= 0.0) return;
  const double level = allExpected / allModelled;
  for (std::size_t b = 0; b < kQualityBins; ++b) {
    multipliers[b] *= (expected[b] + kPriorEvents) / (modelled[b] * level + kPriorEvents);
  }
  normalise(multipliers);
}

void QualityScale::normalise(BinMultipliers& multipliers) const {
  double mean = 0.0;
  for (std::size_t b = 0; b < kQualityBins; ++b) mean += share_[b] * multipliers[b];
  for (std::size_t b = 0; b < most_.size(); ++b) multipliers[b] /= mean;
}

}  // namespace velto
