// Whether a read codes: from its log odds to a probability.
#pragma once

#include <span>

#include "hmm/forward_backward.h"
#include "hmm/hmm_model.h"

namespace velto {

// A read whose probability is at least this is called coding by default.
constexpr double kMinProbability = 0.5;

// What the decision looks at.
struct ReadEvidence {
  double logOdds = 0.0;      // natural logarithm of the odds that the read has coding bases
  double codingBases = 0.0;  // expected number of them, given that there are any
  double truncated = 0.0;  // probability that the read begins inside its coding region, given that
                           // it has one
  double logLikelihood = 0.0;  // natural logarithm of the sum of all paths
};

// Posteriors that evidence is made of.
struct CodingPosteriors {
  double ofRegion = 0.0;   // of coding states, sum over the bases
  float truncated = 0.0f;  // of a read that begins inside its coding region
};

// The latter from the first base: posteriors of the three phases, the start codon's first base
// being of phase 0, and of a start codon. In this order, which lanes repeat.
inline float truncatedPosterior(float phase0, float phase1, float phase2, float start) {
  return ((phase0 + phase1) + phase2) - start;
}

ReadEvidence evidenceOf(const StateRow& lastRow, double logLikelihood,
                        const CodingPosteriors& posteriors);

ReadEvidence evidenceOf(const ForwardRows& forward, std::span<const StatePosterior> posteriors);

// The inputs of the decision's logistic function beside the constant.
double cutLogOdds(const ReadEvidence& evidence);
double codingHundreds(const ReadEvidence& evidence);

// Probability that the read codes, in a file of the calibration's share of coding reads.
double codingProbability(const ReadDecision& decision, const ReadEvidence& evidence);

// The same in a file with another share.
double withShare(double probability, double calibrationShare, double share);

// Of the strands of a read, the one with the higher score is called.
double strandScore(const StrandDecision& decision, double logOdds, double logLikelihood);

// What the evidence of the called strand adds to the difference of the scores.
double strandTrust(const StrandDecision& decision, const ReadEvidence& called);

// Probability that a coding read codes on the called strand, not on the other one, whose score is
// lower by `lead`.
double strandProbability(double trust, double lead);

// Fewer reads tell nothing about the share of coding reads.
constexpr std::size_t kLeastReadsForShare = 50;

// Share of coding reads of a file from the probabilities of a sample of its reads under the
// calibration's share, by expectation maximisation; within 0.03 and 0.97. The calibration's share
// counts as twenty reads more, and for fewer than kLeastReadsForShare reads is taken as it is.
double learnCodingShare(std::span<const double> probabilities, double calibrationShare);

// Share of the coding reads of a file that begin inside their coding region, likewise, from the
// evidence of a sample of its reads under the model's share and their probabilities of coding. The
// model's share counts as five coding reads more.
double learnTruncatedShare(std::span<const ReadEvidence> evidence,
                           std::span<const double> probabilities, double modelShare);

}  // namespace velto
