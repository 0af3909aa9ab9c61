#include "hmm/error_rates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "core/base_code.h"
#include "hmm/float_math.h"
#include "hmm/group_lattice.h"
#include "hmm/quality_scale.h"
#include "hmm/read_choice.h"
#include "hmm/read_groups.h"

namespace velto {
namespace {

constexpr std::size_t kGroupsOfTask = 4;
constexpr double kCodingLogOdds = 3.0;  // reads below tell nothing about coding bases

constexpr BaseErrorRates kFirstGuess = {0.005, 0.007, 0.010};

// The kinds of errors, in the order of BaseRates.
enum ErrorKind { kInserted, kDeleted, kSubstituted };
constexpr std::size_t kErrorKinds = 3;

// What the posteriors of the sample expect under some rates.
struct ExpectedErrors {
  double codingBases = 0.0;
  double innerStops = 0.0;                      // stop codons that the coding region reads through
  std::array<BinSums, kErrorKinds> events{};    // [kind][bin]; without qualities all in bin 0
  std::array<BinSums, kErrorKinds> modelled{};  // events that the rates themselves lead to

  void add(const ExpectedErrors& other) {
    codingBases += other.codingBases;
    innerStops += other.innerStops;
    for (std::size_t kind = 0; kind < kErrorKinds; ++kind) {
      for (std::size_t b = 0; b < kQualityBins; ++b) {
        events[kind][b] += other.events[kind][b];
        modelled[kind][b] += other.modelled[kind][b];
      }
    }
  }

  double total(ErrorKind kind) const {
    double sum = 0.0;
    for (const double n : events[kind]) sum += n;
    return sum;
  }

  // Events per coding base, as if 1000 bases more had had this many.
  double rate(double count, double prior) const { return (count + prior) / (codingBases + 1000.0); }
};

// Even of no events that many more are counted, in indels and in inner stop codons.
constexpr double kPriorIndels = 0.1, kPriorStops = 0.15;

// ratio^1.7: a plain step of expectation maximisation goes too short a way.
double acceleratedStep(double expected, double old) {
  const double power = 1.7 / 0.69314718055994531 * naturalLog(expected / old);
  return old * static_cast<double>(powerOfTwo(static_cast<float>(std::clamp(power, -20.0, 20.0))));
}

// Coding regions that do not look like one pass for this many errors in error-free reads, per
// coding base: insertions or deletions, and inner stop codons.
constexpr double kMisfit = 5e-5, kStopMisfit = 1e-5;

// Substitutions themselves cannot be told from codons that the tables do not expect. Stop codons
// can: of 1000 wrong bases some 40 make one, and the model reads through some 30 of these where
// little else is wrong. Elsewhere the indels set the rate.
constexpr double kStopsOfSubstitution = 0.03;

double substitutionFor(double indels, double innerStops) {
  return std::clamp(std::max(indels, innerStops / kStopsOfSubstitution), 1e-5, 0.013);
}

// The network sharpens posteriors, while the rates learnt without it absorb what the tables do not
// explain: fewer errors are left for it. Where errors are frequent, they are real.
double shareKept(double indels) { return 0.8 + 0.2 * std::clamp((indels - 0.01) / 0.01, 0.0, 1.0); }

// The kinds of errors, in the order of ErrorKind.
constexpr double BaseErrorRates::*kRateOf[kErrorKinds] = {
    &BaseErrorRates::insertion, &BaseErrorRates::deletion, &BaseErrorRates::substitution};

class Learner {
 public:
  Learner(const HmmModel& model, const BaseErrorRates& first, std::span<const ReadView> sample,
          const ParallelFor& parallel)
      : model_(model),
        parallel_(parallel),
        scale_(sample),
        sample_(chosenReads(sample, kMostRateReads)),
        groups_(sample_) {
    setMean(first);
    multipliers_.fill(scale_.statedMultipliers());
  }

  // The mean rates first: learnt together with what qualities say, deletions run away.
  LearntRates learn() {
    ExpectedErrors errors;
    for (int round = 0; round < 4; ++round) {
      errors = expectedErrors();
      if (errors.codingBases <= 0.0) break;
      updateMean(errors);
    }
    takeOffMisfit(errors);
    return learnQualities();
  }

  LearntRates learnQualities() {
    if (!hasQualities()) return learnt_;
    fillBins();
    for (int round = 0; round < 6; ++round) updateQualities(expectedErrors());
    return learnt_;
  }

 private:
  bool hasQualities() const { return !scale_.bins().empty(); }

  void setMean(const BaseErrorRates& mean) {
    learnt_.mean = mean;
    rates_ = FileRates(mean, {});
  }

  void fillBins() {
    learnt_.qualities.clear();
    for (std::size_t b = 0; b < scale_.bins().size(); ++b) {
      QualityBin bin;
      bin.most = scale_.bins()[b];
      for (std::size_t kind = 0; kind < kErrorKinds; ++kind) {
        bin.factors.*kRateOf[kind] = multipliers_[kind][b];
      }
      learnt_.qualities.push_back(bin);
    }
    rates_ = FileRates(learnt_.mean, learnt_.qualities);
  }

  ExpectedErrors expectedErrors() const {
    std::vector<ExpectedErrors> ofRead(sample_.size());
    parallel_((groups_.size() + kGroupsOfTask - 1) / kGroupsOfTask, [&](std::size_t task) {
      GroupLattice lattice(model_, rates_, false);
      const std::size_t end = std::min((task + 1) * kGroupsOfTask, groups_.size());
      for (std::size_t g = task * kGroupsOfTask; g < end; ++g) {
        lattice.run(sample_, groups_[g]);
        for (std::size_t k = 0; k < groups_[g].size(); ++k) {
          if (lattice.evidence(k).logOdds <= kCodingLogOdds) continue;
          const std::size_t read = groups_[g][k];
          ofRead[read] = expectedErrorsOf(sample_[read], lattice, k);
        }
      }
    });
    ExpectedErrors errors;
    for (const ExpectedErrors& some : ofRead) errors.add(some);
    return errors;
  }

  // Of the read at a place of the lattice's group.
  ExpectedErrors expectedErrorsOf(const ReadView& read, const GroupLattice& lattice,
                                  std::size_t place) const {
    ExpectedErrors errors;
    ReadContext context;
    context.index(read.codes);
    for (std::size_t i = 0; i < read.codes.size(); ++i) {
      const ErrorPosterior p = lattice.errorPosterior(place, i);
      const double coding = p.coding[0] + p.coding[1] + p.coding[2];
      const BaseRates rates = rates_.at(read.phred, i);
      const std::size_t own = binAt(read, i),
                        gap = i == 0 ? own : std::min(own, binAt(read, i - 1));
      errors.codingBases += coding;
      if (i >= 2 && isStopCodon(context.codons[i - 2])) errors.innerStops += p.coding[2];
      errors.events[kInserted][own] += p.inserted;
      errors.modelled[kInserted][own] += coding * rates.insertion;
      errors.events[kDeleted][gap] += p.deleted;
      errors.modelled[kDeleted][gap] += coding * rates.deletion;
      if (!isKnownBase(read.codes[i])) continue;
      errors.events[kSubstituted][own] += substituted(p.coding, context, i, rates.substitution);
      errors.modelled[kSubstituted][own] += coding * rates.substitution;
    }
    return errors;
  }

  double substituted(const std::array<float, 3>& coding, const ReadContext& context, std::size_t i,
                     float substitution) const {
    const int gcClass = context.blocks[i / kCompositionBlock].gcClass();
    const EmissionRow& row = model_.emission(gcClass, context.fiveMers[i]);
    double sum = 0.0;
    for (int k = 0; k < 3; ++k) {
      sum +=
          coding[static_cast<std::size_t>(k)] * (1.0f - errorFreeShare(row, k, 1.0f, substitution));
    }
    return sum;
  }

  std::size_t binAt(const ReadView& read, std::size_t i) const {
    return rates_.byQuality && !read.phred.empty() ? rates_.binOf[read.phred[i]] : 0;
  }

  void updateMean(const ExpectedErrors& errors) {
    const auto rate = [&](ErrorKind kind, double old) {
      return acceleratedStep(errors.rate(errors.total(kind), kPriorIndels), old);
    };
    BaseErrorRates mean = learnt_.mean;
    mean.insertion = std::clamp(rate(kInserted, mean.insertion), 1e-5, 0.04);
    mean.deletion = std::clamp(rate(kDeleted, mean.deletion), 1e-5, 0.06);
    mean.substitution = substitutionFor(mean.insertion + mean.deletion,
                                        errors.rate(errors.innerStops, kPriorStops));
    setMean(mean);
  }

  // Leaves what the tables do not explain to the network, but no less than these bases can tell.
  void takeOffMisfit(const ExpectedErrors& errors) {
    BaseErrorRates& mean = learnt_.mean;
    const double kept = shareKept(mean.insertion + mean.deletion);
    const double least = errors.rate(0.0, kPriorIndels);
    mean.insertion = std::max(least, kept * mean.insertion - kMisfit);
    mean.deletion = std::max(least, kept * mean.deletion - kMisfit);
    const double stops = errors.rate(errors.innerStops, kPriorStops) - kStopMisfit;
    mean.substitution = substitutionFor(mean.insertion + mean.deletion, stops);
  }

  void updateQualities(const ExpectedErrors& errors) {
    for (std::size_t kind = 0; kind < kErrorKinds; ++kind) {
      scale_.refine(errors.events[kind], errors.modelled[kind], multipliers_[kind]);
    }
    fillBins();
  }

  const HmmModel& model_;
  const ParallelFor& parallel_;
  const QualityScale scale_;
  const std::vector<ReadView> sample_;  // of one base or more
  const ReadGroups groups_;             // of the sample
  std::array<BinMultipliers, kErrorKinds> multipliers_{};
  LearntRates learnt_;
  FileRates rates_;  // of learnt_
};

}  // namespace

LearntRates learnErrorRates(const HmmModel& model, std::span<const ReadView> sample,
                            const ParallelFor& parallel) {
  if (sample.size() < kLeastReadsForRates) {
    return learnQualityRates(model, kDefaultRates, sample, parallel);
  }
  return Learner(model, kFirstGuess, sample, parallel).learn();
}

LearntRates learnQualityRates(const HmmModel& model, const BaseErrorRates& mean,
                              std::span<const ReadView> sample, const ParallelFor& parallel) {
  return Learner(model, mean, sample, parallel).learnQualities();
}

}  // namespace velto
