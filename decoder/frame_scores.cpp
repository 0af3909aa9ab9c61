#include "decoder/frame_scores.h"

#include <algorithm>

#include "decoder/window_layout.h"
#include "model/sliding_vote.h"
#include "model/window_sample.h"
#include "model/window_vote.h"
#include "model/window_width.h"

namespace velto {
int scoredWindows(int length, int windowWidth, int frame) {
  const int room = length - windowWidth - frame;
  return room <= 0 ? 0 : (room + 2) / 3;
}

double scoreWindowPlain(const ModelView& model, const short* seq, int length, int start) {
  smplTestData sample;
  sample.start = start;
  const int codons = windowCodons(model.windowWidth);
  for (int j = 0; j < codons; ++j) countCodon(sample, seq, length, start + 3 * j);
  sample.end = start + votedLength(model.windowWidth);
  return voteSum(model.tables, sample);
}

WindowScores scoreWindowsPlain(const ModelView& model, const short* seq, int length) {
  WindowScores scores;
  for (int f = 0; f < 3; ++f) {
    const int windows = scoredWindows(length, model.windowWidth, f);
    for (int k = 0; k < windows; ++k) {
      scores.frame[f].push_back(scoreWindowPlain(model, seq, length, 3 * k + f));
    }
  }
  return scores;
}

WindowScores scoreWindows(const ModelView& model, const short* seq, int length) {
  WindowScores scores;
  const int most = scoredWindows(length, model.windowWidth, 0);
  if (most == 0) return scores;
  const int codons = windowCodons(model.windowWidth);
  const ReadCodons read(seq, length);
  SlidingVote vote(model.tables, votedLength(model.windowWidth), codons);
  for (int f = 0; f < 3; ++f) {
    for (int j = 0; j < codons; ++j) vote.add(f, read.at(f + 3 * j));
  }
  int windows[3];
  for (int f = 0; f < 3; ++f) {
    windows[f] = scoredWindows(length, model.windowWidth, f);
    scores.frame[f].reserve(static_cast<size_t>(windows[f]));
  }
  for (int k = 0; k < most; ++k) {
    double sums[SlidingVote::kLanes];
    vote.sums(sums);
    for (int f = 0; f < 3; ++f) {
      if (k < windows[f]) scores.frame[f].push_back(sums[f]);
      vote.remove(f, read.at(f + 3 * k));
      vote.add(f, read.at(f + 3 * (k + codons)));
    }
  }
  return scores;
}

namespace {

void markAtg(const short* seq, int length, int frame, std::vector<int>& met) {
  for (int p = frame; p + 2 < length; p += 3) {
    met.push_back(acidAt(seq, length, p) == kMethionine ? kAtgCodon : kOtherCodon);
  }
}

}  // namespace

void layOutFrames(const ModelView& model, const short* seq, int length, const WindowScores& scores,
                  layout& lay, std::vector<double> (&frameScore)[3]) {
  lay = layout();
  const auto isStop = [=](int p) { return acidAt(seq, length, p) == kStopSignal; };
  const int half = halfWindow(model.windowWidth);
  double last = 0.0;  // score of the window scored last, kept across the frames
  for (int f = 0; f < 3; ++f) {
    std::vector<int>& classes = lay.cls[f];
    markAtg(seq, length, f, lay.met[f]);
    classes.assign(static_cast<size_t>(half), kLeadingFiller);
    frameScore[f].assign(static_cast<size_t>(half), 0.0);
    layOutWindows({length, half, f}, scores.frame[f], isStop, last, [&](int code, double score) {
      classes.push_back(code);
      frameScore[f].push_back(score);
    });
    std::fill_n(frameScore[f].begin(), half, frameScore[f][static_cast<size_t>(half)]);
    const size_t steps = std::max(classes.size(), lay.met[f].size());
    classes.resize(steps, kNoWindow);
    frameScore[f].resize(steps, kNoWindowScore);
  }
}

}  // namespace velto
