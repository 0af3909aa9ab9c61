#include "model/integer_engine.h"

#include <climits>

#include "core/six_digits.h"
#include "model/ordered_sums.h"
#include "model/plain_engine.h"
#include "model/window_vote.h"
#include "model/window_width.h"

namespace velto {

// Calls use(window, sum) for every scored window of a frame in turn.
template <typename Use>
void IntegerEngine::eachSum(int frame, int windows, const Use& use) {
  if (windows == 0) return;
  const int codons = read_.tables.codons();
  vote_.begin(read_.tables, *read_.tables.pairTables(votedLength(read_.model.windowWidth)));
  for (int j = 0; j < codons; ++j) vote_.add(read_.codons, frame + 3 * j);
  for (int k = 0;; ++k) {
    use(static_cast<size_t>(k), vote_.sum());
    if (k + 1 == windows) return;
    const int leaving = frame + 3 * k;
    vote_.slide(read_.codons, leaving, leaving + 3 * codons);
  }
}

void IntegerEngine::classify(WindowClasses& classes) {
  for (int f = 0; f < 3; ++f) {
    const int windows = scoredWindows(read_.length, read_.model.windowWidth, f);
    classes.frame[f].resize(static_cast<size_t>(windows));
    eachSum(f, windows, [&](size_t k, int sum) {
      const double score = sum != 0 ? sum : vote_.orderedSum();
      classes.frame[f][k] = static_cast<signed char>(windowClass(score));
    });
  }
}

void IntegerEngine::score(WindowScores& scores) {
  OrderedSums ordered(read_.tables);
  for (int f = 0; f < 3; ++f) {
    const int windows = scoredWindows(read_.length, read_.model.windowWidth, f);
    scores.frame[f].resize(static_cast<size_t>(windows));
    eachSum(f, windows, [&](size_t k, int sum) {
      double& score = scores.frame[f][k];
      if (isRoundingEdge(sum)) {
        ordered.take(vote_, score);
      } else {
        score = sum / kMillion;
      }
    });
  }
  ordered.finish();
}

void IntegerEngine::beginTrials(const TrialWindow& window, const PairTables& pairs) {
  vote_.begin(read_.tables, pairs);
  for (int j = 0; j < window.codons; ++j) {
    const int p = window.codonAt(j, true, read_.length);
    if (p >= 0) vote_.add(read_.codons, p);
  }
}

// From trial to trial + 1: one codon more is read in the old frame.
void IntegerEngine::nextTrial(const TrialWindow& window, int trial) {
  const int leaving = window.codonAt(trial, true, read_.length);
  const int entering = window.codonAt(trial, false, read_.length);
  if (leaving >= 0) vote_.remove(read_.codons, leaving);
  if (entering >= 0) vote_.add(read_.codons, entering);
}

int IntegerEngine::bestTrial(const TrialWindow& window, int otherwise) {
  const PairTables* pairs = read_.tables.pairTables(window.windowLength());
  if (pairs == nullptr) {
    return PlainEngine(read_.model, read_.seq, read_.length).bestTrial(window, otherwise);
  }
  int best = INT_MIN;
  int place = otherwise;
  bool isShared = false;
  beginTrials(window, *pairs);
  for (int t = 0;; ++t) {
    if (vote_.sum() > best) {
      best = vote_.sum();
      place = t;
      isShared = false;
    } else {
      isShared = isShared || vote_.sum() == best;
    }
    if (t == window.codons) break;
    nextTrial(window, t);
  }
  return isShared ? bestAmongEqual(window, *pairs, best) : place;
}

int IntegerEngine::bestAmongEqual(const TrialWindow& window, const PairTables& pairs, int best) {
  BestTrial among(0);
  beginTrials(window, pairs);
  for (int t = 0;; ++t) {
    if (vote_.sum() == best) among.offer(t, vote_.orderedSum());
    if (t == window.codons) return among.place();
    nextTrial(window, t);
  }
}

}  // namespace velto
