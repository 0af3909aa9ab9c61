#include "decoder/frame_trellis.h"

namespace velto {

void FrameTrellis::fill(const double (&matrix)[16], const std::vector<FrameStep>& steps) {
  best_ = kWorstPathScore;
  endStep_ = 0;
  endFrame_ = 0;
  cells_.resize(steps.size());
  if (steps.empty()) return;
  const Transitions transitions(matrix);
  PathCells cells = firstCells(steps[0]);
  keep(cells, 0);
  for (size_t i = 1; i < steps.size(); ++i) {
    cells = nextCells(transitions, steps[i - 1], cells, steps[i]);
    noteEnd(cells, steps[i], i);
    keep(cells, i);
  }
}

void FrameTrellis::keep(const PathCells& cells, size_t i) {
  for (size_t f = 0; f < 3; ++f) {
    cells_[i][f] = static_cast<Cell>(cells.from[f] | (isPoorPrefix(cells.score[f]) ? kPoor : 0));
  }
}

// The earliest step, then the lowest frame, among equals.
void FrameTrellis::noteEnd(const PathCells& cells, const FrameStep& step, size_t i) {
  for (size_t f = 0; f < 3; ++f) {
    if (!step.mayEnd(f) || !(cells.score[f] > best_)) continue;
    best_ = cells.score[f];
    endStep_ = static_cast<int>(i);
    endFrame_ = static_cast<int>(f);
  }
}

TracedPath FrameTrellis::trace(std::vector<int>& path) const {
  path.assign(cells_.size(), kOffPath);
  if (cells_.empty()) return {kShortPathScore, 0};
  struct Unpacked {
    int from;
    bool poor;
  };
  const auto cellAt = [this](int step, int frame) {
    const Cell cell = cells_[static_cast<size_t>(step)][static_cast<size_t>(frame)];
    return Unpacked{cell & ~kPoor, (cell & kPoor) != 0};
  };
  const int traced = walkBack(cellAt, endStep_, endFrame_, path.data());
  return {traced >= kLeastTracedSteps ? best_ : kShortPathScore, endStep_};
}

}  // namespace velto
