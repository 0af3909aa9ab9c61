#include "training/hmm/read_calibration.h"

#include <tbb/parallel_for.h>

#include <array>
#include <cmath>

#include "core/in_turn.h"
#include "hmm/error_rates.h"
#include "hmm/float_math.h"
#include "hmm/read_lattice.h"
#include "training/hmm/training_reads.h"

namespace velto {
namespace {

using Vector = std::array<double, 3>;

Vector inputsOf(const DecisionCase& c) { return {1.0, c.logOdds, c.codingHundreds}; }

// Solves the symmetric system `a` x = b by elimination; `a` is positive definite.
Vector solve(std::array<Vector, 3> a, Vector b) {
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = i + 1; j < 3; ++j) {
      const double factor = a[j][i] / a[i][i];
      for (std::size_t k = i; k < 3; ++k) a[j][k] -= factor * a[i][k];
      b[j] -= factor * b[i];
    }
  }
  for (std::size_t i = 3; i-- > 0;) {
    for (std::size_t k = i + 1; k < 3; ++k) b[i] -= a[i][k] * b[k];
    b[i] /= a[i][i];
  }
  return b;
}

ReadMixture calibrationMixture(const ErrorModel& errors) {
  ReadMixture mixture;
  mixture.coding = 0.58;
  mixture.utr3 = 0.11;
  mixture.antisense = 0.0;
  mixture.wholeShare = 0.0;
  mixture.profiles = {{errors, 1.0}};
  return mixture;
}

// Cases of one profile: its reads are a file of their own.
std::vector<DecisionCase> casesOf(const HmmModel& model, const ReadDrawer& drawer,
                                  std::size_t count, std::uint64_t seed) {
  std::vector<SimulatedRead> drawn(count);
  std::vector<ReadView> views(count);
  tbb::parallel_for(std::size_t{0}, count, [&](std::size_t k) {
    drawn[k] = drawer.draw(seed, k).read;
    views[k].codes = drawn[k].bases;
  });
  const LearntRates learnt = learnErrorRates(model, views, inTurn);
  HmmModel fitted = model;
  fitted.weights =
      withTruncatedShare(model.weights, model.truncatedShare, drawer.truncatedShare(seed, count));
  const FileRates rates(learnt.mean, learnt.qualities);
  std::vector<DecisionCase> cases(count);
  tbb::parallel_for(std::size_t{0}, count, [&](std::size_t k) {
    ReadLattice lattice;
    lattice.run(fitted, rates, views[k], true);
    const ReadEvidence evidence = lattice.evidence();
    cases[k] = {cutLogOdds(evidence), codingHundreds(evidence), drawn[k].isCoding()};
  });
  return cases;
}

}  // namespace

ReadDecision fitDecision(const std::vector<DecisionCase>& cases) {
  constexpr int kSteps = 30;
  constexpr double kPull = 1e-3;
  Vector weights{};
  double coding = 0.0;
  for (const DecisionCase& c : cases) coding += c.coding ? 1.0 : 0.0;
  for (int step = 0; step < kSteps; ++step) {
    Vector slope{};
    std::array<Vector, 3> curvature{};
    for (std::size_t i = 0; i < 3; ++i) {
      slope[i] = -kPull * weights[i];
      curvature[i][i] = kPull;
    }
    for (const DecisionCase& c : cases) {
      const Vector x = inputsOf(c);
      const double p = logisticOf(weights[0] * x[0] + weights[1] * x[1] + weights[2] * x[2]);
      for (std::size_t i = 0; i < 3; ++i) {
        slope[i] += ((c.coding ? 1.0 : 0.0) - p) * x[i];
        for (std::size_t j = 0; j < 3; ++j) curvature[i][j] += p * (1.0 - p) * x[i] * x[j];
      }
    }
    const Vector move = solve(curvature, slope);
    for (std::size_t i = 0; i < 3; ++i) weights[i] += move[i];
  }
  return {weights[0], weights[1], weights[2], coding / static_cast<double>(cases.size())};
}

ReadDecision calibrateDecision(const HmmModel& model, const TranscriptPool& pool,
                               std::size_t readsPerProfile, std::uint64_t seed) {
  std::vector<DecisionCase> cases;
  std::uint64_t number = 0;
  for (const char* preset : {"est", "est", "mild", "clean"}) {
    const ReadDrawer drawer({&pool}, calibrationMixture(presetErrors(preset).value()));
    const std::vector<DecisionCase> more =
        casesOf(model, drawer, readsPerProfile, Random::split(seed, number++).next());
    cases.insert(cases.end(), more.begin(), more.end());
  }
  return fitDecision(cases);
}

}  // namespace velto
