// Posterior probabilities of the states of up to eight reads at once, one read in each lane of the
// processor's vectors, and their best paths. All results equal those of runForward, runBackward and
// findCodingPath to the last bit.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
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
  kInnerBase,                       // [phase] start and stop codon apart
  kLanePosteriors = kInnerBase + 3
};

// Where the best path to a state came from, as the number of its PathState, for every lane. Frames
// are counted from the first position.
enum LaneWay { kWayIntoFrame, kWayBehind = kWayIntoFrame + 3, kLaneWays };
using WayRow = std::array<std::uint8_t, kLanes>;  // [lane]

// Rows of values by base position, for the emissions of some reads.
struct LaneTables {
  std::vector<LaneRow> values;  // [position][HmmState] forward sums; runBackward puts posteriors in
                                // their place, [position][LanePosterior]
  std::vector<LaneRow> scale;   // [position]
  std::vector<WayRow> ways;     // [position][LaneWay]
  std::array<LaneRow, kHmmStates> last;  // [HmmState] forward sums of the last position
  std::array<double, kLanes> ofRegion;   // [lane] sum of kOfRegion over the positions
  WayRow end;                            // PathState of the best path at the end
};

// Memory kept from group to group of reads; for one thread at a time.
class LatticeLanes {
 public:
  // Runs forward over emissions of one position or more, which it refers to, as to the weights,
  // until the next run.
  void runForward(const PathWeights& weights, const LaneEmissions& emissions);

  // Of the read in a lane, as of a whole read.
  double logOdds(std::size_t lane) const { return logOddsOfCoding(lastRow(lane)); }
  double logLikelihood(std::size_t lane) const;

  // Runs backward behind the last run forward, once. All that follows needs it.
  void runBackward();

  // Of the read in a lane.
  ReadEvidence evidence(std::size_t lane) const;
  ErrorPosterior errorPosterior(std::size_t lane, std::size_t base) const;
  void framePosteriors(std::size_t lane, float factor, std::vector<FramePosterior>& frames) const;

  // Finds the best paths of all lanes, with posteriors times a factor for each lane, and that of
  // one lane for a call, as findCodingPath does.
  void scorePaths(const LaneRow& factors);
  void takePathOf(std::size_t lane, Call& call) const;

 private:
  StateRow lastRow(std::size_t lane) const;
  void sumRegions();

  const PathWeights* weights_ = nullptr;      // of the last run
  const LaneEmissions* emissions_ = nullptr;  // likewise
  LaneTables tables_;
  LaneRow factors_{};  // of the last scorePaths
};

}  // namespace velto
