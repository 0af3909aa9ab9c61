#include "hmm/error_rates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "core/base_code.h"
#include "hmm/float_math.h"
#include "hmm/quality_scale.h"
#include "hmm/read_lattice.h"

namespace velto {
namespace {

constexpr std::size_t kMostReads = 300;
constexpr double kCodingLogOdds = 3.0;  // reads below tell nothing about coding bases

constexpr BaseRates kFirstGuess = {0.005f, 0.007f, 0.010f};

// The kinds of errors, in the order of BaseRates.
enum ErrorKind { kInserted, kDeleted, kSubstituted };
constexpr std::size_t kErrorKinds = 3;

// What the posteriors of the sample expect under some rates.
struct ExpectedErrors {
  double codingBases = 0.0;
  std::array<BinSums, kErrorKinds> events{};    // [kind][bin]; without qualities all in bin 0
  std::array<BinSums, kErrorKinds> modelled{};  // events that the rates themselves lead to

  double total(ErrorKind kind) const {
    double sum = 0.0;
    for (const double n : events[kind]) sum += n;
    return sum;
  }
};

// ratio^1.7: a plain step of expectation maximisation goes too short a way.
double acceleratedStep(double expected, double old) {
  const double power = 1.7 / 0.69314718055994531 * naturalLog(expected / old);
  return old * static_cast<double>(powerOfTwo(static_cast<float>(std::clamp(power, -20.0, 20.0))));
}

float cut(double rate, double least, double most) {
  return static_cast<float>(std::clamp(rate, least, most));
}

float substitutionFor(double indels) { return cut(indels, 0.001, 0.013); }

// The network sharpens posteriors, while the rates learnt without it absorb what the tables do not
// explain: fewer errors are left for it. Where errors are frequent, they are real.
double shareKept(double indels) { return 0.8 + 0.2 * std::clamp((indels - 0.03) / 0.03, 0.0, 1.0); }

class Learner {
 public:
  Learner(const HmmModel& model, std::span<const ReadView> sample)
      : model_(model), scale_(sample), sample_(spread(sample)) {
    rates_.mean = kFirstGuess;
    setQualities();
  }

  FileRates learn() {
    const int rounds = scale_.tells() ? 6 : 4;
    for (int round = 0; round < rounds; ++round) {
      const ExpectedErrors errors = expectedErrors();
      if (errors.codingBases <= 0.0) break;
      updateMean(errors);
      updateQualities(errors);
    }
    const double kept = shareKept(rates_.mean.insertion + rates_.mean.deletion);
    rates_.mean.insertion = static_cast<float>(kept * rates_.mean.insertion);
    rates_.mean.deletion = static_cast<float>(kept * rates_.mean.deletion);
    rates_.mean.substitution = substitutionFor(rates_.mean.insertion + rates_.mean.deletion);
    fillBins();
    return rates_;
  }

  FileRates learnQualities(const BaseRates& mean) {
    rates_.mean = mean;
    fillBins();
    for (int round = 0; round < 6 && scale_.tells(); ++round) updateQualities(expectedErrors());
    return rates_;
  }

 private:
  static std::vector<ReadView> spread(std::span<const ReadView> sample) {
    const std::size_t count = std::min(kMostReads, sample.size());
    std::vector<ReadView> chosen;
    for (std::size_t k = 0; k < count; ++k) chosen.push_back(sample[k * sample.size() / count]);
    return chosen;
  }

  void setQualities() {
    rates_.byQuality = scale_.tells();
    if (!rates_.byQuality) return;
    rates_.binOf = scale_.binOf();
    multipliers_.fill(scale_.statedMultipliers());
    fillBins();
  }

  void fillBins() {
    if (!rates_.byQuality) return;
    for (std::size_t b = 0; b < kQualityBins; ++b) {
      rates_.ofBin[b].insertion = cut(rates_.mean.insertion * multipliers_[kInserted][b], 0, 0.06);
      rates_.ofBin[b].deletion = cut(rates_.mean.deletion * multipliers_[kDeleted][b], 0, 0.12);
      rates_.ofBin[b].substitution =
          cut(rates_.mean.substitution * multipliers_[kSubstituted][b], 1e-5, 0.3);
    }
  }

  ExpectedErrors expectedErrors() {
    ExpectedErrors errors;
    for (const ReadView& read : sample_) {
      if (read.codes.empty()) continue;
      lattice_.run(model_, rates_, read, false);
      if (logOddsOfCoding(lattice_.forward.state.back()) > kCodingLogOdds) addRead(read, errors);
    }
    return errors;
  }

  void addRead(const ReadView& read, ExpectedErrors& errors) const {
    for (std::size_t i = 0; i < read.codes.size(); ++i) {
      const StatePosterior& p = lattice_.posteriors[i];
      const double coding = p.state[kC0] + p.state[kC1] + p.state[kC2];
      const double inserted = p.state[kI0] + p.state[kI1] + p.state[kI2];
      const double deleted = p.deletion[0] + p.deletion[1] + p.deletion[2];
      const BaseRates rates = rates_.at(read.phred, i);
      const std::size_t own = binAt(read, i),
                        gap = i == 0 ? own : std::min(own, binAt(read, i - 1));
      errors.codingBases += coding;
      errors.events[kInserted][own] += inserted;
      errors.modelled[kInserted][own] += coding * rates.insertion;
      errors.events[kDeleted][gap] += deleted;
      errors.modelled[kDeleted][gap] += coding * rates.deletion;
      if (!isKnownBase(read.codes[i])) continue;
      errors.events[kSubstituted][own] += substituted(p.state, i, rates.substitution);
      errors.modelled[kSubstituted][own] += coding * rates.substitution;
    }
  }

  double substituted(const StateRow& state, std::size_t i, float substitution) const {
    const int gcClass = lattice_.blocks[i / kCompositionBlock].gcClass();
    const EmissionRow& row = model_.emission(gcClass, lattice_.fiveMers[i]);
    double sum = 0.0;
    for (int k = 0; k < 3; ++k) {
      sum += state[static_cast<std::size_t>(kC0 + k)] *
             (1.0f - errorFreeShare(row, k, 1.0f, substitution));
    }
    return sum;
  }

  std::size_t binAt(const ReadView& read, std::size_t i) const {
    return rates_.byQuality && !read.phred.empty() ? rates_.binOf[read.phred[i]] : 0;
  }

  void updateMean(const ExpectedErrors& errors) {
    const auto rate = [&](ErrorKind kind, double old) {
      return acceleratedStep((errors.total(kind) + 0.1) / (errors.codingBases + 1000.0), old);
    };
    rates_.mean.insertion = cut(rate(kInserted, rates_.mean.insertion), 1e-5, 0.04);
    rates_.mean.deletion = cut(rate(kDeleted, rates_.mean.deletion), 1e-5, 0.06);
    rates_.mean.substitution = substitutionFor(rates_.mean.insertion + rates_.mean.deletion);
    fillBins();
  }

  void updateQualities(const ExpectedErrors& errors) {
    if (!rates_.byQuality) return;
    for (std::size_t kind = 0; kind < kErrorKinds; ++kind) {
      scale_.refine(errors.events[kind], errors.modelled[kind], multipliers_[kind]);
    }
    fillBins();
  }

  const HmmModel& model_;
  const QualityScale scale_;
  const std::vector<ReadView> sample_;
  std::array<BinMultipliers, kErrorKinds> multipliers_{};
  FileRates rates_;
  ReadLattice lattice_;
};

}  // namespace

FileRates learnErrorRates(const HmmModel& model, std::span<const ReadView> sample) {
  if (sample.size() < kLeastReadsForRates) return FileRates{};
  return Learner(model, sample).learn();
}

FileRates learnQualityRates(const HmmModel& model, const BaseRates& mean,
                            std::span<const ReadView> sample) {
  return Learner(model, sample).learnQualities(mean);
}

}  // namespace velto
