// The ordered vote of windows that change codon by codon: recomputes only the hypotheses touched.
#pragma once

#include <array>
#include <vector>

#include "core/base_code.h"
#include "model/model_tables.h"
#include "model/window_sample.h"

namespace velto {

// What the codon at one base contributes to a window: its codon, its amino acid, and the amino
// acids 1 to 4 codons further on. acid is -1 when nothing is counted for it.
struct CodonContext {
  int acid;
  int codon;               // codonIndex; kNoCodon when acid is -1
  int partner[kPairGaps];  // [gap]; -1 where there is none
};

// The codons of one read at every base position, looked up once.
class ReadCodons {
 public:
  ReadCodons(const short* seq, int length);

  // Context of the codon at base p; nothing is counted for a codon outside the read.
  CodonContext at(int p) const;

  int acid(int p) const {
    return p < 0 || p >= length_ ? kNoAminoAcid : acids_[static_cast<size_t>(p)];
  }

 private:
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
  // hold more than `mostCodons` codons.
  SlidingVote(const ModelTables& tables, int windowLength, int mostCodons);
  SlidingVote(const SlidingVote&) = delete;
  SlidingVote& operator=(const SlidingVote&) = delete;

  void add(int lane, const CodonContext& codon) { change(lane, codon, 1); }
  void remove(int lane, const CodonContext& codon) { change(lane, codon, -1); }

  // Vote sums of all lanes.
  void sums(double (&sum)[kLanes]);

 private:
  // Counts of one window, one after another: [acid], [gap][member][acid], [codon] and
  // [gap][first][second]. The first kElements of them are the ones that hypotheses wait for: a
  // codon or pair count never changes without its acid or member count.
  static constexpr size_t kElements = kAminoAcids + kPairGaps * 2 * kAminoAcids;
  static constexpr size_t kCounts = kElements + kCodons + kPairGaps * kAminoAcids * kAminoAcids;
  using Counts = std::array<short, kCounts>;

  // A counted hypothesis with all that its vote needs.
  struct Hypothesis {
    int kind;
    size_t count;              // in Counts: of the codon, acid or pair
    size_t first;              // in Counts: codon kind: of its acid; pair kind: of the first member
    size_t second;             // in Counts: pair kind: of the second member
    const double* firstRate;   // pair kind: row of rate_ of the first acid
    const double* secondRate;  // pair kind: row of rate_ of the second acid
    double prior;              // pair kind: pseudo-count
    double length;             // pair kind: bases, with the pseudo-length
    double absent;             // codon kind: share when the acid is absent
    double threshold;
    double above;  // the vote of a value above the threshold
  };

  Hypothesis compile(const ModelTables& tables, size_t i, double windowLength) const;
  void change(int lane, const CodonContext& codon, short by);
  void touch(int lane, size_t element);
  void revote(size_t position, int lane);
  static bool isAbove(const Hypothesis& hypothesis, const Counts& counts);

  size_t rateColumns_;
  std::vector<double> rate_;                    // [acid x rateColumns_ + count]: f1 or f2
  std::vector<Hypothesis> counted_;             // in the order of fh
  std::vector<std::vector<size_t>> touchedBy_;  // [element]: positions in counted_
  std::vector<double> votes_;                   // [kLanes x position + lane]
  Counts counts_[kLanes] = {};
  std::vector<size_t> pending_[kLanes];  // elements whose hypotheses must vote again
  std::vector<char> isPending_[kLanes];  // [element]
};

}  // namespace velto
