#include "training/hmm/read_calibration.h"

#include <tbb/parallel_for.h>

#include <array>
#include <cmath>
#include <utility>

#include "core/in_turn.h"
#include "core/letter_codes.h"
#include "hmm/error_rates.h"
#include "hmm/float_math.h"
#include "hmm/read_lattice.h"
#include "training/hmm/training_reads.h"

namespace velto {
namespace {

template <std::size_t kInputs>
using Vector = std::array<double, kInputs>;

template <std::size_t kInputs>
struct LogisticCase {
  Vector<kInputs> inputs;
  bool outcome;
};

// Solves the symmetric system `a` x = b by elimination; `a` is positive definite.
template <std::size_t kInputs>
Vector<kInputs> solve(std::array<Vector<kInputs>, kInputs> a, Vector<kInputs> b) {
  for (std::size_t i = 0; i < kInputs; ++i) {
    for (std::size_t j = i + 1; j < kInputs; ++j) {
      const double factor = a[j][i] / a[i][i];
      for (std::size_t k = i; k < kInputs; ++k) a[j][k] -= factor * a[i][k];
      b[j] -= factor * b[i];
    }
  }
  for (std::size_t i = kInputs; i-- > 0;) {
    for (std::size_t k = i + 1; k < kInputs; ++k) b[i] -= a[i][k] * b[k];
    b[i] /= a[i][i];
  }
  return b;
}

// Logistic regression by Newton steps with a slight pull to zero.
template <std::size_t kInputs>
Vector<kInputs> fitLogistic(const std::vector<LogisticCase<kInputs>>& cases) {
  constexpr int kSteps = 30;
  constexpr double kPull = 1e-3;
  Vector<kInputs> weights{};
  for (int step = 0; step < kSteps; ++step) {
    Vector<kInputs> slope{};
    std::array<Vector<kInputs>, kInputs> curvature{};
    for (std::size_t i = 0; i < kInputs; ++i) {
      slope[i] = -kPull * weights[i];
      curvature[i][i] = kPull;
    }
    for (const auto& [x, outcome] : cases) {
      double sum = 0.0;
      for (std::size_t i = 0; i < kInputs; ++i) sum += weights[i] * x[i];
      const double p = logisticOf(sum);
      for (std::size_t i = 0; i < kInputs; ++i) {
        slope[i] += ((outcome ? 1.0 : 0.0) - p) * x[i];
        for (std::size_t j = 0; j < kInputs; ++j) curvature[i][j] += p * (1.0 - p) * x[i] * x[j];
      }
    }
    const Vector<kInputs> move = solve(curvature, slope);
    for (std::size_t i = 0; i < kInputs; ++i) weights[i] += move[i];
  }
  return weights;
}

// Kinds of reads, and whether their strands are in doubt often enough to be learnt from.
constexpr std::pair<const char*, bool> kProfiles[] = {
    {"est", true}, {"est", true}, {"mild", false}, {"clean", false}};

ReadMixture calibrationMixture(const ErrorModel& errors) {
  ReadMixture mixture;
  mixture.coding = 0.58;
  mixture.utr3 = 0.11;
  mixture.antisense = 0.0;
  mixture.wholeShare = 0.0;
  mixture.profiles = {{errors, 1.0}};
  return mixture;
}

// Reads of one profile, which are a file of their own, and a model that has learnt from them.
class ProfileReads {
 public:
  ProfileReads(const HmmModel& model, const ReadDrawer& drawer, std::size_t count,
               std::uint64_t seed)
      : drawn_(count), fitted_(model), evidence_(count) {
    std::vector<ReadView> views(count);
    tbb::parallel_for(std::size_t{0}, count, [&](std::size_t k) {
      drawn_[k] = drawer.draw(seed, k).read;
      views[k].codes = drawn_[k].bases;
    });
    const LearntRates learnt = learnErrorRates(model, views, inTurn);
    rates_ = FileRates(learnt.mean, learnt.qualities);
    fitted_.weights =
        withTruncatedShare(model.weights, model.truncatedShare, drawer.truncatedShare(seed, count));
    tbb::parallel_for(std::size_t{0}, count,
                      [&](std::size_t k) { evidence_[k] = evidenceOf(drawn_[k].bases); });
  }

  void appendTo(std::vector<DecisionCase>& cases) const {
    for (std::size_t k = 0; k < drawn_.size(); ++k) {
      cases.push_back(
          {cutLogOdds(evidence_[k]), codingHundreds(evidence_[k]), drawn_[k].isCoding()});
    }
  }

  // Of the coding ones.
  void appendTo(std::vector<StrandCase>& cases) const {
    std::vector<ReadEvidence> others(drawn_.size());
    tbb::parallel_for(std::size_t{0}, drawn_.size(), [&](std::size_t k) {
      std::vector<short> bases = drawn_[k].bases;
      reverseComplement(bases);
      if (drawn_[k].isCoding()) others[k] = evidenceOf(bases);
    });
    for (std::size_t k = 0; k < drawn_.size(); ++k) {
      if (drawn_[k].isCoding()) cases.push_back({evidence_[k], others[k]});
    }
  }

 private:
  ReadEvidence evidenceOf(const std::vector<short>& bases) const {
    ReadLattice lattice;
    lattice.run(fitted_, rates_, {bases, {}}, true);
    return lattice.evidence();
  }

  std::vector<SimulatedRead> drawn_;
  HmmModel fitted_;
  FileRates rates_;
  std::vector<ReadEvidence> evidence_;  // [read]
};

// Were the strands swapped, inputs and outcome would change sign together: no constant is needed,
// and one side of each read tells all.
std::vector<LogisticCase<2>> scoreCases(const std::vector<StrandCase>& cases) {
  std::vector<LogisticCase<2>> logistic;
  for (const auto& [own, other] : cases) {
    logistic.push_back(
        {{own.logOdds - other.logOdds, own.logLikelihood - other.logLikelihood}, true});
  }
  return logistic;
}

// Whether the strand with the higher score is the right one.
std::vector<LogisticCase<4>> trustCases(const StrandDecision& scores,
                                        const std::vector<StrandCase>& cases) {
  const auto scoreOf = [&](const ReadEvidence& strand) {
    return strandScore(scores, strand.logOdds, strand.logLikelihood);
  };
  std::vector<LogisticCase<4>> logistic;
  for (const auto& [own, other] : cases) {
    const double lead = scoreOf(own) - scoreOf(other);
    const ReadEvidence& called = lead > 0.0 ? own : other;
    logistic.push_back(
        {{1.0, std::abs(lead), cutLogOdds(called), codingHundreds(called)}, lead > 0.0});
  }
  return logistic;
}

}  // namespace

ReadDecision fitDecision(const std::vector<DecisionCase>& cases) {
  std::vector<LogisticCase<3>> logistic;
  double coding = 0.0;
  for (const DecisionCase& c : cases) {
    logistic.push_back({{1.0, c.logOdds, c.codingHundreds}, c.coding});
    coding += c.coding ? 1.0 : 0.0;
  }
  const auto [constant, logOdds, codingBases] = fitLogistic(logistic);
  return {constant, logOdds, codingBases, coding / static_cast<double>(cases.size())};
}

StrandDecision fitStrands(const std::vector<StrandCase>& cases) {
  const auto [logOdds, logLikelihood] = fitLogistic(scoreCases(cases));
  StrandDecision strand{logOdds, logLikelihood};
  const auto [constant, lead, calledLogOdds, calledBases] = fitLogistic(trustCases(strand, cases));
  strand = {lead * logOdds, lead * logLikelihood, constant, calledLogOdds, calledBases};
  return strand;
}

void calibrateDecisions(const TranscriptPool& pool, std::size_t readsPerProfile, std::uint64_t seed,
                        HmmModel& model) {
  std::vector<DecisionCase> reads;
  std::vector<StrandCase> strands;
  std::uint64_t number = 0;
  for (const auto& [preset, doubtful] : kProfiles) {
    const ReadDrawer drawer({&pool}, calibrationMixture(presetErrors(preset).value()));
    const ProfileReads profile(model, drawer, readsPerProfile,
                               Random::split(seed, number++).next());
    profile.appendTo(reads);
    if (doubtful) profile.appendTo(strands);
  }
  model.decision = fitDecision(reads);
  model.strand = fitStrands(strands);
}

}  // namespace velto
