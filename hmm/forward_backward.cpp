#include "hmm/forward_backward.h"

#include <algorithm>
#include <limits>

#include "hmm/float_math.h"

namespace velto {
namespace {

float sumOfEight(const float* x) {
  return ((x[0] + x[1]) + (x[2] + x[3])) + ((x[4] + x[5]) + (x[6] + x[7]));
}

bool isRescaled(std::size_t i, std::size_t length) { return (length - 1 - i) % kRescaleStep == 0; }

// Multiplies the row by the power of two that brings its sum to between 1 and 2.
float rescale(StateRow& row) {
  const float sum = sumOf(row);
  if (sum < std::numeric_limits<float>::min()) return 1.0f;
  const float scale = inversePower(sum);
  for (float& x : row) x *= scale;
  return scale;
}

void applyMask(StateMask mask, StateRow& row) {
  if (mask == kAnyState) return;
  for (std::size_t s = 0; s < kHmmStates; ++s) {
    if ((mask >> s & 1) == 0) row[s] = 0.0f;
  }
}

// C_k' = e_k [(C_k-1 + [k = 0] S2) stay + I_k-1 + C_k-2 deletion], phases mod 3
// I_k' = C_k insertion           S0' = U5 start, S1' = S0, S2' = S1
// U5'  = U5 stayUtr5 utr5        E0' = (C2 + S2) stop, E1' = E0, E2' = E1
// NC'  = NC noncoding            U3' = (U3 + E2) utr3, Un' = Un utr3
StateRow nextRow(const PathWeights& weights, const BaseEmission& e, const StateRow& row) {
  StateRow next;
  const float intoPhase0 = row[kC2] + row[kS2];
  next[kC0] = e.kind[0] * ((intoPhase0 * e.stay + row[kI2]) + row[kC1] * e.deletion);
  next[kC1] = e.kind[1] * ((row[kC0] * e.stay + row[kI0]) + row[kC2] * e.deletion);
  next[kC2] = e.kind[2] * ((row[kC1] * e.stay + row[kI1]) + row[kC0] * e.deletion);
  for (std::size_t k = 0; k < 3; ++k) next[kI0 + k] = row[kC0 + k] * e.insertion;
  next[kS0] = row[kU5] * e.start;
  next[kS1] = row[kS0];
  next[kS2] = row[kS1];
  next[kE0] = intoPhase0 * e.stop;
  next[kE1] = row[kE0];
  next[kE2] = row[kE1];
  next[kU5] = row[kU5] * (weights.stayUtr5 * e.kind[kUtr5]);
  next[kU3] = (row[kU3] + row[kE2]) * e.kind[kUtr3];
  next[kNC] = row[kNC] * e.kind[kNoncodingRead];
  next[kUn] = row[kUn] * e.kind[kUtr3];
  return next;
}

// Sums over all ways on from the base before, given those from the base of emission e: the
// transposed of nextRow.
StateRow previousRow(const PathWeights& weights, const BaseEmission& e, const StateRow& row) {
  StateRow previous;
  const float c0 = e.kind[0] * row[kC0], c1 = e.kind[1] * row[kC1], c2 = e.kind[2] * row[kC2];
  const float toStop = e.stop * row[kE0];
  previous[kC0] = (c1 * e.stay + c2 * e.deletion) + e.insertion * row[kI0];
  previous[kC1] = (c2 * e.stay + c0 * e.deletion) + e.insertion * row[kI1];
  previous[kC2] = ((c0 * e.stay + c1 * e.deletion) + e.insertion * row[kI2]) + toStop;
  previous[kI0] = c1;
  previous[kI1] = c2;
  previous[kI2] = c0;
  previous[kS0] = row[kS1];
  previous[kS1] = row[kS2];
  previous[kS2] = c0 * e.stay + toStop;
  previous[kE0] = row[kE1];
  previous[kE1] = row[kE2];
  previous[kE2] = e.kind[kUtr3] * row[kU3];
  previous[kU5] = (weights.stayUtr5 * e.kind[kUtr5]) * row[kU5] + e.start * row[kS0];
  previous[kU3] = previous[kE2];
  previous[kNC] = e.kind[kNoncodingRead] * row[kNC];
  previous[kUn] = e.kind[kUtr3] * row[kUn];
  return previous;
}

// Posteriors at one base from the sums up to it, `forward`, and on from it, `backward`. Returns the
// inverse of their total, 0 without any path.
float posteriorOf(const StateRow& forward, const StateRow& backward, StateRow& posterior) {
  for (std::size_t s = 0; s < kHmmStates; ++s) posterior[s] = forward[s] * backward[s];
  const float total = sumOf(posterior);
  const float inverse = total < std::numeric_limits<float>::min() ? 0.0f : 1.0f / total;
  for (float& p : posterior) p *= inverse;
  return inverse;
}

}  // namespace

StateRow firstRow(const PathWeights& weights, const BaseEmission& e) {
  StateRow row{};
  for (std::size_t k = 0; k < 3; ++k) row[kC0 + k] = weights.beginCoding * e.kind[k];
  row[kS0] = weights.beginStart * e.start;
  row[kU5] = weights.beginUtr5 * e.kind[kUtr5];
  row[kNC] = weights.beginNoncoding * e.kind[kNoncodingRead];
  row[kUn] = weights.beginUtr3 * e.kind[kUtr3];
  return row;
}

float sumOf(const StateRow& row) { return sumOfEight(row.data()) + sumOfEight(row.data() + 8); }

void runForward(const LatticeView& lattice, ForwardRows& forward) {
  const std::size_t length = lattice.emissions.size();
  forward.state.resize(length);
  forward.scale.assign(length, 1.0f);
  for (std::size_t i = 0; i < length; ++i) {
    const BaseEmission& e = lattice.emissions[i];
    StateRow& row = forward.state[i];
    row = i == 0 ? firstRow(lattice.weights, e) : nextRow(lattice.weights, e, forward.state[i - 1]);
    if (!lattice.masks.empty()) applyMask(lattice.masks[i], row);
    if (isRescaled(i, length)) forward.scale[i] = rescale(row);
  }
}

void runBackward(const LatticeView& lattice, const ForwardRows& forward,
                 std::vector<StatePosterior>& posteriors) {
  const std::size_t length = lattice.emissions.size();
  posteriors.resize(length);
  StateRow backward;
  backward.fill(1.0f);
  for (std::size_t i = length; i-- > 0;) {
    const BaseEmission& e = lattice.emissions[i];
    if (!lattice.masks.empty()) applyMask(lattice.masks[i], backward);
    StatePosterior& out = posteriors[i];
    const float inverse = posteriorOf(forward.state[i], backward, out.state);
    for (std::size_t k = 0; k < 3; ++k) {
      const float before = i == 0 ? 0.0f : forward.state[i - 1][kC0 + (k + 1) % 3];
      // The inverse times the scale may overflow.
      const float lost = before * e.deletion * (e.kind[k] * backward[kC0 + k]) * inverse;
      out.deletion[k] = lost * forward.scale[i];
    }
    if (i == 0) break;
    backward = previousRow(lattice.weights, e, backward);
    if (isRescaled(i, length)) rescale(backward);
  }
}

double logOddsOfCoding(const StateRow& lastRow) {
  constexpr float kLeast = 1e-36f;
  float coding = 0.0f, noncoding = 0.0f;
  for (int s = 0; s < kHmmStates; ++s) {
    (isOfCodingRead(s) ? coding : noncoding) += lastRow[static_cast<std::size_t>(s)];
  }
  const double odds =
      naturalLog(std::max(coding, kLeast)) - naturalLog(std::max(noncoding, kLeast));
  return std::clamp(odds, -80.0, 80.0);
}

double logLikelihood(const StateRow& lastRow, long power) {
  const float sum = sumOf(lastRow);
  if (sum < std::numeric_limits<float>::min()) return -std::numeric_limits<double>::infinity();
  return naturalLog(sum) - kLogOfTwo * static_cast<double>(power);
}

double logLikelihood(const ForwardRows& forward) {
  long power = 0;
  for (const float scale : forward.scale) power += powerOf(scale);
  return logLikelihood(forward.state.back(), power);
}

}  // namespace velto
