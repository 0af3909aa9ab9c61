// 1. Frame changes of a path  2. Votes of the trial windows  3. Placing
#include "decoder/shift_placement.h"

#include <algorithm>

#include "decoder/layout.h"
#include "model/sliding_vote.h"
#include "model/window_sample.h"
#include "model/window_vote.h"

namespace velto {
namespace {

// ---- 1. Frame changes of a path

struct FrameChange {
  int step;   // first step after the change
  int shift;  // bases by which the bases behind the change are read further on: 1 is an inserted
              // base, 2 a lost one
};

std::vector<FrameChange> frameChanges(const std::vector<int>& path) {
  constexpr int kBeforePath = -1000;
  std::vector<FrameChange> changes;
  int previous = kBeforePath;
  for (size_t k = 0; k < path.size(); ++k) {
    const int current = path[k];
    const bool stillOff = previous == kBeforePath && current == kOffPath;
    if (current != previous && !stillOff) {
      const int shift = previous < current ? current - previous : current - previous + 3;
      changes.push_back({static_cast<int>(k), shift});
    }
    previous = current;
  }
  return changes;
}

// ---- 2. Votes of the trial windows

constexpr double kWorstScore = -1000.0;

// The window read across one frame change: in trial t the first t codons are read in the old frame,
// the others `shift` bases further on.
struct TrialWindow {
  int start;   // first base
  int end;     // no codon may reach beyond this base
  int shift;   // bases
  int codons;  // codons of the window

  int trials() const { return codons + 1; }

  // First base of codon j when read in the old or in the new frame; -1 if it does not fit.
  int codonAt(int j, bool shifted, int length) const {
    const int p = start + 3 * j + (shifted ? shift : 0);
    return p >= 0 && p + 2 < length && p + 2 <= end ? p : -1;
  }
};

// Calls use(trial, score) for every trial in order.
using ScoreTrials = void (*)(const ModelView&, const short*, int, const TrialWindow&,
                             std::vector<double>&);

void scoreTrialsPlain(const ModelView& model, const short* seq, int length,
                      const TrialWindow& window, std::vector<double>& scores) {
  for (int t = 0; t < window.trials(); ++t) {
    smplTestData sample;
    sample.start = window.start;
    sample.end = window.end;
    for (int j = 0; j < window.codons; ++j) {
      const int p = window.codonAt(j, j >= t, length);
      if (p >= 0) countCodon(sample, seq, length, p);
    }
    scores.push_back(voteSum(model.tables, sample));
  }
}

void scoreTrials(const ModelView& model, const short* seq, int length, const TrialWindow& window,
                 std::vector<double>& scores) {
  const int reach = std::min(length, window.end + 1 + 3 * kPairGaps);
  const int first = std::min(std::max(0, window.start), reach);
  const ReadCodons read(seq + first, reach - first);
  const auto context = [&](int p) { return read.at(p < 0 ? -1 : p - first); };
  SlidingVote vote(model.tables, window.end - window.start, window.codons);
  for (int j = 0; j < window.codons; ++j) vote.add(0, context(window.codonAt(j, true, length)));
  for (int t = 0; t < window.trials(); ++t) {
    double sums[SlidingVote::kLanes];
    vote.sums(sums);
    scores.push_back(sums[0]);
    if (t == window.codons) break;
    vote.remove(0, context(window.codonAt(t, true, length)));
    vote.add(0, context(window.codonAt(t, false, length)));
  }
}

// The earliest of the best trials above kWorstScore; `otherwise` if there is none.
int bestTrial(const std::vector<double>& scores, int otherwise) {
  double best = kWorstScore;
  int place = otherwise;
  for (size_t t = 0; t < scores.size(); ++t) {
    if (scores[t] > best) {
      best = scores[t];
      place = static_cast<int>(t);
    }
  }
  return place;
}

// ---- 3. Placing

// Writes the old frame up to the change's new place and the new frame behind it, for the window's
// steps between the two neighbouring changes.
void rewritePath(std::vector<int>& path, int firstStep, int steps, int place, int lowest,
                 int highest, int oldFrame, int newFrame) {
  for (int m = 0; m < steps; ++m) {
    const int t = firstStep + m;
    if (t <= lowest || t >= highest || t <= 0 || t >= static_cast<int>(path.size())) continue;
    path[static_cast<size_t>(t)] = m < place ? oldFrame : newFrame;
  }
}

void placeShiftsBy(ScoreTrials score, const ModelView& model, const short* seq, int length,
                   int endStep, std::vector<int>& path) {
  const std::vector<FrameChange> changes = frameChanges(path);
  const int width = model.windowWidth;
  const int h = width / 6;
  for (size_t c = 1; c + 1 < changes.size(); ++c) {
    const int k = changes[c].step;
    const int start = std::max(0, 3 * (k - h));
    const int end = 3 * (k + h) + 3;
    if (end - start < (2 * width) / 3) continue;
    const int oldFrame = path[static_cast<size_t>(k - 1)];
    const int newFrame = path[static_cast<size_t>(k)];
    std::vector<double> scores;
    score(model, seq, length, {start + oldFrame, end, changes[c].shift, width / 3}, scores);
    int place = bestTrial(scores, h);
    const int firstStep = k - h + 1;
    if (firstStep + place >= endStep) place = endStep - firstStep;
    rewritePath(path, firstStep, width / 3, place, changes[c - 1].step, changes[c + 1].step,
                oldFrame, newFrame);
  }
}

}  // namespace

void placeShifts(const ModelView& model, const short* seq, int length, int endStep,
                 std::vector<int>& path) {
  placeShiftsBy(scoreTrials, model, seq, length, endStep, path);
}

void placeShiftsPlain(const ModelView& model, const short* seq, int length, int endStep,
                      std::vector<int>& path) {
  placeShiftsBy(scoreTrialsPlain, model, seq, length, endStep, path);
}

}  // namespace velto
