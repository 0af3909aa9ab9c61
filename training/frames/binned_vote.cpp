#include "training/frames/binned_vote.h"

#include <algorithm>
#include <cmath>

#include "core/six_digits.h"
#include "model/sliding_vote.h"
#include "model/window_width.h"

namespace velto {
namespace {

std::int64_t millionths(double value) { return std::llround(value * kMillion); }

double fromMillionths(std::int64_t value) { return static_cast<double>(value) / kMillion; }

constexpr int kMaxCodons = 65;

// The codons of each amino acid, and the bin of every usage.
struct UsageTables {
  std::vector<int> codonsOf[kAminoAcids];
  std::uint8_t bin[kMaxCodons + 1][kMaxCodons + 1] = {};  // [acid count > 0][codon count]
  std::uint8_t absentBin[kCodonCodes] = {};               // of a codon whose acid is absent

  UsageTables() {
    for (int codon = 0; codon < kCodonCodes; ++codon) {
      codonsOf[ReadData::CodonTable(codon / 16, codon / 4 % 4, codon % 4)].push_back(codon);
      absentBin[codon] = static_cast<std::uint8_t>(usageBin(codon, 0, 0));
    }
    for (int acids = 1; acids <= kMaxCodons; ++acids) {
      for (int codons = 0; codons <= acids; ++codons) {
        bin[acids][codons] = static_cast<std::uint8_t>(usageBin(0, codons, acids));
      }
    }
  }
};

const UsageTables& usageTables() {
  static const UsageTables tables;
  return tables;
}

}  // namespace

// The counts of one window as its codons come and go, and its sum.
class WindowBins {
 public:
  explicit WindowBins(const BinnedVote& vote) : vote_(vote), sum_(vote.allNo_) {
    for (int acid = 0; acid < kAminoAcids; ++acid) sum_ += ofAcid(acid);
  }

  void change(const CodonContext& codon, int by) {
    if (codon.acid == kNoAminoAcid) return;
    sum_ -= ofAcid(codon.acid);
    acids_[codon.acid] += by;
    codons_[codon.codon] += by;
    sum_ += ofAcid(codon.acid);
    for (int gap = 0; gap < kPairGaps; ++gap) {
      if (codon.partner[gap] == kNoAminoAcid) continue;
      const int feature = pairFeatureIndex(gap, codon.acid, codon.partner[gap]);
      int& count = pairs_[feature - kFirstPairFeature];
      sum_ -= added(feature, count);
      count += by;
      sum_ += added(feature, count);
    }
  }

  std::int64_t sum() const { return sum_; }

 private:
  std::int64_t added(int feature, int bin) const {
    return vote_.added_[static_cast<std::size_t>(feature)][static_cast<std::size_t>(bin)];
  }

  // What the amino acid and its codons add.
  std::int64_t ofAcid(int acid) const {
    const int count = acids_[acid];
    std::int64_t sum = added(acid, count);
    for (const int codon : usage_.codonsOf[acid]) {
      const int bin = count == 0 ? usage_.absentBin[codon] : usage_.bin[count][codons_[codon]];
      sum += added(kFirstCodonFeature + codon, bin);
    }
    return sum;
  }

  const BinnedVote& vote_;
  const UsageTables& usage_ = usageTables();
  std::int64_t sum_;
  int acids_[kAminoAcids] = {};
  int codons_[kCodonCodes] = {};
  int pairs_[kPairCodes] = {};
};

// Whole sums are kept up to date from trial to trial.
int BinnedVote::bestTrial(const short* seq, int length, const TrialWindow& window,
                          int otherwise) const {
  const TrialCodons codons(seq, length, window);
  WindowBins bins(*this);
  for (int j = 0; j < window.codons; ++j) bins.change(codons.at(j, true), 1);
  std::int64_t best = millionths(kWorstTrialScore);
  int place = otherwise;
  for (int t = 0; t < window.trials(); ++t) {
    if (bins.sum() > best) {
      best = bins.sum();
      place = t;
    }
    if (t == window.codons) break;
    bins.change(codons.at(t, true), -1);
    bins.change(codons.at(t, false), 1);
  }
  return place;
}

BinnedVote::BinnedVote(const Vote& vote) : added_(kWindowFeatures) {
  double constant = vote.bias;
  for (const WeightedStump& q : vote.stumps) {
    const std::int64_t alpha = millionths(q.weight / 2);
    alphas_.push_back({q.stump, alpha});
    constant += q.weight / 2;
    allNo_ -= alpha;
    auto& bins = added_[static_cast<std::size_t>(q.stump.feature)];
    for (int bin = q.stump.threshold + 1; bin < kBins; ++bin) {
      bins[static_cast<std::size_t>(bin)] += static_cast<std::int32_t>(2 * alpha);
    }
  }
  constant_ = millionths(constant);
  allNo_ += constant_;
}

WindowScores BinnedVote::score(int windowWidth, const short* seq, int length) const {
  WindowScores scores;
  const int codons = windowCodons(windowWidth);
  const ReadCodons read(seq, length);
  for (int f = 0; f < 3; ++f) {
    if (f >= length - windowWidth) continue;
    WindowBins window(*this);
    for (int j = 0; j < codons; ++j) window.change(read.at(f + 3 * j), 1);
    for (int start = f; start < length - windowWidth; start += 3) {
      scores.frame[f].push_back(fromMillionths(window.sum()));
      window.change(read.at(start), -1);
      window.change(read.at(start + 3 * codons), 1);
    }
  }
  return scores;
}

void BinnedVote::write(int windowWidth, double shift, ModelTables& tables) const {
  tables.fh.assign(kModelHypotheses, fnlHypo{});
  setCountPriors(tables);
  const int windowLength = votedLength(windowWidth);
  setConstantHypothesis(tables, 0, roundedToFile(fromMillionths(constant_) + shift));
  std::size_t i = 1;
  for (const auto& [stump, alpha] : alphas_) {
    setHypothesis(tables, i++, stump, fromMillionths(alpha), windowLength);
  }
  for (; i < kModelHypotheses; ++i) setConstantHypothesis(tables, i, 0.0);
}

}  // namespace velto
