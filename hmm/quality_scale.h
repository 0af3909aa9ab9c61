// Bins of quality values, and how much more or less often bases of each bin are wrong.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "core/read_view.h"
#include "hmm/base_rates.h"

namespace velto {

using BinSums = std::array<double, kQualityBins>;  // [bin]

// Multipliers of the rates of one kind of error, [bin]; their mean over the bases is 1.
using BinMultipliers = std::array<double, kQualityBins>;

// The quality values of a sample in bins of given shares of its bases, none of them empty.
class QualityScale {
 public:
  explicit QualityScale(std::span<const ReadView> sample);

  // Highest quality value of each bin, ascending, the last 255. Empty where the sample has no
  // qualities or all are alike: they tell nothing.
  const std::vector<std::uint8_t>& bins() const { return most_; }

  // A first guess: the square root of what the qualities themselves say.
  BinMultipliers statedMultipliers() const;

  // Moves the multipliers to the expected events of each bin from those that they led to,
  // `modelled`. The overall rate is not the multipliers' business: both are compared by their
  // shares.
  void refine(const BinSums& expected, const BinSums& modelled, BinMultipliers& multipliers) const;

 private:
  void normalise(BinMultipliers& multipliers) const;

  std::vector<std::uint8_t> most_;
  BinSums share_{};  // of the bases
  BinSums error_{};  // mean error probability stated by the qualities
};

}  // namespace velto
