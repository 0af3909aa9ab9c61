#include "model/vote_engine.h"

#include "model/window_vote.h"

namespace velto {

int scoredWindows(int length, int windowWidth, int frame) {
  const int room = length - windowWidth - frame;
  return room <= 0 ? 0 : (room + 2) / 3;
}

void classify(const WindowScores& scores, WindowClasses& classes) {
  for (int f = 0; f < 3; ++f) {
    classes.frame[f].clear();
    for (const double score : scores.frame[f]) {
      classes.frame[f].push_back(static_cast<signed char>(windowClass(score)));
    }
  }
}

}  // namespace velto
