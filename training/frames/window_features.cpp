#include "training/frames/window_features.h"

#include <cmath>

namespace velto {
namespace {

// With these the expected frequencies f1 and f2 are 1 up to 2e-4 and the observed one is
// 3 x count / (kPairPrior + window length), so that a threshold halfway between two counts stands
// for windows of every length used.
constexpr double kSinglePrior = 1e6;
constexpr double kPairPrior = 1e4;

double uniformUsage(int codon) {
  return ReadData::BasicCodonRate(codon / 16, codon / 4 % 4, codon % 4);
}

void setCodonHypothesis(ModelTables& tables, std::size_t i, int codon, int threshold) {
  fnlHypo& h = tables.fh[i];
  h.kind = kCodonKind;
  h.elem1 = codon / 16;
  h.elem2 = codon / 4 % 4;
  h.elem3 = codon % 4;
  tables.codonTrsld[i] = {1, kUsageThresholds[threshold]};
}

void setPairHypothesis(ModelTables& tables, std::size_t i, int pair, int threshold,
                       int windowLength) {
  fnlHypo& h = tables.fh[i];
  h.kind = kPairKind;
  h.gap = pair / (kAminoAcids * kAminoAcids);
  h.elem1 = pair / kAminoAcids % kAminoAcids;
  h.elem2 = pair % kAminoAcids;
  tables.pairAcidTrsld[i] = {1,
                             roundedToFile(3.0 * (threshold + 0.5) / (windowLength + kPairPrior))};
}

}  // namespace

int usageBin(int codon, int codonCount, int acidCount) {
  const double usage =
      acidCount == 0 ? uniformUsage(codon) : static_cast<double>(codonCount) / acidCount;
  int bin = 0;
  while (bin + 1 < kUsageBins && usage > kUsageThresholds[bin]) ++bin;
  return bin;
}

void setCountPriors(ModelTables& tables) {
  for (auto& prior : tables.snglAcidPriproTable) prior[0] = prior[1] = kSinglePrior;
  for (auto& ofGap : tables.pairAcidPriproTable) {
    for (auto& ofFirst : ofGap) {
      for (auto& prior : ofFirst) {
        prior[0] = 0.0;
        prior[1] = kPairPrior;
      }
    }
  }
}

void setHypothesis(ModelTables& tables, std::size_t i, Stump stump, double alpha,
                   int windowLength) {
  tables.fh[i] = fnlHypo{};
  tables.fh[i].alpha = alpha;
  if (stump.feature < kFirstCodonFeature) {
    tables.fh[i].kind = kSingleAcidKind;
    tables.fh[i].elem1 = stump.feature;
    tables.snglAcidTrsld[i] = {1, stump.threshold};
  } else if (stump.feature < kFirstPairFeature) {
    setCodonHypothesis(tables, i, stump.feature - kFirstCodonFeature, stump.threshold);
  } else {
    setPairHypothesis(tables, i, stump.feature - kFirstPairFeature, stump.threshold, windowLength);
  }
}

void setConstantHypothesis(ModelTables& tables, std::size_t i, double alpha) {
  tables.fh[i] = fnlHypo{};
  tables.fh[i].alpha = alpha;
  tables.fh[i].kind = kSingleAcidKind;
  tables.fh[i].elem1 = kStopSignal;
  tables.snglAcidTrsld[i] = {1, -1};
}

double roundedToFile(double value) { return std::round(value * 1e6) / 1e6; }

}  // namespace velto
