#include "decoder/frame_scores.h"

#include <algorithm>

#include "model/sliding_vote.h"
#include "model/window_sample.h"
#include "model/window_vote.h"

namespace velto {
namespace {

int windowCodons(int windowWidth) { return windowWidth / 3; }

}  // namespace

int scoredWindows(int length, int windowWidth, int frame) {
  const int room = length - windowWidth - frame;
  return room <= 0 ? 0 : (room + 2) / 3;
}

double scoreWindowPlain(const ModelView& model, const short* seq, int length, int start) {
  smplTestData sample;
  sample.start = start;
  const int codons = windowCodons(model.windowWidth);
  for (int j = 0; j < codons; ++j) countCodon(sample, seq, length, start + 3 * j);
  sample.end = start + 3 * codons - 1;
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
  SlidingVote vote(model.tables, 3 * codons - 1, codons);
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

// Lays out the windows of one read, frame after frame.
class FrameLayouter {
 public:
  FrameLayouter(const ModelView& model, const short* seq, int length, const WindowScores& scores)
      : half_(model.windowWidth / 6),
        codons_(windowCodons(model.windowWidth)),
        seq_(seq),
        length_(length),
        scores_(scores) {}

  void markAtg(int frame, std::vector<int>& met) const {
    for (int p = frame; p + 2 < length_; p += 3) {
      met.push_back(acidAt(seq_, length_, p) == kMethionine ? kAtgCodon : kOtherCodon);
    }
  }

  void classify(int frame, std::vector<int>& classes, std::vector<double>& frameScore) {
    const std::vector<double>& scored = scores_.frame[frame];
    for (size_t k = 0;; ++k) {
      const int start = frame + 3 * static_cast<int>(k);
      const bool tooShort = codonsInside(start) < half_ + 2;
      if (isStop(start + 3 * half_)) {
        append(classes, kStopCodon, frameScore, kNoWindowScore);
      } else if (tooShort) {
        append(classes, kNoWindow, frameScore, kNoWindowScore);
      } else {
        if (k < scored.size()) {
          lastScore_ = scored[k];
          lastClass_ = windowClass(lastScore_);
        }
        append(classes, lastClass_, frameScore, lastScore_);
      }
      if (tooShort) return;
    }
  }

 private:
  static void append(std::vector<int>& classes, int code, std::vector<double>& frameScore,
                     double score) {
    classes.push_back(code);
    frameScore.push_back(score);
  }

  int codonsInside(int start) const { return std::min(codons_, std::max(0, length_ - start) / 3); }

  bool isStop(int p) const { return acidAt(seq_, length_, p) == kStopSignal; }

  int half_;    // codons; the centre codon is codon number half_ of its window
  int codons_;  // codons of a whole window
  const short* seq_;
  int length_;  // bases
  const WindowScores& scores_;
  int lastClass_ = kNonCodingWindow;  // of the window scored last, kept across the frames
  double lastScore_ = 0.0;
};

}  // namespace

void layOutFrames(const ModelView& model, const short* seq, int length, const WindowScores& scores,
                  layout& lay, std::vector<double> (&frameScore)[3]) {
  lay = layout();
  FrameLayouter layouter(model, seq, length, scores);
  const size_t half = static_cast<size_t>(model.windowWidth / 6);
  for (int f = 0; f < 3; ++f) {
    layouter.markAtg(f, lay.met[f]);
    lay.cls[f].assign(half, kLeadingFiller);
    frameScore[f].assign(half, 0.0);
    layouter.classify(f, lay.cls[f], frameScore[f]);
    std::fill_n(frameScore[f].begin(), half, frameScore[f][half]);
    const size_t steps = std::max(lay.cls[f].size(), lay.met[f].size());
    lay.cls[f].resize(steps, kNoWindow);
    frameScore[f].resize(steps, kNoWindowScore);
  }
}

}  // namespace velto
