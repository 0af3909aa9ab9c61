// The tables of one trained model, and the process-wide ones of the one-read program.
#pragma once

#include <vector>

#include "model/read_data.h"

namespace velto {

// Hypotheses, and entries of each threshold table, in a parameter file.
constexpr int kModelHypotheses = 500;
// Pair classes: the second amino acid of a pair lies gap + 1 codons after the first.
constexpr int kPairGaps = 4;

// Feature families of a hypothesis; any other value is never counted by the vote.
constexpr int kCodonKind = 0;       // share of a codon among the codons of its amino acid
constexpr int kSingleAcidKind = 2;  // count of an amino acid
constexpr int kPairKind = 3;        // observed over expected frequency of an amino-acid pair

// One weak hypothesis of the window classifier. The name and those of its fields are fixed.
struct fnlHypo {
  int kind = 0;        // feature family, see above
  double alpha = 0.0;  // vote weight
  int elem1 = 0;       // codon: first base code; single acid: the acid; pair: the first acid
  int elem2 = 0;       // codon: second base code; pair: the second acid
  int elem3 = 0;       // codon: third base code
  int gap = 0;         // pair: pair class, 0 to 3
};

// Threshold of a real-valued feature. The spelling `trsld` is fixed.
struct RealThreshold {
  int polarity = 0;    // not 0: a value above votes for coding; 0: a value above votes against
  double trsld = 0.0;  // codon: a share, 0 to 1; pair: a ratio
};

// Threshold of an amino-acid count.
struct CountThreshold {
  int polarity = 0;  // as in RealThreshold
  int trsld = 0;     // codons
};

// All that one parameter file and its matrix file hold. The field names are fixed.
// Entry i of a threshold table belongs to fh[i]; only the table of fh[i].kind is consulted.
struct ModelTables {
  std::vector<fnlHypo> fh;                              // in file order, the order of the vote
  RealThreshold codonTrsld[kModelHypotheses] = {};      // [hypothesis], kind 0
  RealThreshold pairAcidTrsld[kModelHypotheses] = {};   // [hypothesis], kind 3
  CountThreshold snglAcidTrsld[kModelHypotheses] = {};  // [hypothesis], kind 2
  double snglAcidPriproTable[kAminoAcids][2] = {};      // [acid][0 numerator, 1 denominator]
  double pairAcidPriproTable[kPairGaps][kAminoAcids][kAminoAcids][2] = {};  // [gap][first][second]
  double malkovChain[16] = {};  // additive path scores, [4 x current state + previous state]
};

// A read-only view of one model: all that the science needs to know of it. The tables must outlive
// the view and stay constant; then any number of threads may use it.
struct ModelView {
  const ModelTables& tables;
  int windowWidth;  // bases, 96 or 196
};

// The process-wide model of the one-read program: zero at start, filled once by the Shortcut
// loaders before anything reads it. The names are fixed.
extern ModelTables processModel;
extern std::vector<fnlHypo>& fh;
extern RealThreshold (&codonTrsld)[kModelHypotheses];
extern RealThreshold (&pairAcidTrsld)[kModelHypotheses];
extern CountThreshold (&snglAcidTrsld)[kModelHypotheses];
extern double (&snglAcidPriproTable)[kAminoAcids][2];
extern double (&pairAcidPriproTable)[kPairGaps][kAminoAcids][kAminoAcids][2];
extern double (&malkovChain)[16];
extern double average[4][kAminoAcids][kAminoAcids];  // read by no code

// Run globals of the one-read program, reset by main and set by WebPredict::GetResult.
extern int GCID;          // GC class, 0 to 3
extern int LENGTHID;      // length class, 0 to 2
extern int WINDOW_WIDTH;  // bases, 96 or 196
extern int READ_ROUND;    // hypotheses to load

// View of the process-wide model at the present WINDOW_WIDTH.
ModelView processModelView();

}  // namespace velto
