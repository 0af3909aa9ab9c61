// The frame-path dynamic programme in one byte a cell, for reads of any length.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "decoder/frame_path.h"
#include "decoder/path_recurrence.h"

namespace velto {

// The cells that fillFramePaths fills, kept as far as the walk back needs them. Reusable for one
// read after another; for one thread at a time.
class FrameTrellis {
 public:
  // Finds the best path of a read; `matrix` is [4 x current state + previous state].
  void fill(const double (&matrix)[16], const std::vector<FrameStep>& steps);

  // As traceFramePath, but `path` is replaced.
  TracedPath trace(std::vector<int>& path) const;

 private:
  // One byte: the frame at the step before or kPathBegins, and kPoor if isPoorPrefix.
  using Cell = std::uint8_t;
  static constexpr int kPoor = 0x80;

  void keep(const PathCells& cells, std::size_t i);
  void noteEnd(const PathCells& cells, const FrameStep& step, std::size_t i);

  std::vector<std::array<Cell, 3>> cells_;  // [step][frame]
  double best_ = kWorstPathScore;           // score of the best cell that may end a path
  int endStep_ = 0;                         // where it is
  int endFrame_ = 0;
};

}  // namespace velto
