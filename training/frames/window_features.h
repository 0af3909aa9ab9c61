// The questions a hypothesis may ask about a window: is a feature's level above a cut?
#pragma once

#include <cstddef>

#include "model/model_tables.h"

namespace velto {

// Features in order: counts of the amino acids, shares of the codons, counts of the pairs.
constexpr int kCodonCodes = 64;
constexpr int kPairCodes = kPairGaps * kAminoAcids * kAminoAcids;
constexpr int kFirstCodonFeature = kAminoAcids;
constexpr int kFirstPairFeature = kFirstCodonFeature + kCodonCodes;
constexpr int kWindowFeatures = kFirstPairFeature + kPairCodes;

// Cuts of a codon's share, each between neighbouring fractions of small denominators, so that no
// share that occurs often lies on a cut.
constexpr double kShareCuts[] = {
    0.01, 0.062, 0.095, 0.118, 0.134, 0.155, 0.185, 0.21, 0.235, 0.265, 0.29, 0.32,  0.345, 0.365,
    0.41, 0.44,  0.47,  0.515, 0.56,  0.585, 0.615, 0.65, 0.68,  0.735, 0.77, 0.815, 0.87,  0.93};
constexpr int kShareLevels = static_cast<int>(sizeof(kShareCuts) / sizeof(kShareCuts[0])) + 1;

// "The level of `feature` is above `cut`". The level of an amino acid or a pair is its count, that
// of a codon the number of kShareCuts below its share.
struct WindowQuestion {
  int feature;  // 0 to kWindowFeatures - 1
  int cut;      // 0 or more
  bool operator==(const WindowQuestion& other) const {
    return feature == other.feature && cut == other.cut;
  }
};

constexpr int pairFeatureIndex(int gap, int first, int second) {
  return kFirstPairFeature + (gap * kAminoAcids + first) * kAminoAcids + second;
}

// Level of a codon's share, from the counts of the codon (16 x first + 4 x second + third base
// code) and of its amino acid.
int shareLevel(int codon, int codonCount, int acidCount);

// Gives all pairs the prior that makes a pair's feature its plain count per window, whatever the
// amino acids it is made of and nearly whatever the window's length.
void setCountPriors(ModelTables& tables);

// Writes hypothesis i: `alpha` when the answer is yes, -alpha when it is no. Needs the priors of
// setCountPriors. `windowLength` is end - start of a scanned window, in bases.
void setHypothesis(ModelTables& tables, std::size_t i, WindowQuestion question, double alpha,
                   int windowLength);

// Writes hypothesis i as a constant: `alpha` for every window.
void setConstantHypothesis(ModelTables& tables, std::size_t i, double alpha);

// `value` rounded to the six decimals of a parameter file.
double roundedToFile(double value);

}  // namespace velto
