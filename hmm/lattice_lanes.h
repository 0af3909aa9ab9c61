// Posterior probabilities of the states of up to eight reads at once, one read in each lane of the
// processor's vectors. All results equal those of runForward and runBackward to the last bit.
#pragma once

#include <cstddef>
#include <vector>

#include "hmm/coding_path.h"
#include "hmm/forward_backward.h"
#include "hmm/lane_emissions.h"
#include "hmm/read_decision.h"

namespace velto {

// What is kept of the posteriors of a base, the place of each value in its row.
enum LanePosterior {
  kCodingBase,                      // [phase] start and stop codon included
  kInsertedBase = kCodingBase + 3,  // [phase] after that phase
  kLostBase = kInsertedBase + 3,    // [phase] before a coding base of that phase
  kStartBase = kLostBase + 3,       // first base of the start codon
  kStopBase,                        // last base of the stop codon
  kOfRegion,                        // in any of these states
  kLanePosteriors
};

// Rows of values by base position, for the emissions of some reads.
struct LaneTables {
  std::vector<LaneRow> forward;    // [position][HmmState]
  std::vector<LaneRow> scale;      // [position]
  std::vector<LaneRow> posterior;  // [position][LanePosterior]
};

// Memory kept from group to group of reads; for one thread at a time.
class LatticeLanes {
 public:
  // Runs forward and backward over emissions of one position or more, which it refers to until the
  // next run.
  void run(const PathWeights& weights, const LaneEmissions& emissions);

  // Of the read in a lane of the last run.
  ReadEvidence evidence(std::size_t lane) const;
  void framePosteriors(std::size_t lane, float factor, std::vector<FramePosterior>& frames) const;

 private:
  const LaneEmissions* emissions_ = nullptr;  // of the last run
  LaneTables tables_;
};

}  // namespace velto
