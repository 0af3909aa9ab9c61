// 1. Kernel  2. Results of a lane
#include "hmm/lattice_lanes.h"

#include <algorithm>
#include <iterator>
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
  // Written out, since an implicit constructor is not compiled for the vectors' processor.
  HWY_ATTR Emission() {}

  V kind[kEmissionKinds];
  V start, stop, insertion, deletion, stay;
};

// Puts the first rows of the reads that begin at a position into their lanes, from `firstLane` on.
// Apart, so that the rows around it stay in registers.
using LaneValues = float[kStates][kLanes];
HWY_NOINLINE HWY_ATTR void beginLanes(const PathWeights& weights, const LaneEmissions& emissions,
                                      std::size_t position, std::size_t firstLane,
                                      LaneValues& rows) {
  for (std::size_t lane = 0; lane < hn::Lanes(D()); ++lane) {
    if (emissions.begin[firstLane + lane] != position) continue;
    const StateRow first = firstRow(weights, emissions.at(position, firstLane + lane));
    for (std::size_t s = 0; s < kStates; ++s) rows[s][lane] = first[s];
  }
}

// As many lanes of the tables as a vector holds. All is inlined and nothing refers to this object,
// so that its members and the rows of states are kept in registers.
class LaneGroup {
 public:
  HWY_ATTR LaneGroup(const PathWeights& weights, const LaneEmissions& emissions, LaneTables& tables,
                     std::size_t firstLane)
      : weights_(weights),
        emissions_(emissions),
        tables_(tables),
        firstLane_(firstLane),
        positions_(emissions.positions),
        rows_(emissions.rows.data()),
        values_(tables.values.data()),
        scale_(tables.scale.data()),
        ways_(tables.ways.data()) {
    for (const std::size_t begin : emissions.begin) {
      if (begin < positions_) lastBegin_ = std::max(lastBegin_, begin);
    }
  }

  HWY_INLINE HWY_ATTR void runForward() {
    V row[kStates];
    for (V& x : row) x = hn::Zero(d_);
    for (std::size_t p = 0; p < positions_; ++p) {
      const Emission e = emissionAt(p);
      if (p > 0) stepForward(e, row);
      if (p <= lastBegin_) beginReads(p, row);
      V scale = hn::Set(d_, 1.0f);
      if (isRescaled(p)) scale = rescale(row);
      store(scale, scale_[p]);
      for (std::size_t s = 0; s < kStates; ++s) store(row[s], values_[p * kStates + s]);
    }
    for (std::size_t s = 0; s < kStates; ++s) store(row[s], tables_.last[s]);
  }

  // scorePaths of coding_path.cpp, operation by operation.
  HWY_INLINE HWY_ATTR void scorePaths(const LaneRow& factors) {
    factor_ = load(factors);
    V scores[kPathStates];
    for (V& score : scores) score = hn::Set(d_, -std::numeric_limits<float>::infinity());
    for (std::size_t p = 0; p < positions_; p += 3) {
      scorePosition<0>(p, scores);
      if (p + 1 < positions_) scorePosition<1>(p + 1, scores);
      if (p + 2 < positions_) scorePosition<2>(p + 2, scores);
    }
    V end;
    switch (positions_ % 3) {
      case 0:
        end = wayBehind<0>(positions_, scores).from;
        break;
      case 1:
        end = wayBehind<1>(positions_, scores).from;
        break;
      default:
        end = wayBehind<2>(positions_, scores).from;
    }
    store(end, tables_.end);
  }

  HWY_INLINE HWY_ATTR void runBackward() {
    V row[kStates];
    for (V& x : row) x = hn::Set(d_, 1.0f);
    for (std::size_t p = positions_; p-- > 0;) {
      const Emission e = emissionAt(p);
      writePosterior(p, e, row);
      stepBackward(e, row);
      if (isRescaled(p)) rescale(row);
    }
  }

 private:
  HWY_ATTR V load(const LaneRow& row) const { return hn::LoadU(d_, row.data() + firstLane_); }
  HWY_ATTR void store(V x, LaneRow& row) const { hn::StoreU(x, d_, row.data() + firstLane_); }

  HWY_ATTR void store(V from, WayRow& row) const {
    const hn::RebindToSigned<D> whole;
    const hn::Rebind<std::uint8_t, D> bytes;
    hn::StoreU(hn::DemoteTo(bytes, hn::ConvertTo(whole, from)), bytes, row.data() + firstLane_);
  }

  bool isRescaled(std::size_t p) const { return (positions_ - 1 - p) % kRescaleStep == 0; }

  HWY_ATTR Emission emissionAt(std::size_t p) const {
    const LaneRow* rows = rows_ + p * kLaneEmissions;
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
  HWY_INLINE HWY_ATTR void beginReads(std::size_t p, V (&row)[kStates]) const {
    HWY_ALIGN LaneValues rows;
    for (std::size_t s = 0; s < kStates; ++s) hn::Store(row[s], d_, rows[s]);
    beginLanes(weights_, emissions_, p, firstLane_, rows);
    for (std::size_t s = 0; s < kStates; ++s) row[s] = hn::Load(d_, rows[s]);
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
    LaneRow* const forward = values_ + p * kStates;
    V post[kStates];
    for (std::size_t s = 0; s < kStates; ++s) post[s] = hn::Mul(load(forward[s]), backward[s]);
    const V total = sumOf(post);
    const V inverse =
        hn::IfThenElse(isNothing(total), hn::Zero(d_), hn::Div(hn::Set(d_, 1.0f), total));
    for (V& x : post) x = hn::Mul(x, inverse);
    LaneRow* const out = forward;
    for (std::size_t k = 0; k < 3; ++k) {
      store(hn::Add(hn::Add(post[kC0 + k], post[kS0 + k]), post[kE0 + k]), out[kCodingBase + k]);
      store(post[kI0 + k], out[kInsertedBase + k]);
      store(post[kC0 + k], out[kInnerBase + k]);
    }
    store(post[kS0], out[kStartBase]);
    store(post[kE2], out[kStopBase]);
    const V bases = hn::Add(sumOfThree(post + kC0), sumOfThree(post + kI0));
    const V ends = hn::Add(sumOfThree(post + kS0), sumOfThree(post + kE0));
    store(hn::Add(bases, ends), out[kOfRegion]);
    const V scale = load(scale_[p]);
    for (std::size_t k = 0; k < 3; ++k) {
      const V before = p == 0 ? hn::Zero(d_) : load((forward - kStates)[kC0 + (k + 1) % 3]);
      const V here = hn::Mul(e.kind[k], backward[kC0 + k]);
      const V lost = hn::Mul(hn::Mul(hn::Mul(before, e.deletion), here), inverse);
      store(hn::Mul(lost, scale), out[kLostBase + k]);
    }
  }

  struct Ways {
    V score, from;
  };

  HWY_ATTR void offer(V score, int state, Ways& best) const {
    const auto better = hn::Gt(score, best.score);
    best.score = hn::IfThenElse(better, score, best.score);
    best.from = hn::IfThenElse(better, number(state), best.from);
  }

  HWY_ATTR V number(int state) const { return hn::Set(d_, static_cast<float>(state)); }
  HWY_ATTR V less(V x, float cost) const { return hn::Sub(x, hn::Set(d_, cost)); }
  HWY_ATTR V codonReward(V posterior) const {
    return hn::Mul(hn::Set(d_, kCodonReward), hn::Mul(posterior, factor_));
  }

  // Ways into the states of a position, kPhase mod 3. Frames count from the first position, so that
  // frame f is of phase (kPhase - f) mod 3 there.
  template <std::size_t kPhase>
  HWY_INLINE HWY_ATTR void scorePosition(std::size_t p, V (&scores)[kPathStates]) const {
    if (p <= lastBegin_) beginPaths(p, scores);
    WayRow* ways = ways_ + p * kLaneWays;
    V next[kPathStates];
    for (std::size_t f = 0; f < 3; ++f) {
      const Ways into = wayIntoFrame<kPhase>(p, f, scores);
      next[f] = into.score;
      store(into.from, ways[kWayIntoFrame + f]);
      next[kInserted0 + f] = less(scores[downFrame(static_cast<int>(f))], kChangeCost);
    }
    const Ways behind = wayBehind<kPhase>(p, scores);
    next[kBehind] = behind.score;
    store(behind.from, ways[kWayBehind]);
    for (std::size_t state = 0; state < kPathStates; ++state) scores[state] = next[state];
  }

  template <std::size_t kPhase>
  HWY_INLINE HWY_ATTR Ways wayBehind(std::size_t p, const V (&scores)[kPathStates]) const {
    Ways best{scores[kBehind], number(kBehind)};
    const LaneRow* last = values_ + (p == 0 ? 0 : p - 1) * kStates;
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t f = (kPhase + k) % 3;
      V score = less(scores[f], kEndCost);
      if (k == 0) score = hn::Add(score, codonReward(load(last[kStopBase])));
      offer(score, static_cast<int>(f), best);
    }
    return best;
  }

  template <std::size_t kPhase>
  HWY_INLINE HWY_ATTR Ways wayIntoFrame(std::size_t p, std::size_t f,
                                        const V (&scores)[kPathStates]) const {
    const LaneRow* now = values_ + p * kStates;
    const int frame = static_cast<int>(f);
    Ways best{scores[f], number(frame)};
    const int deletedFrom = upFrame(frame);
    offer(less(scores[deletedFrom], kChangeCost), deletedFrom, best);
    offer(scores[kInserted0 + f], kInserted0 + frame, best);
    if (f == kPhase) offer(less(codonReward(load(now[kStartBase])), kEndCost), kBefore, best);
    const V posterior = hn::Mul(load(now[kCodingBase + (kPhase + 3 - f) % 3]), factor_);
    best.score = hn::Add(best.score, less(posterior, kCodingCost));
    return best;
  }

  // No path is on its way where a read begins.
  HWY_INLINE HWY_ATTR void beginPaths(std::size_t p, V (&scores)[kPathStates]) const {
    HWY_ALIGN float begins[kLanes];
    for (std::size_t lane = 0; lane < hn::Lanes(d_); ++lane) {
      begins[lane] = emissions_.begin[firstLane_ + lane] == p ? 1.0f : 0.0f;
    }
    const auto here = hn::Gt(hn::Load(d_, begins), hn::Zero(d_));
    const V none = hn::Set(d_, -std::numeric_limits<float>::infinity());
    for (V& score : scores) score = hn::IfThenElse(here, none, score);
  }

  HWY_ATTR V sumOfThree(const V* x) const { return hn::Add(hn::Add(x[0], x[1]), x[2]); }

  const D d_{};
  const PathWeights& weights_;
  const LaneEmissions& emissions_;
  LaneTables& tables_;
  const std::size_t firstLane_, positions_;
  std::size_t lastBegin_ = 0;  // position of the last read's first base
  const LaneRow* const rows_;  // of the emissions
  LaneRow* const values_;
  LaneRow* const scale_;
  WayRow* const ways_;
  V factor_ = hn::Zero(d_);  // of the posteriors that paths look at
};

HWY_ATTR void runLanesForward(const PathWeights& weights, const LaneEmissions& emissions,
                              LaneTables& tables) {
  for (std::size_t lane = 0; lane < kLanes; lane += hn::Lanes(D())) {
    LaneGroup(weights, emissions, tables, lane).runForward();
  }
}

HWY_ATTR void runLanesBackward(const PathWeights& weights, const LaneEmissions& emissions,
                               LaneTables& tables) {
  for (std::size_t lane = 0; lane < kLanes; lane += hn::Lanes(D())) {
    LaneGroup(weights, emissions, tables, lane).runBackward();
  }
}

HWY_ATTR void scoreLanes(const PathWeights& weights, const LaneEmissions& emissions,
                         const LaneRow& factors, LaneTables& tables) {
  for (std::size_t lane = 0; lane < kLanes; lane += hn::Lanes(D())) {
    LaneGroup(weights, emissions, tables, lane).scorePaths(factors);
  }
}

}  // namespace
}  // namespace velto::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velto {

HWY_EXPORT(runLanesForward);
HWY_EXPORT(runLanesBackward);
HWY_EXPORT(scoreLanes);

// ---- 2. Results of a lane

void LatticeLanes::runForward(const PathWeights& weights, const LaneEmissions& emissions) {
  weights_ = &weights;
  emissions_ = &emissions;
  tables_.values.resize(emissions.positions * kHmmStates);
  tables_.scale.resize(emissions.positions);
  HWY_DYNAMIC_DISPATCH(runLanesForward)(weights, emissions, tables_);
}

void LatticeLanes::runBackward() {
  tables_.ways.resize(emissions_->positions * kLaneWays);
  HWY_DYNAMIC_DISPATCH(runLanesBackward)(*weights_, *emissions_, tables_);
  sumRegions();
}

// Before its read a lane has posteriors of 0, which change no sum.
void LatticeLanes::sumRegions() {
  tables_.ofRegion.fill(0.0);
  for (std::size_t p = 0; p < emissions_->positions; ++p) {
    const LaneRow& row = tables_.values[p * kHmmStates + kOfRegion];
    for (std::size_t lane = 0; lane < kLanes; ++lane) tables_.ofRegion[lane] += row[lane];
  }
}

StateRow LatticeLanes::lastRow(std::size_t lane) const {
  StateRow last;
  for (std::size_t s = 0; s < kHmmStates; ++s) last[s] = tables_.last[s][lane];
  return last;
}

// Before its read a lane has scales of 1, as all have between rescaled positions.
double LatticeLanes::logLikelihood(std::size_t lane) const {
  long power = 0;
  for (std::size_t p = (emissions_->positions - 1) % kRescaleStep; p < emissions_->positions;
       p += kRescaleStep) {
    power += powerOf(tables_.scale[p][lane]);
  }
  return velto::logLikelihood(lastRow(lane), power);
}

ReadEvidence LatticeLanes::evidence(std::size_t lane) const {
  // A lane without a read has zeros.
  const std::size_t begin = std::min(emissions_->begin[lane], emissions_->positions - 1);
  const LaneRow* first = tables_.values.data() + begin * kHmmStates;
  const LaneRow* phases = first + kCodingBase;
  const float truncated = truncatedPosterior(phases[0][lane], phases[1][lane], phases[2][lane],
                                             first[kStartBase][lane]);
  return evidenceOf(lastRow(lane), logLikelihood(lane), {tables_.ofRegion[lane], truncated});
}

ErrorPosterior LatticeLanes::errorPosterior(std::size_t lane, std::size_t base) const {
  const LaneRow* row = tables_.values.data() + (emissions_->begin[lane] + base) * kHmmStates;
  const auto sumOfPhases = [&](int first) {
    return row[first][lane] + row[first + 1][lane] + row[first + 2][lane];
  };
  return {{row[kInnerBase][lane], row[kInnerBase + 1][lane], row[kInnerBase + 2][lane]},
          sumOfPhases(kInsertedBase),
          sumOfPhases(kLostBase)};
}

void LatticeLanes::framePosteriors(std::size_t lane, float factor,
                                   std::vector<FramePosterior>& frames) const {
  const std::size_t begin = emissions_->begin[lane];
  frames.resize(emissions_->positions - begin);
  std::size_t phase0 = 0;
  const LaneRow* row = tables_.values.data() + begin * kHmmStates;
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
    row += kHmmStates;
  }
}

void LatticeLanes::scorePaths(const LaneRow& factors) {
  factors_ = factors;
  HWY_DYNAMIC_DISPATCH(scoreLanes)(*weights_, *emissions_, factors, tables_);
}

void LatticeLanes::takePathOf(std::size_t lane, Call& call) const {
  const std::size_t begin = emissions_->begin[lane];
  const LaneRow* rows = tables_.values.data() + begin * kHmmStates;
  const WayRow* ways = tables_.ways.data() + begin * kLaneWays;
  // Frames of the read count from its first base.
  const int shift = static_cast<int>(begin % 3);
  std::array<int, kPathStates + 1> readState{};  // [PathState of the lane]
  std::array<int, kPathStates + 1> laneState{};  // [PathState of the read]
  std::array<std::size_t, kPathStates> wayOf{};  // [PathState of the read] its LaneWay
  wayOf[kBehind] = kWayBehind;
  for (int state = 0; state <= kPathStates; ++state) {
    const bool hasFrame = state < kBehind;
    const int frame = (state % 3 + 3 - shift) % 3;
    const int ofRead = hasFrame ? state - state % 3 + frame : state;
    readState[static_cast<std::size_t>(state)] = ofRead;
    laneState[static_cast<std::size_t>(ofRead)] = state;
    if (state < kInserted0) {
      wayOf[static_cast<std::size_t>(frame)] = static_cast<std::size_t>(kWayIntoFrame + state);
    }
  }
  const auto before = [&](int i, int state) {
    if (state >= kInserted0 && state < kBehind) return downFrame(state - kInserted0);
    const std::size_t way = wayOf[static_cast<std::size_t>(state)];
    const int from = ways[static_cast<std::size_t>(i) * kLaneWays + way][lane];
    // Nearly always the state stays, which a branch foretells.
    const bool stays = from == laneState[static_cast<std::size_t>(state)];
    return stays ? state : readState[static_cast<std::size_t>(from)];
  };
  const auto shifted = [&](Frameshift::Kind kind, int i, int f) {
    const LaneRow* row = rows + static_cast<std::size_t>(i) * kHmmStates;
    const int phase = (i % 3 + 3 - f) % 3;
    const int first = kind == Frameshift::Kind::kInsertion ? kInsertedBase : kLostBase;
    return row[first + phase][lane] * factors_[lane];
  };
  takePath(static_cast<int>(emissions_->positions - begin), readState[tables_.end[lane]], before,
           shifted, call);
}

}  // namespace velto
#endif
