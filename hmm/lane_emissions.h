// Emissions of up to eight reads at once, one read in each lane of the processor's vectors.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <tuple>
#include <vector>

#include "hmm/emissions.h"
#include "hmm/row_places.h"

namespace velto {

// Values of one base position for every lane.
using LaneRow = std::array<float, 8>;  // [lane]
constexpr std::size_t kLanes = std::tuple_size_v<LaneRow>;

// Rows of a position, the values of a BaseEmission.
enum LaneEmission {
  kLaneKind,  // [EmissionKind]
  kLaneStart = kLaneKind + kEmissionKinds,
  kLaneStop,
  kLaneInsertion,
  kLaneDeletion,
  kLaneStay,
  kLaneEmissions
};

// The reads stand so that all end together: positions count from the first base of the longest.
// What stands before a read in its lane means nothing.
struct LaneEmissions {
  std::size_t positions = 0;
  std::array<std::size_t, kLanes> begin{};  // [lane] of the read's first base; positions: no read
  std::vector<LaneRow> rows;                // [position][LaneEmission]

  // Makes room for reads of these lengths, one base or more.
  void arrange(std::span<const std::size_t> lengths);

  BaseEmission at(std::size_t position, std::size_t lane) const;
};

// Fills emissions with those of `emit`, equal to the last bit.
// Memory kept from group to group of reads; for one thread at a time.
class EmissionLanes {
 public:
  // Model and rates must outlive the lanes. Without the network, the count tables alone emit.
  EmissionLanes(const HmmModel& model, const FileRates& rates, bool useNetwork)
      : model_(model),
        rates_(rates),
        network_(useNetwork ? &model.network : nullptr),
        codons_(model, model.weights, rates.mean) {}

  // Up to kLanes reads of one base or more.
  void fill(std::span<const ReadView> reads, LaneEmissions& emissions);

  using LaneCodons = std::array<CodonIndex, kLanes>;  // [lane]

  // A lane as the kernel sees it.
  struct Lane {
    std::vector<const float*> probability;  // [position] of its base by EmissionKind
    std::vector<std::int16_t> baseParts;    // [block][unit], rowStride() apart, from the
                                            // first position's block on
    std::size_t blockShift = 0;             // position + blockShift is of block 0 on
  };
  struct Lanes {
    std::array<Lane, kLanes> lane;
    RowPlaces places;                   // of the k-mers of all lanes
    std::vector<LaneCodons> codons;     // [position] that begin there
    std::vector<LaneRow> substitution;  // [position] rate
  };

 private:
  void fillMeanRates(LaneEmissions& emissions);
  void fillLane(std::size_t begin, std::size_t lane);
  void fillProbabilities(std::size_t begin, Lane& lane);
  void fillNetwork(std::size_t begin, std::size_t lane);
  void fillBaseParts(std::size_t begin, Lane& lane);
  void fillStarts(std::span<const short> codes, std::size_t lane, LaneEmissions& emissions);
  void fillRates(std::span<const std::uint8_t> phred, std::size_t lane, LaneEmissions& emissions);
  void fillUnknownBases(std::size_t lane, LaneEmissions& emissions);
  void silenceGaps(LaneEmissions& emissions) const;

  const HmmModel& model_;
  const FileRates& rates_;
  const WindowNetwork* const network_;  // null: not used
  const CodonWeights codons_;
  Lanes lanes_;
  ReadContext context_;              // of the read that is being filled in
  std::vector<std::size_t> starts_;  // its bases at which a start codon may begin

  struct Place {
    std::size_t position, lane;
  };
  std::vector<Place> gaps_;  // bases of the group that are in gaps
};

}  // namespace velto
