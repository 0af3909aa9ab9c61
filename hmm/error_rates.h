// Error rates of a file, learnt from a sample of its reads.
#pragma once

#include <span>

#include "core/read_view.h"
#include "hmm/base_rates.h"
#include "hmm/hmm_model.h"

namespace velto {

// Fewer reads tell nothing: the default rates are taken.
constexpr std::size_t kLeastReadsForRates = 20;

// Learns insertion, deletion and substitution rates by expectation maximisation on up to 300 reads
// spread over the sample, those that look coding by the count tables alone. Where the reads have
// qualities that differ, their bins get rates of their own. The result depends on the arguments
// alone.
FileRates learnErrorRates(const HmmModel& model, std::span<const ReadView> sample);

// The same with these mean rates, however many reads: only what qualities say is learnt.
FileRates learnQualityRates(const HmmModel& model, const BaseRates& mean,
                            std::span<const ReadView> sample);

}  // namespace velto
