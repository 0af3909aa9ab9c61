#include "hmm/read_decision.h"

#include <algorithm>

#include "hmm/float_math.h"

namespace velto {

ReadEvidence evidenceOf(const StateRow& lastRow, double codingPosteriors) {
  const double logOdds = logOddsOfCoding(lastRow);
  return {logOdds, codingPosteriors / logisticOf(logOdds)};
}

ReadEvidence evidenceOf(const ForwardRows& forward, std::span<const StatePosterior> posteriors) {
  double sum = 0.0;
  for (const StatePosterior& base : posteriors) {
    const StateRow& p = base.state;
    const float coding = (p[kC0] + p[kC1]) + p[kC2];
    const float inserted = (p[kI0] + p[kI1]) + p[kI2];
    const float start = (p[kS0] + p[kS1]) + p[kS2];
    const float stop = (p[kE0] + p[kE1]) + p[kE2];
    sum += (coding + inserted) + (start + stop);
  }
  return evidenceOf(forward.state.back(), sum);
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

double strandProbability(const ReadDecision& decision, double logOdds, double otherLogOdds) {
  return logisticOf(decision.logOdds * (logOdds - otherLogOdds));
}

double learnCodingShare(std::span<const double> probabilities, double calibrationShare) {
  constexpr double kPriorReads = 20.0;
  constexpr int kRounds = 50;
  if (probabilities.size() < kLeastReadsForShare) return calibrationShare;
  double share = calibrationShare;
  for (int round = 0; round < kRounds; ++round) {
    double sum = kPriorReads * calibrationShare;
    for (const double p : probabilities) sum += withShare(p, calibrationShare, share);
    share = sum / (static_cast<double>(probabilities.size()) + kPriorReads);
    share = std::clamp(share, 0.03, 0.97);
  }
  return share;
}

}  // namespace velto
