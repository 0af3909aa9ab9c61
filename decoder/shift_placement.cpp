// 1. Frame changes of a path  2. Placing
#include "decoder/shift_placement.h"

#include <algorithm>

#include "decoder/layout.h"
#include "model/window_width.h"

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

// ---- 2. Placing

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

}  // namespace

void placeShifts(TrialJudge& judge, int windowWidth, int endStep, std::vector<int>& path) {
  const std::vector<FrameChange> changes = frameChanges(path);
  const int h = halfWindow(windowWidth);
  const int codons = windowCodons(windowWidth);
  for (size_t c = 1; c + 1 < changes.size(); ++c) {
    const int k = changes[c].step;
    const int start = std::max(0, 3 * (k - h));
    const int end = 3 * (k + h) + 3;
    if (end - start < (2 * windowWidth) / 3) continue;
    const int oldFrame = path[static_cast<size_t>(k - 1)];
    const int newFrame = path[static_cast<size_t>(k)];
    int place = judge.bestTrial({start + oldFrame, end, changes[c].shift, codons}, h);
    const int firstStep = k - h + 1;
    if (firstStep + place >= endStep) place = endStep - firstStep;
    rewritePath(path, firstStep, codons, place, changes[c - 1].step, changes[c + 1].step, oldFrame,
                newFrame);
  }
}

}  // namespace velto
