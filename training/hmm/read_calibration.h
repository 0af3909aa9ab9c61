// Fits the decisions whether a read codes, and on which strand, to simulated reads of known kind.
#pragma once

#include <cstdint>
#include <vector>

#include "hmm/hmm_model.h"
#include "hmm/read_decision.h"
#include "training/fold_split.h"

namespace velto {

// A decided case: what the decision looks at, and whether the read codes.
struct DecisionCase {
  double logOdds;  // cut
  double codingHundreds;
  bool coding;
};

// Logistic regression by Newton steps with a slight pull to zero. The share of coding cases becomes
// the decision's.
ReadDecision fitDecision(const std::vector<DecisionCase>& cases);

// A coding read on its own strand and on the other one.
struct StrandCase {
  ReadEvidence own, other;
};

// Likewise: first the scores, then how far the higher one is to be trusted.
StrandDecision fitStrands(const std::vector<StrandCase>& cases);

// Fits the decisions of a model, all else of which is final, to reads of transcripts that it was not
// trained on: fragments of coding regions, of 3' UTRs and of non-coding transcripts, clean and with
// errors, read with the error rates that are learnt from them and for their share of reads that
// begin inside the coding region. Uses all threads of the calling arena; the result does not depend
// on their number.
void calibrateDecisions(const TranscriptPool& pool, std::size_t readsPerProfile, std::uint64_t seed,
                        HmmModel& model);

}  // namespace velto
