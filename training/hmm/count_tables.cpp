// 1. Counting  2. Smoothing  3. Tables
#include "training/hmm/count_tables.h"

#include <algorithm>
#include <cmath>

#include "core/base_code.h"
#include "hmm/composition.h"
#include "hmm/emissions.h"

namespace velto {
namespace {

constexpr int kOrders = 5;  // contexts of 0 to 4 bases

std::size_t at(int kind, int bin, int fiveMer) {
  return (static_cast<std::size_t>(kind) * kGcBins + static_cast<std::size_t>(bin)) * kFiveMers +
         static_cast<std::size_t>(fiveMer);
}

int gcBin(const Composition& composition) {
  const double share = static_cast<double>(composition.strong()) / std::max(1, composition.total);
  return std::clamp(static_cast<int>(std::floor((share - 0.23) / 0.02)), 0, kGcBins - 1);
}

double centreOfBin(int bin) { return 0.24 + 0.02 * bin; }

}  // namespace

// ---- 1. Counting

int emissionKindAt(const Transcript& transcript, int place) {
  if (!transcript.isCoding()) return kNoncodingRead;
  if (place < transcript.cdsStart) return kUtr5;
  if (place > transcript.cdsStop) return kUtr3;
  const int from = place - transcript.cdsStart;
  return from < 3 || place > transcript.cdsStop - 3 ? -1 : from % 3;
}

TranscriptCounts::TranscriptCounts()
    : fiveMers_(static_cast<std::size_t>(kEmissionKinds * kGcBins * kFiveMers), 0.0) {}

void TranscriptCounts::add(const Transcript& transcript) {
  std::vector<Composition> blocks;
  compose(transcript.bases, blocks);
  int fiveMer = 0, known = 0;
  for (int i = 0; i < transcript.length(); ++i) {
    const short code = transcript.bases[static_cast<std::size_t>(i)];
    known = isKnownBase(code) ? known + 1 : 0;
    fiveMer = isKnownBase(code) ? ((fiveMer << 2) | code) & (kFiveMers - 1) : 0;
    const int kind = emissionKindAt(transcript, i);
    if (known < 5 || kind < 0) continue;
    const int bin = gcBin(blocks[static_cast<std::size_t>(i / kCompositionBlock)]);
    fiveMers_[at(kind, bin, fiveMer)] += 1.0;
  }
  if (transcript.isCoding()) addEnds(transcript);
}

void TranscriptCounts::addEnds(const Transcript& transcript) {
  const auto base = [&](int i) {
    return i < 0 || i >= transcript.length() ? kUnknownBase
                                             : transcript.bases[static_cast<std::size_t>(i)];
  };
  for (int place = 0; place < kKozakPlaces; ++place) {
    const short code = base(transcript.cdsStart + kozakOffset(place));
    if (!isKnownBase(code)) continue;
    kozak_[static_cast<std::size_t>(place)][static_cast<std::size_t>(code)] += 1.0;
  }
  const short second = base(transcript.cdsStop - 1), third = base(transcript.cdsStop);
  stops_[second == 2 ? 2 : third == 2 ? 1 : 0] += 1.0;
}

TranscriptCounts& TranscriptCounts::operator+=(const TranscriptCounts& other) {
  for (std::size_t i = 0; i < fiveMers_.size(); ++i) fiveMers_[i] += other.fiveMers_[i];
  for (std::size_t place = 0; place < kozak_.size(); ++place) {
    for (std::size_t b = 0; b < 4; ++b) kozak_[place][b] += other.kozak_[place][b];
  }
  for (std::size_t stop = 0; stop < stops_.size(); ++stop) stops_[stop] += other.stops_[stop];
  return *this;
}

// ---- 2. Smoothing

namespace {

constexpr double kPooledPrior = 300.0;  // bases by which a shorter context outweighs a longer one
constexpr double kClassPrior = 2000.0;  // bases by which all classes outweigh one

// Probabilities of a base behind contexts of 0 to 4 bases; [order][k-mer of order + 1 bases].
using Chain = std::array<std::vector<double>, kOrders>;

// Counts of the (order + 1)-mers within the 5-mers.
std::vector<double> shortened(const std::vector<double>& fiveMers, int order) {
  const std::size_t size = std::size_t{4} << (2 * order);
  std::vector<double> counts(size, 0.0);
  for (std::size_t k = 0; k < fiveMers.size(); ++k) counts[k & (size - 1)] += fiveMers[k];
  return counts;
}

double sumOfFour(const std::vector<double>& counts, std::size_t context) {
  const double* c = counts.data() + 4 * context;
  return c[0] + c[1] + c[2] + c[3];
}

// Probability under the context without its first base; 1/4 without any.
double shorterContext(const Chain& chain, int order, std::size_t kmer) {
  if (order == 0) return 0.25;
  const std::vector<double>& shorter = chain[static_cast<std::size_t>(order - 1)];
  return shorter[kmer & (shorter.size() - 1)];
}

// P_j(b | context) = (n(context b) + K1 P_j-1(b | shorter)) / (n(context) + K1)
Chain pooledChain(const std::vector<double>& fiveMers) {
  Chain chain;
  for (int order = 0; order < kOrders; ++order) {
    const std::vector<double> counts = shortened(fiveMers, order);
    auto& p = chain[static_cast<std::size_t>(order)];
    p.resize(counts.size());
    for (std::size_t k = 0; k < counts.size(); ++k) {
      p[k] = (counts[k] + kPooledPrior * shorterContext(chain, order, k)) /
             (sumOfFour(counts, k / 4) + kPooledPrior);
    }
  }
  return chain;
}

// P_gj(b | context) = (n_g(context b) + K2 q_b) / (n_g(context) + K2), with q_b proportional to
// P_j(b | context) P_g,j-1(b | shorter) / P_j-1(b | shorter).
std::vector<double> classProbabilities(const Chain& pooled, const std::vector<double>& fiveMers) {
  Chain chain;
  for (int order = 0; order < kOrders; ++order) {
    const std::vector<double> counts = shortened(fiveMers, order);
    const auto& all = pooled[static_cast<std::size_t>(order)];
    auto& p = chain[static_cast<std::size_t>(order)];
    p.resize(counts.size());
    for (std::size_t context = 0; context < counts.size() / 4; ++context) {
      std::array<double, 4> q;
      double sum = 0.0;
      for (std::size_t b = 0; b < 4; ++b) {
        const std::size_t k = 4 * context + b;
        q[b] = all[k] * shorterContext(chain, order, k) / shorterContext(pooled, order, k);
        sum += q[b];
      }
      const double total = sumOfFour(counts, context) + kClassPrior;
      for (std::size_t b = 0; b < 4; ++b) {
        const std::size_t k = 4 * context + b;
        p[k] = (counts[k] + kClassPrior * q[b] / sum) / total;
      }
    }
  }
  return chain[kOrders - 1];
}

}  // namespace

// ---- 3. Tables

std::vector<double> TranscriptCounts::pooled(int kind) const {
  std::vector<double> sum(kFiveMers, 0.0);
  for (int bin = 0; bin < kGcBins; ++bin) {
    for (int k = 0; k < kFiveMers; ++k)
      sum[static_cast<std::size_t>(k)] += fiveMers_[at(kind, bin, k)];
  }
  return sum;
}

// Bins count by their distance from the class's centre.
std::vector<double> TranscriptCounts::ofGcClass(int kind, int gcClass) const {
  constexpr double kWidth = 0.03, kLeastWeight = 1e-4;
  std::vector<double> sum(kFiveMers, 0.0);
  for (int bin = 0; bin < kGcBins; ++bin) {
    const double away = (centreOfBin(bin) - kGcCentres[gcClass]) / kWidth;
    const double weight = std::exp(-0.5 * away * away);
    if (weight < kLeastWeight) continue;
    for (int k = 0; k < kFiveMers; ++k) {
      sum[static_cast<std::size_t>(k)] += weight * fiveMers_[at(kind, bin, k)];
    }
  }
  return sum;
}

void TranscriptCounts::fillEmissions(HmmModel& model) const {
  model.emissions.assign(static_cast<std::size_t>(kHmmGcClasses * kFiveMers), EmissionRow{});
  for (int kind = 0; kind < kEmissionKinds; ++kind) {
    const Chain chain = pooledChain(pooled(kind));
    for (int g = 0; g < kHmmGcClasses; ++g) {
      const std::vector<double> p = classProbabilities(chain, ofGcClass(kind, g));
      for (std::size_t k = 0; k < p.size(); ++k) {
        model.emissions[static_cast<std::size_t>(g * kFiveMers) + k]
                       [static_cast<std::size_t>(kind)] =
            roundedToFile(static_cast<float>(std::max(p[k], 1e-6)));
      }
    }
  }
}

// Likelihood ratio of the bases around a start codon to those of the 5' UTR before it, and of the
// phase behind it.
void TranscriptCounts::fillKozak(HmmModel& model) const {
  for (int place = 0; place < kKozakPlaces; ++place) {
    const int offset = kozakOffset(place);
    const std::vector<double> background = shortened(pooled(offset < 0 ? kUtr5 : offset % 3), 0);
    const double backgroundSum = sumOfFour(background, 0);
    const auto& counts = kozak_[static_cast<std::size_t>(place)];
    const double sum = counts[0] + counts[1] + counts[2] + counts[3];
    for (std::size_t b = 0; b < 4; ++b) {
      const double share = (counts[b] + 5.0) / (sum + 20.0);
      const double expected = (background[b] + 5.0) / (backgroundSum + 20.0);
      model.kozak[static_cast<std::size_t>(place)][b] =
          roundedToFile(static_cast<float>(std::clamp(share / expected, 0.01, 4.0)));
    }
  }
}

void TranscriptCounts::fillTables(HmmModel& model) const {
  fillEmissions(model);
  fillKozak(model);
  const double sum = stops_[0] + stops_[1] + stops_[2];
  for (std::size_t stop = 0; stop < kStopCodons; ++stop) {
    model.stopShare[stop] = roundedToFile(static_cast<float>((stops_[stop] + 1.0) / (sum + 3.0)));
  }
}

}  // namespace velto
