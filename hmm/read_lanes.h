// Reads run in lanes, with the memory that they need.
#pragma once

#include <algorithm>
#include <array>
#include <span>

#include "hmm/lane_emissions.h"
#include "hmm/lattice_lanes.h"

namespace velto {

// Memory kept from group to group of reads; for one thread at a time.
class ReadLanes {
 public:
  // Both must outlive the lanes.
  ReadLanes(const HmmModel& model, const FileRates& rates, bool useNetwork)
      : weights_(model.weights), filler_(model, rates, useNetwork) {}

  // Forward sums of the reads of a group, one in each lane.
  void runForward(std::span<const ReadView> reads, std::span<const std::size_t> group) {
    std::array<ReadView, kLanes> inLanes;
    std::transform(group.begin(), group.end(), inLanes.begin(),
                   [&](std::size_t index) { return reads[index]; });
    filler_.fill(std::span(inLanes).first(group.size()), emissions_);
    lattice.runForward(weights_, emissions_);
  }

  LatticeLanes lattice;  // of the group run last

 private:
  const PathWeights& weights_;
  EmissionLanes filler_;
  LaneEmissions emissions_;
};

}  // namespace velto
