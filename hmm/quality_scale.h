// Bins of quality values, and how much more or less often bases of each bin are wrong.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "core/read_view.h"
#include "hmm/base_rates.h"

namespace velto {

using BinSums = std::array<double, kQualityBins>;

// Multipliers of the rates of one kind of error, [bin]; their mean over the bases is 1.
using BinMultipliers = std::array<double, kQualityBins>;

// The quality values of a sample in bins of given shares of its bases.
class QualityScale {
 public:
  explicit QualityScale(std::span<const ReadView> sample);

  // Whether the sample has qualities that differ.
  bool tells() const { return tells_; }
  const std::array<std::uint8_t, 256>& binOf() const { return binOf_; }

  // A first guess: the square root of what the qualities themselves say.
  BinMultipliers statedMultipliers() const;

  // Moves the multipliers to the expected events of each bin from those that they led to,
  // `modelled`. The overall rate is not the multipliers' business: both are compared by their
  // shares.
  void refine(const BinSums& expected, const BinSums& modelled, BinMultipliers& multipliers) const;

 private:
  void normalise(BinMultipliers& multipliers) const;

  bool tells_ = false;
  std::array<std::uint8_t, 256> binOf_{};
  BinSums share_{};  // of the bases
  BinSums error_{};  // mean error probability stated by the qualities
};

}  // namespace velto
