// One read through all steps up to the posteriors, with the memory they need.
#pragma once

#include <vector>

#include "core/read_view.h"
#include "hmm/forward_backward.h"
#include "hmm/read_decision.h"

namespace velto {

// Memory kept from read to read, and the results of the last one.
struct ReadLattice {
  ReadContext context;
  std::vector<Factors> factors;
  std::vector<BaseEmission> emissions;
  ForwardRows forward;
  std::vector<StatePosterior> posteriors;

  // Fills the members up to the emissions. Without the network, the count tables alone emit.
  void prepare(const HmmModel& model, const FileRates& rates, const ReadView& read,
               bool useNetwork);

  // Prepares the read and runs forward and backward over it.
  void run(const HmmModel& model, const FileRates& rates, const ReadView& read, bool useNetwork);

  // Of the last run.
  ReadEvidence evidence() const { return evidenceOf(forward, posteriors); }
};

}  // namespace velto
