// The windows by which the place of a frame change is judged.
#pragma once

#include "model/sliding_vote.h"

namespace velto {

// The window read across one frame change: in trial t the first t codons are read in the old frame,
// the others `shift` bases further on.
struct TrialWindow {
  int start;   // first base
  int end;     // no codon may reach beyond this base
  int shift;   // bases; 1 is an inserted base, 2 a lost one
  int codons;  // codons of the window

  int trials() const { return codons + 1; }
  int windowLength() const { return end - start; }  // bases, as the vote uses it

  // First base of codon j when read in the old or in the new frame; -1 if it does not fit.
  int codonAt(int j, bool shifted, int length) const {
    const int p = start + 3 * j + (shifted ? shift : 0);
    return p >= 0 && p + 2 < length && p + 2 <= end ? p : -1;
  }
};

// The codons of one trial window in both frames. `window` must outlive it.
class TrialCodons {
 public:
  TrialCodons(const short* seq, int length, const TrialWindow& window);

  // Codon j read in the old or in the new frame; nothing is counted where it does not fit.
  CodonContext at(int j, bool shifted) const {
    const int p = window_.codonAt(j, shifted, length_);
    return bases_.at(p < 0 ? -1 : p - first_);
  }

 private:
  const TrialWindow& window_;
  int length_;        // bases of the read
  int end_;           // behind the last base that a codon of the window or its pairs may lie on
  int first_;         // first base that a codon may lie on
  ReadCodons bases_;  // from there on
};

// Scores below this one are never a best trial.
constexpr double kWorstTrialScore = -1000.0;

// The earliest of the best scores above kWorstTrialScore among the trials' scores, which come one
// by one.
class BestTrial {
 public:
  explicit BestTrial(int otherwise) : place_(otherwise) {}

  void offer(int trial, double score) {
    if (!(score > best_)) return;
    best_ = score;
    place_ = trial;
  }

  int place() const { return place_; }  // `otherwise` if no score was above

 private:
  double best_ = kWorstTrialScore;
  int place_;
};

}  // namespace velto
