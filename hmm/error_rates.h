// Error rates of a file, learnt from a sample of its reads.
#pragma once

#include <span>
#include <vector>

#include "core/read_view.h"
#include "hmm/base_rates.h"
#include "hmm/hmm_model.h"

namespace velto {

// Fewer reads tell nothing about the mean rates.
constexpr std::size_t kLeastReadsForRates = 20;
// Of more, so many are chosen.
constexpr std::size_t kMostRateReads = 300;

struct LearntRates {
  BaseErrorRates mean;
  std::vector<QualityBin> qualities;  // empty: they tell nothing
};

// Learns insertion, deletion and substitution rates by expectation maximisation on up to
// kMostRateReads reads spread over the sample, those that look coding by the count tables alone;
// fewer than kLeastReadsForRates reads have the default rates. Where the reads have qualities that
// differ, their bins get rates of their own. The result depends on reads and model alone, in
// whatever order its parts are run.
LearntRates learnErrorRates(const HmmModel& model, std::span<const ReadView> sample,
                            const ParallelFor& parallel);

// The same with these mean rates: only what qualities say is learnt.
LearntRates learnQualityRates(const HmmModel& model, const BaseErrorRates& mean,
                              std::span<const ReadView> sample, const ParallelFor& parallel);

}  // namespace velto
