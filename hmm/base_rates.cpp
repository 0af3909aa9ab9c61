#include "hmm/base_rates.h"

namespace velto {
namespace {

// Not a number counts as the least.
float cut(double rate, double least, double most) {
  return static_cast<float>(rate > least ? std::min(rate, most) : least);
}

// The model is too sure of what it has seen: of the logarithm of its odds the read decision takes
// less than a half. Where frameshifts are rarer than in all reads with errors of its training, the
// logarithm of how much rarer counts twice in return; else a region that only looks like two would
// have one.
float againstSureness(float indels) {
  constexpr float kLeastTrained = 5e-4f;
  return indels < kLeastTrained ? indels * (indels / kLeastTrained) : indels;
}

// Rates beyond these leave no likely path.
BaseRates usableRates(const BaseErrorRates& rates) {
  return {againstSureness(cut(rates.insertion, 0.0, 0.06)),
          againstSureness(cut(rates.deletion, 0.0, 0.12)), cut(rates.substitution, 1e-5, 0.3)};
}

}  // namespace

FileRates::FileRates(const BaseErrorRates& meanRates, std::span<const QualityBin> bins)
    : mean(usableRates(meanRates)), byQuality(!bins.empty()) {
  const std::size_t count = std::min(bins.size(), kQualityBins);
  for (std::size_t b = 0; b < count; ++b) {
    const BaseErrorRates& factors = bins[b].factors;
    ofBin[b] =
        usableRates({meanRates.insertion * factors.insertion, meanRates.deletion * factors.deletion,
                     meanRates.substitution * factors.substitution});
  }
  std::size_t bin = 0;
  for (std::size_t phred = 0; phred < binOf.size(); ++phred) {
    while (bin + 1 < count && phred > bins[bin].most) ++bin;
    binOf[phred] = static_cast<std::uint8_t>(bin);
  }
}

}  // namespace velto
