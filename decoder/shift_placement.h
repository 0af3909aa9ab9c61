// Moves each frame change of a decoded path to the codon step at which the frame shifts.
#pragma once

#include <vector>

#include "model/model_tables.h"
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

// Picks the place of one frame change.
class TrialJudge {
 public:
  virtual ~TrialJudge() = default;

  // The earliest of the best trials above kWorstTrialScore; `otherwise` if there is none.
  virtual int bestTrial(const TrialWindow& window, int otherwise) = 0;
};

// Judges the trials of one read by their vote sums. The model's tables and the base codes must
// outlive the judge.
class ReadJudge : public TrialJudge {
 public:
  ReadJudge(const ModelView& model, const short* seq, int length)
      : model_(model), seq_(seq), length_(length) {}

 protected:
  ModelView model_;
  const short* seq_;
  int length_;  // bases
};

// The definition: counts and votes every trial window anew.
class PlainJudge : public ReadJudge {
 public:
  using ReadJudge::ReadJudge;
  int bestTrial(const TrialWindow& window, int otherwise) override;
};

// The same from trial to trial: only the leaving and the entering codon are counted.
class SlidingJudge : public ReadJudge {
 public:
  using ReadJudge::ReadJudge;
  int bestTrial(const TrialWindow& window, int otherwise) override;
};

// The vote sum of one trial, counted anew.
double scoreTrialPlain(const ModelView& model, const short* seq, int length,
                       const TrialWindow& window, int trial);

// Moves every inner frame change of `path` (one entry per codon step, 0 to 2 or -1 off the path),
// in place, to the step at which a window read across it votes highest. `endStep` is the step of
// the path's end, which no change moves beyond. The change that enters the path and the one that
// leaves it stay, and so do changes whose window is too short near the read's start.
void placeShifts(const ModelView& model, const short* seq, int length, int endStep,
                 std::vector<int>& path);

// The definition of placeShifts: counts and votes every trial window anew.
void placeShiftsPlain(const ModelView& model, const short* seq, int length, int endStep,
                      std::vector<int>& path);

// The same with the trials of a window judged by `judge`; `windowWidth` is that of its model.
void placeShifts(TrialJudge& judge, int windowWidth, int endStep, std::vector<int>& path);

}  // namespace velto
