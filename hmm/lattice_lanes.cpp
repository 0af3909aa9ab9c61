// 1. Kernel  2. Results of a lane
#include "hmm/lattice_lanes.h"

#include <algorithm>
#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "hmm/lattice_lanes.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "hmm/float_math.h"

// ---- 1. Kernel: runForward and runBackward, operation by operation

HWY_BEFORE_NAMESPACE();
namespace velto::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using D = hn::CappedTag<float, kLanes>;
using V = hn::Vec<D>;

constexpr std::size_t kStates = kHmmStates;

// Emissions of one position.
struct Emission {
  V kind[kEmissionKinds];
  V start, stop, insertion, deletion, stay;
};

// As many lanes of the tables as a vector holds.
class LaneGroup {
 public:
  HWY_ATTR LaneGroup(const PathWeights& weights, const LaneEmissions& emissions, LaneTables& tables,
                     std::size_t firstLane)
      : weights_(weights), emissions_(emissions), tables_(tables), firstLane_(firstLane) {}

  HWY_ATTR void runForward() {
    V row[kStates];
    for (V& x : row) x = hn::Zero(d_);
    for (std::size_t p = 0; p < emissions_.positions; ++p) {
      const Emission e = emissionAt(p);
      if (p > 0) stepForward(e, row);
      beginReads(p, row);
      V scale = hn::Set(d_, 1.0f);
      if (isRescaled(p)) scale = rescale(row);
      store(scale, tables_.scale[p]);
      for (std::size_t s = 0; s < kStates; ++s) store(row[s], tables_.forward[p * kStates + s]);
    }
  }

  HWY_ATTR void runBackward() {
    V row[kStates];
    for (V& x : row) x = hn::Set(d_, 1.0f);
    for (std::size_t p = emissions_.positions; p-- > 0;) {
      const Emission e = emissionAt(p);
      writePosterior(p, e, row);
      stepBackward(e, row);
      if (isRescaled(p)) rescale(row);
    }
  }

 private:
  HWY_ATTR V load(const LaneRow& row) const { return hn::LoadU(d_, row.data() + firstLane_); }
  HWY_ATTR void store(V x, LaneRow& row) const { hn::StoreU(x, d_, row.data() + firstLane_); }

  bool isRescaled(std::size_t p) const {
    return (emissions_.positions - 1 - p) % kRescaleStep == 0;
  }

  HWY_ATTR Emission emissionAt(std::size_t p) const {
    const LaneRow* rows = emissions_.rows.data() + p * kLaneEmissions;
    Emission e;
    for (std::size_t k = 0; k < kEmissionKinds; ++k) e.kind[k] = load(rows[kLaneKind + k]);
    e.start = load(rows[kLaneStart]);
    e.stop = load(rows[kLaneStop]);
    e.insertion = load(rows[kLaneInsertion]);
    e.deletion = load(rows[kLaneDeletion]);
    e.stay = load(rows[kLaneStay]);
    return e;
  }

  // Puts the first row of every read that begins here into its lane.
  HWY_ATTR void beginReads(std::size_t p, V (&row)[kStates]) const {
    const auto begin = emissions_.begin.begin() + static_cast<std::ptrdiff_t>(firstLane_);
    const auto end = begin + static_cast<std::ptrdiff_t>(hn::Lanes(d_));
    if (std::find(begin, end, p) == end) return;
    for (std::size_t lane = 0; lane < hn::Lanes(d_); ++lane) {
      if (begin[static_cast<std::ptrdiff_t>(lane)] != p) continue;
      const StateRow first = firstRow(weights_, emissions_.at(p, firstLane_ + lane));
      for (std::size_t s = 0; s < kStates; ++s) {
        HWY_ALIGN float values[kLanes];
        hn::Store(row[s], d_, values);
        values[lane] = first[s];
        row[s] = hn::Load(d_, values);
      }
    }
  }

  HWY_ATTR void stepForward(const Emission& e, V (&row)[kStates]) const {
    const V intoPhase0 = hn::Add(row[kC2], row[kS2]);
    const V c0 = coding(e, 0, intoPhase0, row[kI2], row[kC1]);
    const V c1 = coding(e, 1, row[kC0], row[kI0], row[kC2]);
    const V c2 = coding(e, 2, row[kC1], row[kI1], row[kC0]);
    for (std::size_t k = 0; k < 3; ++k) row[kI0 + k] = hn::Mul(row[kC0 + k], e.insertion);
    row[kC0] = c0;
    row[kC1] = c1;
    row[kC2] = c2;
    row[kS2] = row[kS1];
    row[kS1] = row[kS0];
    row[kS0] = hn::Mul(row[kU5], e.start);
    row[kU3] = hn::Mul(hn::Add(row[kU3], row[kE2]), e.kind[kUtr3]);
    row[kE2] = row[kE1];
    row[kE1] = row[kE0];
    row[kE0] = hn::Mul(intoPhase0, e.stop);
    row[kU5] = hn::Mul(row[kU5], stayUtr5(e));
    row[kNC] = hn::Mul(row[kNC], e.kind[kNoncodingRead]);
    row[kUn] = hn::Mul(row[kUn], e.kind[kUtr3]);
  }

  // e_phase [(previous stay + inserted) + skipping deletion]
  HWY_ATTR V coding(const Emission& e, std::size_t phase, V previous, V inserted,
                    V skipping) const {
    const V direct = hn::Add(hn::Mul(previous, e.stay), inserted);
    return hn::Mul(e.kind[phase], hn::Add(direct, hn::Mul(skipping, e.deletion)));
  }

  HWY_ATTR V stayUtr5(const Emission& e) const {
    return hn::Mul(hn::Set(d_, weights_.stayUtr5), e.kind[kUtr5]);
  }

  HWY_ATTR void stepBackward(const Emission& e, V (&row)[kStates]) const {
    const V c0 = hn::Mul(e.kind[0], row[kC0]);
    const V c1 = hn::Mul(e.kind[1], row[kC1]);
    const V c2 = hn::Mul(e.kind[2], row[kC2]);
    const V toStop = hn::Mul(e.stop, row[kE0]);
    row[kC0] = fromCoding(e, c1, c2, row[kI0]);
    row[kC1] = fromCoding(e, c2, c0, row[kI1]);
    row[kC2] = hn::Add(fromCoding(e, c0, c1, row[kI2]), toStop);
    row[kI0] = c1;
    row[kI1] = c2;
    row[kI2] = c0;
    row[kU5] = hn::Add(hn::Mul(stayUtr5(e), row[kU5]), hn::Mul(e.start, row[kS0]));
    row[kS0] = row[kS1];
    row[kS1] = row[kS2];
    row[kS2] = hn::Add(hn::Mul(c0, e.stay), toStop);
    row[kE0] = row[kE1];
    row[kE1] = row[kE2];
    row[kE2] = hn::Mul(e.kind[kUtr3], row[kU3]);
    row[kU3] = row[kE2];
    row[kNC] = hn::Mul(e.kind[kNoncodingRead], row[kNC]);
    row[kUn] = hn::Mul(e.kind[kUtr3], row[kUn]);
  }

  // (next stay + after deletion) + insertion inserted
  HWY_ATTR V fromCoding(const Emission& e, V next, V after, V inserted) const {
    const V direct = hn::Add(hn::Mul(next, e.stay), hn::Mul(after, e.deletion));
    return hn::Add(direct, hn::Mul(e.insertion, inserted));
  }

  HWY_ATTR V sumOfEight(const V* x) const {
    return hn::Add(hn::Add(hn::Add(x[0], x[1]), hn::Add(x[2], x[3])),
                   hn::Add(hn::Add(x[4], x[5]), hn::Add(x[6], x[7])));
  }

  HWY_ATTR V sumOf(const V (&row)[kStates]) const {
    return hn::Add(sumOfEight(row), sumOfEight(row + 8));
  }

  // The scale; 1 where there is nothing to bring up.
  HWY_ATTR V rescale(V (&row)[kStates]) const {
    const hn::RebindToUnsigned<D> bits;
    const V sum = sumOf(row);
    const auto exponent = hn::And(hn::BitCast(bits, sum), hn::Set(bits, 0x7f800000U));
    const V inverse = hn::BitCast(d_, hn::Sub(hn::Set(bits, 0x7f000000U), exponent));
    const V scale = hn::IfThenElse(isNothing(sum), hn::Set(d_, 1.0f), inverse);
    for (V& x : row) x = hn::Mul(x, scale);
    return scale;
  }

  HWY_ATTR hn::Mask<D> isNothing(V sum) const {
    return hn::Lt(sum, hn::Set(d_, std::numeric_limits<float>::min()));
  }

  HWY_ATTR void writePosterior(std::size_t p, const Emission& e, const V (&backward)[kStates]) {
    const LaneRow* forward = tables_.forward.data() + p * kStates;
    V post[kStates];
    for (std::size_t s = 0; s < kStates; ++s) post[s] = hn::Mul(load(forward[s]), backward[s]);
    const V total = sumOf(post);
    const V inverse =
        hn::IfThenElse(isNothing(total), hn::Zero(d_), hn::Div(hn::Set(d_, 1.0f), total));
    for (V& x : post) x = hn::Mul(x, inverse);
    LaneRow* out = tables_.posterior.data() + p * kLanePosteriors;
    for (std::size_t k = 0; k < 3; ++k) {
      store(hn::Add(hn::Add(post[kC0 + k], post[kS0 + k]), post[kE0 + k]), out[kCodingBase + k]);
      store(post[kI0 + k], out[kInsertedBase + k]);
    }
    store(post[kS0], out[kStartBase]);
    store(post[kE2], out[kStopBase]);
    const V bases = hn::Add(sumOfThree(post + kC0), sumOfThree(post + kI0));
    const V ends = hn::Add(sumOfThree(post + kS0), sumOfThree(post + kE0));
    store(hn::Add(bases, ends), out[kOfRegion]);
    const V lost = hn::Mul(inverse, load(tables_.scale[p]));
    for (std::size_t k = 0; k < 3; ++k) {
      const V before = p == 0 ? hn::Zero(d_) : load((forward - kStates)[kC0 + (k + 1) % 3]);
      const V here = hn::Mul(e.kind[k], backward[kC0 + k]);
      store(hn::Mul(hn::Mul(hn::Mul(before, e.deletion), here), lost), out[kLostBase + k]);
    }
  }

  HWY_ATTR V sumOfThree(const V* x) const { return hn::Add(hn::Add(x[0], x[1]), x[2]); }

  const D d_{};
  const PathWeights& weights_;
  const LaneEmissions& emissions_;
  LaneTables& tables_;
  const std::size_t firstLane_;
};

HWY_ATTR void runLanes(const PathWeights& weights, const LaneEmissions& emissions,
                       LaneTables& tables) {
  for (std::size_t lane = 0; lane < kLanes; lane += hn::Lanes(D())) {
    LaneGroup group(weights, emissions, tables, lane);
    group.runForward();
    group.runBackward();
  }
}

}  // namespace
}  // namespace velto::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velto {

HWY_EXPORT(runLanes);

// ---- 2. Results of a lane

void LatticeLanes::run(const PathWeights& weights, const LaneEmissions& emissions) {
  emissions_ = &emissions;
  tables_.forward.resize(emissions.positions * kHmmStates);
  tables_.scale.resize(emissions.positions);
  tables_.posterior.resize(emissions.positions * kLanePosteriors);
  HWY_DYNAMIC_DISPATCH(runLanes)(weights, emissions, tables_);
}

ReadEvidence LatticeLanes::evidence(std::size_t lane) const {
  const std::size_t positions = emissions_->positions;
  StateRow last;
  for (std::size_t s = 0; s < kHmmStates; ++s) {
    last[s] = tables_.forward[(positions - 1) * kHmmStates + s][lane];
  }
  double sum = 0.0;
  for (std::size_t p = emissions_->begin[lane]; p < positions; ++p) {
    sum += tables_.posterior[p * kLanePosteriors + kOfRegion][lane];
  }
  return evidenceOf(last, sum);
}

void LatticeLanes::framePosteriors(std::size_t lane, float factor,
                                   std::vector<FramePosterior>& frames) const {
  const std::size_t begin = emissions_->begin[lane];
  frames.resize(emissions_->positions - begin);
  std::size_t phase0 = 0;
  const LaneRow* row = tables_.posterior.data() + begin * kLanePosteriors;
  for (FramePosterior& out : frames) {
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t f = (phase0 + 3 - k) % 3;
      out.frame[f] = row[kCodingBase + k][lane] * factor;
      out.inserted[f] = row[kInsertedBase + k][lane] * factor;
      out.deleted[f] = row[kLostBase + k][lane] * factor;
    }
    out.start = row[kStartBase][lane] * factor;
    out.stop = row[kStopBase][lane] * factor;
    phase0 = phase0 == 2 ? 0 : phase0 + 1;
    row += kLanePosteriors;
  }
}

}  // namespace velto
#endif
