#include "decoder/integer_scores.h"

#include <climits>

#include "core/six_digits.h"
#include "model/ordered_sums.h"
#include "model/window_vote.h"

namespace velto {
namespace {

// Calls use(window, sum) for every scored window of a frame in turn.
template <typename Use>
void eachSum(const VotingRead& read, IntegerVote& vote, int frame, int windows, const Use& use) {
  if (windows == 0) return;
  const int codons = read.tables.codons();
  vote.begin(read.tables, *read.tables.pairTables(votedLength(read.model.windowWidth)));
  for (int j = 0; j < codons; ++j) vote.add(read.codons, frame + 3 * j);
  for (int k = 0;; ++k) {
    use(static_cast<size_t>(k), vote.sum());
    if (k + 1 == windows) return;
    const int leaving = frame + 3 * k;
    vote.slide(read.codons, leaving, leaving + 3 * codons);
  }
}

// Calls use(frame, window, sum) for every scored window; resize(frame, windows) goes before.
template <typename Resize, typename Use>
void eachSum(const VotingRead& read, IntegerVote& vote, const Resize& resize, const Use& use) {
  for (int f = 0; f < 3; ++f) {
    const int windows = scoredWindows(read.length, read.model.windowWidth, f);
    resize(f, static_cast<size_t>(windows));
    eachSum(read, vote, f, windows, [&](size_t k, int sum) { use(f, k, sum); });
  }
}

}  // namespace

void sumWindows(const VotingRead& read, IntegerVote& vote, WindowSums& sums) {
  eachSum(
      read, vote, [&](int f, size_t windows) { sums.frame[f].resize(windows); },
      [&](int f, size_t k, int sum) { sums.frame[f][k] = sum; });
}

void classifyWindows(const VotingRead& read, IntegerVote& vote, WindowClasses& classes) {
  eachSum(
      read, vote, [&](int f, size_t windows) { classes.frame[f].resize(windows); },
      [&](int f, size_t k, int sum) {
        const double score = sum != 0 ? sum : vote.orderedSum();
        classes.frame[f][k] = static_cast<signed char>(windowClass(score));
      });
}

void scoreWindows(const VotingRead& read, IntegerVote& vote, WindowScores& scores) {
  OrderedSums ordered(read.tables);
  eachSum(
      read, vote, [&](int f, size_t windows) { scores.frame[f].resize(windows); },
      [&](int f, size_t k, int sum) {
        double& score = scores.frame[f][k];
        if (isRoundingEdge(sum)) {
          ordered.take(vote, score);
        } else {
          score = sum / kMillion;
        }
      });
  ordered.finish();
}

void IntegerJudge::beginTrials(const TrialWindow& window, const PairTables& pairs) {
  vote_.begin(read_.tables, pairs);
  for (int j = 0; j < window.codons; ++j) {
    const int p = window.codonAt(j, true, read_.length);
    if (p >= 0) vote_.add(read_.codons, p);
  }
}

// From trial to trial + 1: one codon more is read in the old frame.
void IntegerJudge::nextTrial(const TrialWindow& window, int trial) {
  const int leaving = window.codonAt(trial, true, read_.length);
  const int entering = window.codonAt(trial, false, read_.length);
  if (leaving >= 0) vote_.remove(read_.codons, leaving);
  if (entering >= 0) vote_.add(read_.codons, entering);
}

int IntegerJudge::bestTrial(const TrialWindow& window, int otherwise) {
  const PairTables* pairs = read_.tables.pairTables(window.windowLength());
  if (pairs == nullptr) return bestOrdered(window, otherwise);
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

int IntegerJudge::bestAmongEqual(const TrialWindow& window, const PairTables& pairs, int best) {
  double bestScore = kWorstTrialScore;
  int place = 0;
  beginTrials(window, pairs);
  for (int t = 0;; ++t) {
    if (vote_.sum() == best) {
      const double score = vote_.orderedSum();
      if (score > bestScore) {
        bestScore = score;
        place = t;
      }
    }
    if (t == window.codons) break;
    nextTrial(window, t);
  }
  return place;
}

int IntegerJudge::bestOrdered(const TrialWindow& window, int otherwise) const {
  double bestScore = kWorstTrialScore;
  int place = otherwise;
  for (int t = 0; t < window.trials(); ++t) {
    const double score = scoreTrialPlain(read_.model, read_.seq, read_.length, window, t);
    if (score > bestScore) {
      bestScore = score;
      place = t;
    }
  }
  return place;
}

}  // namespace velto
