#include "decoder/frame_path.h"

#include "model/window_width.h"

namespace velto {
namespace {

int entryOr(const std::vector<int>& entries, size_t i, int missing) {
  return i < entries.size() ? entries[i] : missing;
}

FrameStep laidStep(const layout& lay, size_t i) {
  FrameStep step;
  for (size_t f = 0; f < 3; ++f) {
    step.state[f] = static_cast<std::int8_t>(decodingState(entryOr(lay.cls[f], i, kNoWindow)));
    step.atg[f] = entryOr(lay.met[f], i, kOtherCodon) == kAtgCodon;
  }
  return step;
}

void setNodes(const PathCells& cells, dpNode* nodes) {
  for (size_t f = 0; f < 3; ++f) {
    nodes[f].prevFrame = cells.from[f];
    nodes[f].score = cells.score[f];
  }
}

}  // namespace

void fillLeadingClasses(layout& lay, int windowWidth) {
  const size_t h = static_cast<size_t>(halfWindow(windowWidth));
  for (std::vector<int>& classes : lay.cls) {
    if (classes.size() <= h) continue;
    for (size_t k = 0; k < h; ++k) classes[k] = classes[h];
  }
}

void fillFramePaths(const double (&matrix)[16], const layout& lay, dpNode* nodes) {
  const size_t n = lay.cls[0].size();
  if (n == 0) return;
  const Transitions transitions(matrix);
  FrameStep last = laidStep(lay, 0);
  PathCells cells = firstCells(last);
  setNodes(cells, nodes);
  for (size_t i = 1; i < n; ++i) {
    const FrameStep step = laidStep(lay, i);
    cells = nextCells(transitions, last, cells, step);
    setNodes(cells, nodes + 3 * i);
    for (size_t f = 0; f < 3; ++f) {
      if (step.mayEnd(f)) nodes[3 * i + f].term = 1;
    }
    last = step;
  }
}

TracedPath traceFramePath(const dpNode* nodes, int n, std::vector<int>& path) {
  double best = kWorstPathScore;
  int end = 0;
  for (int cell = 0; cell < 3 * n; ++cell) {
    if (nodes[cell].term == 1 && nodes[cell].score > best) {
      best = nodes[cell].score;
      end = cell;
    }
  }
  const size_t base = path.size();
  path.resize(base + static_cast<size_t>(n), kOffPath);
  if (n == 0) return {kShortPathScore, 0};

  struct Cell {
    int from;
    bool poor;
  };
  const auto cellAt = [nodes](int step, int frame) {
    const dpNode& node = nodes[3 * step + frame];
    return Cell{node.prevFrame, isPoorPrefix(node.score)};
  };
  const int traced = walkBack(cellAt, end / 3, end % 3, path.data() + base);
  return {traced >= kLeastTracedSteps ? best : kShortPathScore, end / 3};
}

}  // namespace velto
