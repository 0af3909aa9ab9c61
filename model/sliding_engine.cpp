#include "model/sliding_engine.h"

#include "model/sliding_vote.h"
#include "model/window_width.h"

namespace velto {

void SlidingEngine::score(WindowScores& scores) {
  int windows[3];
  for (int f = 0; f < 3; ++f) {
    windows[f] = scoredWindows(length_, model_.windowWidth, f);
    scores.frame[f].clear();
    scores.frame[f].reserve(static_cast<size_t>(windows[f]));
  }
  if (windows[0] == 0) return;
  const int codons = windowCodons(model_.windowWidth);
  const ReadCodons read(seq_, length_);
  SlidingVote vote(model_.tables, votedLength(model_.windowWidth), codons);
  for (int f = 0; f < 3; ++f) {
    for (int j = 0; j < codons; ++j) vote.add(f, read.at(f + 3 * j));
  }
  for (int k = 0; k < windows[0]; ++k) {
    double sums[SlidingVote::kLanes];
    vote.sums(sums);
    for (int f = 0; f < 3; ++f) {
      if (k < windows[f]) scores.frame[f].push_back(sums[f]);
      vote.remove(f, read.at(f + 3 * k));
      vote.add(f, read.at(f + 3 * (k + codons)));
    }
  }
}

int SlidingEngine::bestTrial(const TrialWindow& window, int otherwise) {
  const TrialCodons codons(seq_, length_, window);
  SlidingVote vote(model_.tables, window.windowLength(), window.codons);
  for (int j = 0; j < window.codons; ++j) vote.add(0, codons.at(j, true));
  BestTrial best(otherwise);
  for (int t = 0;; ++t) {
    double sums[SlidingVote::kLanes];
    vote.sums(sums);
    best.offer(t, sums[0]);
    if (t == window.codons) return best.place();
    vote.remove(0, codons.at(t, true));
    vote.add(0, codons.at(t, false));
  }
}

}  // namespace velto
