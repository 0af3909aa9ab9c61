// The stumps that a hypothesis may hold: is the bin of a window's feature above a threshold?
#pragma once

#include <cstddef>
#include <iterator>

#include "model/model_tables.h"

namespace velto {

// Features in order: counts of the amino acids, usages of the codons (share of a codon among those
// of its amino acid), counts of the pairs.
constexpr int kCodonCodes = 64;
constexpr int kPairCodes = kPairGaps * kAminoAcids * kAminoAcids;
constexpr int kFirstCodonFeature = kAminoAcids;
constexpr int kFirstPairFeature = kFirstCodonFeature + kCodonCodes;
constexpr int kWindowFeatures = kFirstPairFeature + kPairCodes;

// Thresholds of a codon's usage, each between neighbouring fractions of small denominators, so that
// no usage that occurs often lies on a threshold.
constexpr double kUsageThresholds[] = {
    0.01, 0.062, 0.095, 0.118, 0.134, 0.155, 0.185, 0.21, 0.235, 0.265, 0.29, 0.32,  0.345, 0.365,
    0.41, 0.44,  0.47,  0.515, 0.56,  0.585, 0.615, 0.65, 0.68,  0.735, 0.77, 0.815, 0.87,  0.93};
constexpr int kUsageBins = static_cast<int>(std::size(kUsageThresholds)) + 1;

// "The bin of `feature` is above `threshold`". The bin of an amino acid or a pair is its count,
// that of a codon the number of kUsageThresholds below its usage.
struct Stump {
  int feature;    // 0 to kWindowFeatures - 1
  int threshold;  // 0 or more
  bool operator==(const Stump& other) const {
    return feature == other.feature && threshold == other.threshold;
  }
};

constexpr int pairFeatureIndex(int gap, int first, int second) {
  return kFirstPairFeature + (gap * kAminoAcids + first) * kAminoAcids + second;
}

// Bin of a codon's usage, from the counts of the codon (16 x first + 4 x second + third base
// code) and of its amino acid.
int usageBin(int codon, int codonCount, int acidCount);

// Gives all pairs the prior that makes a pair's feature its plain count per window, whatever the
// amino acids it is made of and nearly whatever the window's length.
void setCountPriors(ModelTables& tables);

// Writes hypothesis i: `alpha` when the stump says yes, -alpha when it says no. Needs the priors of
// setCountPriors. `windowLength` is end - start of a scanned window, in bases.
void setHypothesis(ModelTables& tables, std::size_t i, Stump stump, double alpha, int windowLength);

// Writes hypothesis i as a constant: `alpha` for every window.
void setConstantHypothesis(ModelTables& tables, std::size_t i, double alpha);

// `value` rounded to the six decimals of a parameter file.
double roundedToFile(double value);

}  // namespace velto
