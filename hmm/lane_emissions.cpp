// 1. Kernel  2. Reads into lanes
#include "hmm/lane_emissions.h"

#include <algorithm>
#include <optional>

#include "hmm/network_kernel.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "hmm/lane_emissions.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "hmm/network_kernel-inl.h"

// ---- 1. Kernel: the kinds of bases as emit mixes them, operation by operation

HWY_BEFORE_NAMESPACE();
namespace velto::HWY_NAMESPACE {
namespace {

static_assert(kBasesAtOnce == kLanes);

// The probabilities of the base of each lane at a position, [EmissionKind][lane].
HWY_ATTR inline void gatherProbabilities(const EmissionLanes::Lanes& lanes, std::size_t position,
                                         FactorRows& probabilities) {
#if HWY_TARGET == HWY_SCALAR
  for (std::size_t lane = 0; lane < kLanes; ++lane) {
    const float* row = lanes.lane[lane].probability[position];
    for (std::size_t k = 0; k < kEmissionKinds; ++k) probabilities[k * kLanes + lane] = row[k];
  }
#else
  const hn::FixedTag<float, 4> d;
  for (std::size_t four = 0; four < kLanes; four += 4) {
    const auto row = [&](std::size_t lane) {
      return lanes.lane[four + lane].probability[position];
    };
    for (std::size_t k = 0; k < kEmissionKinds; k += 4) {
      const auto a = hn::LoadU(d, row(0) + k), b = hn::LoadU(d, row(1) + k);
      const auto c = hn::LoadU(d, row(2) + k), e = hn::LoadU(d, row(3) + k);
      const auto ab = hn::InterleaveLower(d, a, b), ce = hn::InterleaveLower(d, c, e);
      hn::Store(hn::ConcatLowerLower(d, ce, ab), d, probabilities.data() + k * kLanes + four);
      hn::Store(hn::ConcatUpperUpper(d, ce, ab), d, probabilities.data() + (k + 1) * kLanes + four);
      if (k + 2 == kEmissionKinds) break;
      const auto ab2 = hn::InterleaveUpper(d, a, b), ce2 = hn::InterleaveUpper(d, c, e);
      hn::Store(hn::ConcatLowerLower(d, ce2, ab2), d,
                probabilities.data() + (k + 2) * kLanes + four);
      hn::Store(hn::ConcatUpperUpper(d, ce2, ab2), d,
                probabilities.data() + (k + 3) * kLanes + four);
    }
  }
#endif
}

// right p f + (1 - p) wrong for coding bases, p f for others, f for unknown bases.
HWY_ATTR inline void mixKinds(const FactorRows& probabilities, const FactorRows& factors,
                              const LaneRow& substitution, LaneRow* kinds) {
  const hn::CappedTag<float, kLanes> d;
  const auto one = hn::Set(d, 1.0f);
  for (std::size_t lane = 0; lane < kLanes; lane += hn::Lanes(d)) {
    const auto s = hn::LoadU(d, substitution.data() + lane);
    const auto right = hn::Sub(one, s), wrong = hn::Div(s, hn::Set(d, 3.0f));
    for (std::size_t k = 0; k < kEmissionKinds; ++k) {
      const auto p = hn::LoadU(d, probabilities.data() + k * kLanes + lane);
      const auto f = hn::LoadU(d, factors.data() + k * kLanes + lane);
      auto kind = hn::Mul(p, f);
      if (k < 3) {
        kind = hn::Add(hn::Mul(hn::Mul(right, p), f), hn::Mul(hn::Sub(one, p), wrong));
        kind = hn::IfThenElse(hn::Gt(p, one), f, kind);
      }
      hn::StoreU(kind, d, kinds[k].data() + lane);
    }
  }
}

HWY_ATTR void fillStops(const EmissionLanes::LaneCodons& codons, const float* stops, LaneRow& row) {
  const hn::CappedTag<float, kLanes> d;
  const hn::RebindToSigned<decltype(d)> whole;
  const hn::Rebind<CodonIndex, decltype(d)> bytes;
  for (std::size_t lane = 0; lane < kLanes; lane += hn::Lanes(d)) {
    const auto codon = hn::PromoteTo(whole, hn::LoadU(bytes, codons.data() + lane));
    hn::StoreU(hn::GatherIndex(d, stops, codon), d, row.data() + lane);
  }
}

using RowsAtOnce = FactorRows[kEightsAtOnce];

// The network's factors from a position on.
HWY_ATTR void runNetwork(const WindowNetwork& network, const NetworkKernel& kernel,
                         const EmissionLanes::Lanes& lanes, std::size_t first, std::size_t count,
                         RowsAtOnce& factors) {
  const std::size_t stride = network.rowStride();
  std::array<NetworkBases, kEightsAtOnce> eights;
  for (std::size_t i = 0; i < count; ++i) {
    eights[i].places = lanes.places.at(first + i);
    eights[i].step = kLanes;
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      const EmissionLanes::Lane& l = lanes.lane[lane];
      const std::size_t block = (first + i + l.blockShift) / kCompositionBlock;
      eights[i].parts[lane] = l.baseParts.data() + block * stride;
    }
  }
  kernel.run(std::span(eights).first(count), factors);
}

// Fills in kinds of bases and stop codons; the network may be null.
HWY_ATTR void fillRows(const WindowNetwork* network, const float* stops,
                       const EmissionLanes::Lanes& lanes, LaneEmissions& emissions) {
  std::optional<NetworkKernel> kernel;
  if (network != nullptr) kernel.emplace(*network);
  HWY_ALIGN RowsAtOnce factors, probabilities;
  for (FactorRows& rows : factors) rows.fill(1.0f);
  for (std::size_t first = 0; first < emissions.positions; first += kEightsAtOnce) {
    const std::size_t count = std::min(kEightsAtOnce, emissions.positions - first);
    if (network != nullptr) runNetwork(*network, *kernel, lanes, first, count, factors);
    for (std::size_t i = 0; i < count; ++i) {
      gatherProbabilities(lanes, first + i, probabilities[i]);
    }
    for (std::size_t i = 0; i < count; ++i) {
      LaneRow* rows = emissions.rows.data() + (first + i) * kLaneEmissions;
      mixKinds(probabilities[i], factors[i], lanes.substitution[first + i], rows + kLaneKind);
      fillStops(lanes.codons[first + i], stops, rows[kLaneStop]);
    }
  }
}

}  // namespace
}  // namespace velto::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velto {

HWY_EXPORT(fillRows);

// ---- 2. Reads into lanes

namespace {

// Probabilities that stand for an unknown base, which emits its factors: more than 1 marks it for
// the kinds that code.
constexpr EmissionRow kUnknownBaseRow = {2, 2, 2, 1, 1, 1, 1, 1};

constexpr EmissionLanes::LaneCodons kNoCodons = {kUnreadCodon, kUnreadCodon, kUnreadCodon,
                                                 kUnreadCodon, kUnreadCodon, kUnreadCodon,
                                                 kUnreadCodon, kUnreadCodon};

LaneRow filled(float value) {
  LaneRow row;
  row.fill(value);
  return row;
}

}  // namespace

void LaneEmissions::arrange(std::span<const std::size_t> lengths) {
  positions = *std::max_element(lengths.begin(), lengths.end());
  begin.fill(positions);
  for (std::size_t lane = 0; lane < lengths.size(); ++lane) begin[lane] -= lengths[lane];
  rows.resize(positions * kLaneEmissions);
}

BaseEmission LaneEmissions::at(std::size_t position, std::size_t lane) const {
  const LaneRow* row = rows.data() + position * kLaneEmissions;
  BaseEmission e{};
  for (std::size_t k = 0; k < kEmissionKinds; ++k) e.kind[k] = row[kLaneKind + k][lane];
  e.start = row[kLaneStart][lane];
  e.stop = row[kLaneStop][lane];
  e.insertion = row[kLaneInsertion][lane];
  e.deletion = row[kLaneDeletion][lane];
  e.stay = row[kLaneStay][lane];
  return e;
}

void EmissionLanes::fill(std::span<const ReadView> reads, LaneEmissions& emissions) {
  std::array<std::size_t, kLanes> lengths{};
  std::transform(reads.begin(), reads.end(), lengths.begin(),
                 [](const ReadView& read) { return read.codes.size(); });
  emissions.arrange(lengths);
  fillMeanRates(emissions);
  if (network_ != nullptr) lanes_.places.arrange(*network_, kLanes, emissions.positions);
  lanes_.codons.assign(emissions.positions, kNoCodons);
  gaps_.clear();
  for (std::size_t lane = 0; lane < kLanes; ++lane) {
    const ReadView read = lane < reads.size() ? reads[lane] : ReadView{};
    context_.index(read.codes);
    fillLane(emissions.begin[lane], lane);
    if (network_ != nullptr) fillNetwork(emissions.begin[lane], lane);
    fillStarts(read.codes, lane, emissions);
    if (rates_.byQuality && !read.phred.empty()) fillRates(read.phred, lane, emissions);
    fillUnknownBases(lane, emissions);
  }
  HWY_DYNAMIC_DISPATCH(fillRows)(network_, codons_.stops().data(), lanes_, emissions);
  silenceGaps(emissions);
}

// Start codons stand for themselves: they are filled in where one may begin.
void EmissionLanes::fillMeanRates(LaneEmissions& emissions) {
  const BaseRates& mean = rates_.mean;
  lanes_.substitution.assign(emissions.positions, filled(mean.substitution));
  const LaneRow insertion = filled(0.25f * mean.insertion), deletion = filled(mean.deletion);
  const LaneRow stay = filled(1.0f - mean.insertion - mean.deletion);
  for (std::size_t p = 0; p < emissions.positions; ++p) {
    LaneRow* row = emissions.rows.data() + p * kLaneEmissions;
    row[kLaneStart].fill(0.0f);
    row[kLaneInsertion] = insertion;
    row[kLaneDeletion] = deletion;
    row[kLaneStay] = stay;
  }
}

void EmissionLanes::fillLane(std::size_t begin, std::size_t lane) {
  LaneCodons* codons = lanes_.codons.data() + begin;
  for (const CodonIndex codon : context_.codons) (*codons++)[lane] = codon;
  fillProbabilities(begin, lanes_.lane[lane]);
}

void EmissionLanes::fillNetwork(std::size_t begin, std::size_t lane) {
  lanes_.places.fill(*network_, context_, lane, begin);
  fillBaseParts(begin, lanes_.lane[lane]);
}

void EmissionLanes::fillProbabilities(std::size_t begin, Lane& lane) {
  const std::vector<std::uint16_t>& fiveMers = context_.fiveMers;
  lane.probability.assign(begin, kUnknownBaseRow.data());
  lane.probability.resize(begin + fiveMers.size());
  const float** out = lane.probability.data() + begin;
  for (std::size_t first = 0; first < fiveMers.size(); first += kCompositionBlock) {
    const std::size_t end = std::min(first + kCompositionBlock, fiveMers.size());
    const int gcClass = context_.blocks[first / kCompositionBlock].gcClass();
    const EmissionRow* rows = &model_.emission(gcClass, 0);
    for (std::size_t i = first; i < end; ++i) out[i] = rows[fiveMers[i]].data();
  }
}

// One base in six may begin a start codon: these are listed first, without a branch for each base.
void EmissionLanes::fillStarts(std::span<const short> codes, std::size_t lane,
                               LaneEmissions& emissions) {
  starts_.resize(codes.size());
  std::size_t count = 0;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    starts_[count] = i;
    count += codons_.mayStart(context_.codons[i]);
  }
  LaneRow* rows = emissions.rows.data() + emissions.begin[lane] * kLaneEmissions + kLaneStart;
  for (std::size_t k = 0; k < count; ++k) {
    const std::size_t i = starts_[k];
    rows[i * kLaneEmissions][lane] = codons_.start(codes, context_, i);
  }
}

void EmissionLanes::fillRates(std::span<const std::uint8_t> phred, std::size_t lane,
                              LaneEmissions& emissions) {
  const std::size_t begin = emissions.begin[lane];
  LaneRow* row = emissions.rows.data() + begin * kLaneEmissions;
  for (std::size_t i = 0; i < phred.size(); ++i, row += kLaneEmissions) {
    const BaseRates base = rates_.at(phred, i);
    row[kLaneInsertion][lane] = 0.25f * base.insertion;
    row[kLaneDeletion][lane] = base.deletion;
    row[kLaneStay][lane] = 1.0f - base.insertion - base.deletion;
    lanes_.substitution[begin + i][lane] = base.substitution;
  }
}

// Inserted, they emit as much as elsewhere.
void EmissionLanes::fillUnknownBases(std::size_t lane, LaneEmissions& emissions) {
  const std::size_t begin = emissions.begin[lane];
  eachUnknownBase(context_.knownRun, [&](std::size_t i) {
    lanes_.lane[lane].probability[begin + i] = kUnknownBaseRow.data();
    emissions.rows[(begin + i) * kLaneEmissions + kLaneInsertion][lane] *= 4.0f;
    if (context_.isInGap(i)) gaps_.push_back({begin + i, lane});
  });
}

// The network has factors for them, too.
void EmissionLanes::silenceGaps(LaneEmissions& emissions) const {
  for (const Place& gap : gaps_) {
    LaneRow* kinds = emissions.rows.data() + gap.position * kLaneEmissions + kLaneKind;
    for (std::size_t k = 0; k < kEmissionKinds; ++k) kinds[k][gap.lane] = 1.0f;
  }
}

// Blocks before the read's first one are of zeros.
void EmissionLanes::fillBaseParts(std::size_t begin, Lane& lane) {
  const WindowNetwork& network = *network_;
  const std::size_t before = (begin + kCompositionBlock - 1) / kCompositionBlock;
  const std::size_t stride = network.rowStride();
  lane.blockShift = before * kCompositionBlock - begin;
  lane.baseParts.assign((before + context_.blocks.size()) * stride, 0);
  basePartsInVectors(network, context_.blocks, lane.baseParts.data() + before * stride);
}

}  // namespace velto
#endif
