// Posterior probabilities of the states of up to eight reads at once, one read in each lane of the
// processor's vectors. All results equal those of runForward and runBackward to the last bit.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "hmm/coding_path.h"
#include "hmm/forward_backward.h"
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

// Values of one base position for every lane.
using LaneRow = std::array<float, 8>;  // [lane]
constexpr std::size_t kLanes = std::tuple_size_v<LaneRow>;

// Rows of values by base position. The reads stand so that all end together: positions count from
// the first base of the longest.
struct LaneTables {
  std::size_t positions = 0;
  std::array<std::size_t, kLanes> begin{};  // [lane] of the read's first base; positions: no read
  std::vector<LaneRow> emission;            // [position][value of BaseEmission, in its order]
  std::vector<LaneRow> forward;             // [position][HmmState]
  std::vector<LaneRow> scale;               // [position]
  std::vector<LaneRow> posterior;           // [position][LanePosterior]
};

// Memory kept from group to group of reads; for one thread at a time.
class LatticeLanes {
 public:
  // Runs forward and backward over the emissions of up to kLanes reads of one base or more.
  void run(const PathWeights& weights, std::span<const std::vector<BaseEmission>> reads);

  // Of the read in a lane of the last run.
  ReadEvidence evidence(std::size_t lane) const;
  void framePosteriors(std::size_t lane, float factor, std::vector<FramePosterior>& frames) const;

 private:
  void interleave(std::size_t lane, std::span<const BaseEmission> read);

  LaneTables tables_;
};

}  // namespace velto
