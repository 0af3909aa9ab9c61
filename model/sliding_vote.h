// The ordered vote of windows that change codon by codon: recomputes only the hypotheses touched.
#pragma once

#include <vector>

#include "model/model_tables.h"
#include "model/window_sample.h"

namespace velto {

// What the codon at one base contributes to a window: its codon, its amino acid, and the amino
// acids 1 to 4 codons further on. acid is -1 when nothing is counted for it.
struct CodonContext {
  int acid;
  int codon;               // 16 x first + 4 x second + third base code; -1 when acid is -1
  int partner[kPairGaps];  // [gap]; -1 where there is none
};

// The codons of one read at every base position, looked up once.
class ReadCodons {
 public:
  ReadCodons(const short* seq, int length);

  // Context of the codon at base p; nothing is counted for a codon outside the read.
  CodonContext at(int p) const;

  int acid(int p) const { return p < 0 || p >= length_ ? kNoAminoAcid : acids_[index(p)]; }

 private:
  static size_t index(int p) { return static_cast<size_t>(p); }

  int length_;                       // bases
  std::vector<signed char> acids_;   // [base], and some -1 behind the read's end
  std::vector<signed char> codons_;  // [base]
};

// Votes of kLanes windows side by side; each lane is one window whose codons come and go. The sums
// equal those of voteSum to the last bit: every lane adds all its votes in the order of fh.
// Not for sharing between threads.
class SlidingVote {
 public:
  static constexpr int kLanes = 4;  // three reading frames, and one to fill a vector register

  // All lanes start empty. `windowLength` is end - start of the windows in bases; no lane may ever
  // hold more than `mostCodons` codons. The tables must outlive the object.
  SlidingVote(const ModelTables& tables, int windowLength, int mostCodons);

  void add(int lane, const CodonContext& codon) { change(lane, codon, 1); }
  void remove(int lane, const CodonContext& codon) { change(lane, codon, -1); }

  // Vote sums of all lanes.
  void sums(double (&sum)[kLanes]);

 private:
  struct Counts {  // of one window; fields as in smplTestData
    short codon[64] = {};
    short acid[kAminoAcids] = {};
    short pair[kPairGaps][kAminoAcids][kAminoAcids] = {};
    short member[kPairGaps][2][kAminoAcids] = {};
  };
  struct Hypothesis {  // a counted one
    size_t index;      // in fh
    int acid;          // codon kind: the codon's amino acid
  };

  void listTouchedBy();
  void change(int lane, const CodonContext& codon, short by);
  void touch(int lane, size_t element);
  void revote(size_t position, int lane);
  bool isAbove(const Hypothesis& hypothesis, const Counts& counts) const;
  bool isPolar(const Hypothesis& hypothesis) const;

  const ModelTables& tables_;
  double windowLength_;
  std::vector<Hypothesis> counted_;             // in the order of fh
  std::vector<std::vector<size_t>> touchedBy_;  // [element]: positions in counted_
  std::vector<double> rate_;                    // [acid x (mostCodons + 1) + count]: f1 or f2
  size_t rateColumns_;
  Counts counts_[kLanes];
  std::vector<double> votes_;            // [kLanes x position + lane]
  std::vector<size_t> pending_[kLanes];  // elements whose hypotheses must vote again
  std::vector<char> isPending_[kLanes];  // [element]
};

}  // namespace velto
