#include "decoder/frame_scores.h"

#include <algorithm>

#include "decoder/window_layout.h"
#include "model/window_sample.h"
#include "model/window_vote.h"
#include "model/window_width.h"

namespace velto {

void markAtg(const short* seq, int length, layout& lay) {
  for (int f = 0; f < 3; ++f) {
    lay.met[f].clear();
    for (int p = f; p + 2 < length; p += 3) {
      const bool atg = acidAt(seq, length, p) == kMethionine;
      lay.met[f].push_back(atg ? kAtgCodon : kOtherCodon);
    }
  }
}

void layOutFrames(const ModelView& model, const short* seq, int length, const WindowScores& scores,
                  layout& lay, std::vector<double> (&frameScore)[3]) {
  lay = layout();
  markAtg(seq, length, lay);
  const auto isStop = [=](int p) { return acidAt(seq, length, p) == kStopSignal; };
  const int half = halfWindow(model.windowWidth);
  double last = 0.0;  // score of the window scored last, kept across the frames
  for (int f = 0; f < 3; ++f) {
    std::vector<int>& classes = lay.cls[f];
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
