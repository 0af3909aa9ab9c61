// Posterior probabilities of the states of one read.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "hmm/emissions.h"
#include "hmm/hmm_model.h"

namespace velto {

using StateRow = std::array<float, kHmmStates>;  // [HmmState]

// States that a base may be in, as bits 1 << state; for training.
using StateMask = std::uint16_t;
constexpr StateMask kAnyState = 0xffff;

// A read's emissions and the states its bases may be in; no masks: any.
struct LatticeView {
  const PathWeights& weights;
  std::span<const BaseEmission> emissions;  // [base], at least one
  std::span<const StateMask> masks{};       // [base] or empty
};

// Sums over all paths up to each base, as floats with a scale: row i is `state[i]` divided by the
// product of scale[0] to scale[i].
struct ForwardRows {
  std::vector<StateRow> state;  // [base]
  std::vector<float> scale;     // [base] powers of two; 1 but at every kRescaleStep-th base counted
                                // from the read's end
};
constexpr int kRescaleStep = 4;

// Posterior probabilities at one base. They sum up to 1 over the states, or all are 0 where no
// path is left within the range of floats.
struct StatePosterior {
  StateRow state;
  std::array<float, 3> deletion;  // of a coding base of phase k behind a lost base
};

// What the posteriors of a base say about errors.
struct ErrorPosterior {
  std::array<float, 3> coding;  // [phase] start and stop codon apart
  float inserted;
  float deleted;  // a base was lost before this one
};
inline ErrorPosterior errorPosteriorOf(const StatePosterior& p) {
  return {{p.state[kC0], p.state[kC1], p.state[kC2]},
          p.state[kI0] + p.state[kI1] + p.state[kI2],
          p.deletion[0] + p.deletion[1] + p.deletion[2]};
}

// Sum in a fixed order, which lanes repeat.
float sumOf(const StateRow& row);

// Row of the first base of a read, before any rescaling.
StateRow firstRow(const PathWeights& weights, const BaseEmission& e);

void runForward(const LatticeView& lattice, ForwardRows& forward);
void runBackward(const LatticeView& lattice, const ForwardRows& forward,
                 std::vector<StatePosterior>& posteriors);

// Natural logarithm of the odds that the read has coding bases, cut to +-80.
double logOddsOfCoding(const StateRow& lastRow);

// Natural logarithm of the sum over all paths; minus infinity where there is none.
double logLikelihood(const ForwardRows& forward);

// The same from the last row, scaled by 2^power.
double logLikelihood(const StateRow& lastRow, long power);

}  // namespace velto
