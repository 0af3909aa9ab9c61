#include "model/plain_engine.h"

#include "model/window_sample.h"
#include "model/window_vote.h"
#include "model/window_width.h"

namespace velto {

double PlainEngine::scoreWindow(int start) const {
  smplTestData sample;
  sample.start = start;
  sample.end = start + votedLength(model_.windowWidth);
  const int codons = windowCodons(model_.windowWidth);
  for (int j = 0; j < codons; ++j) countCodon(sample, seq_, length_, start + 3 * j);
  return voteSum(model_.tables, sample);
}

double PlainEngine::scoreTrial(const TrialWindow& window, int trial) const {
  smplTestData sample;
  sample.start = window.start;
  sample.end = window.end;
  for (int j = 0; j < window.codons; ++j) {
    const int p = window.codonAt(j, j >= trial, length_);
    if (p >= 0) countCodon(sample, seq_, length_, p);
  }
  return voteSum(model_.tables, sample);
}

void PlainEngine::score(WindowScores& scores) {
  for (int f = 0; f < 3; ++f) {
    scores.frame[f].clear();
    const int windows = scoredWindows(length_, model_.windowWidth, f);
    for (int k = 0; k < windows; ++k) scores.frame[f].push_back(scoreWindow(3 * k + f));
  }
}

int PlainEngine::bestTrial(const TrialWindow& window, int otherwise) {
  BestTrial best(otherwise);
  for (int t = 0; t < window.trials(); ++t) best.offer(t, scoreTrial(window, t));
  return best.place();
}

}  // namespace velto
