// What all ways of voting over the windows of a read have in common.
#pragma once

#include <vector>

#include "model/trial_window.h"

namespace velto {

// Vote sums [frame][window]: window k of frame f starts at base 3k + f; only windows that start
// more than the window width before the read's end are scored.
struct WindowScores {
  std::vector<double> frame[3];
};

// Number of windows of a frame that are scored.
int scoredWindows(int length, int windowWidth, int frame);

// Classes of the scored windows, [frame][window] as in WindowScores: kCodingWindow or
// kNonCodingWindow.
struct WindowClasses {
  std::vector<signed char> frame[3];
};

// Overwrites `classes` with those of the scores.
void classify(const WindowScores& scores, WindowClasses& classes);

// Picks the place of one frame change.
class TrialJudge {
 public:
  virtual ~TrialJudge() = default;

  // The earliest of the best trials above kWorstTrialScore; `otherwise` if there is none.
  virtual int bestTrial(const TrialWindow& window, int otherwise) = 0;
};

// The votes of one read under one model. All engines agree with the plain one, which is the
// definition: in classes and places always, in scores as each says. For one thread at a time; what
// an engine is made of must outlive it.
class VoteEngine : public TrialJudge {
 public:
  // Overwrites `scores` with the vote sums of the scored windows.
  virtual void score(WindowScores& scores) = 0;

  // Overwrites `classes` with the classes of the scored windows.
  virtual void classify(WindowClasses& classes) {
    WindowScores scores;
    score(scores);
    velto::classify(scores, classes);
  }

  WindowScores scores() {
    WindowScores scores;
    score(scores);
    return scores;
  }
};

}  // namespace velto
