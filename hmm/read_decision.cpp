#include "hmm/read_decision.h"

#include <algorithm>

#include "hmm/float_math.h"

namespace velto {
namespace {

// A share is learnt as if so many reads more had told that of the model. Where a coding read begins
// is clearer than whether a read codes.
constexpr double kPriorReads = 20.0, kPriorCodingReads = 5.0;
constexpr int kShareRounds = 50;

}  // namespace

ReadEvidence evidenceOf(const StateRow& lastRow, double logLikelihood,
                        const CodingPosteriors& posteriors) {
  const double logOdds = logOddsOfCoding(lastRow), coding = logisticOf(logOdds);
  return {logOdds, posteriors.ofRegion / coding,
          std::clamp(static_cast<double>(posteriors.truncated) / coding, 0.0, 1.0), logLikelihood};
}

ReadEvidence evidenceOf(const ForwardRows& forward, std::span<const StatePosterior> posteriors) {
  const StateRow& first = posteriors.front().state;
  CodingPosteriors sums;
  sums.truncated = truncatedPosterior(first[kC0] + first[kS0], first[kC1], first[kC2], first[kS0]);
  for (const StatePosterior& base : posteriors) {
    const StateRow& p = base.state;
    const float coding = (p[kC0] + p[kC1]) + p[kC2];
    const float inserted = (p[kI0] + p[kI1]) + p[kI2];
    const float start = (p[kS0] + p[kS1]) + p[kS2];
    const float stop = (p[kE0] + p[kE1]) + p[kE2];
    sums.ofRegion += (coding + inserted) + (start + stop);
  }
  return evidenceOf(forward.state.back(), logLikelihood(forward), sums);
}

double cutLogOdds(const ReadEvidence& evidence) {
  return std::clamp(evidence.logOdds, -15.0, 15.0);
}

double codingHundreds(const ReadEvidence& evidence) {
  return std::min(6.0, evidence.codingBases / 100.0);
}

double codingProbability(const ReadDecision& decision, const ReadEvidence& evidence) {
  return logisticOf(decision.constant + decision.logOdds * cutLogOdds(evidence) +
                    decision.codingBases * codingHundreds(evidence));
}

double withShare(double probability, double calibrationShare, double share) {
  const double coding = probability * (share / calibrationShare);
  const double other = (1.0 - probability) * ((1.0 - share) / (1.0 - calibrationShare));
  return coding / (coding + other);
}

double strandScore(const StrandDecision& decision, double logOdds, double logLikelihood) {
  constexpr double kLeastLikelihood = -1e12;  // of a read without any path
  return decision.logOdds * logOdds +
         decision.logLikelihood * std::max(kLeastLikelihood, logLikelihood);
}

double strandTrust(const StrandDecision& decision, const ReadEvidence& called) {
  return decision.constant + decision.calledLogOdds * cutLogOdds(called) +
         decision.calledCodingBases * codingHundreds(called);
}

double strandProbability(double trust, double lead) {
  return std::max(0.5, logisticOf(trust + lead));
}

double learnCodingShare(std::span<const double> probabilities, double calibrationShare) {
  if (probabilities.size() < kLeastReadsForShare) return calibrationShare;
  double share = calibrationShare;
  for (int round = 0; round < kShareRounds; ++round) {
    double sum = kPriorReads * calibrationShare;
    for (const double p : probabilities) sum += withShare(p, calibrationShare, share);
    share = sum / (static_cast<double>(probabilities.size()) + kPriorReads);
    share = std::clamp(share, 0.03, 0.97);
  }
  return share;
}

double learnTruncatedShare(std::span<const ReadEvidence> evidence,
                           std::span<const double> probabilities, double modelShare) {
  double coding = kPriorCodingReads;
  for (const double p : probabilities) coding += p;
  // The share that the weights stand for: they prefer the others.
  const double weighed = modelShare / (modelShare + (1.0 - modelShare) * kUtr5Preference);
  double share = modelShare;
  for (int round = 0; round < kShareRounds; ++round) {
    double truncated = kPriorCodingReads * modelShare;
    for (std::size_t r = 0; r < evidence.size(); ++r) {
      truncated += probabilities[r] * withShare(evidence[r].truncated, weighed, share);
    }
    share = truncated / coding;
  }
  return share;
}

}  // namespace velto
