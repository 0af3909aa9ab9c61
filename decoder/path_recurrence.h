// The recurrence of the frame-path dynamic programme and the walk back, for matrices of any form.
#pragma once

#include <cstddef>
#include <cstdint>

#include "decoder/layout.h"

namespace velto {

// Frame from which a path that starts in its cell comes.
constexpr int kPathBegins = 10;

constexpr double kWorstPathScore = -1000.0;
constexpr int kLeastTracedSteps = 60;

// What the layout says of one codon step.
struct FrameStep {
  std::int8_t state[3];  // [frame] decoding state
  bool atg[3];           // [frame]

  // True if a path may end here; none ends at step 0.
  bool mayEnd(size_t frame) const {
    return state[frame] < 0 || state[frame] == decodingState(kStopCodon);
  }
};

// Transition scores by decoding state; -1, no state, is a state here too.
class Transitions {
 public:
  // `matrix` is [4 x current state + previous state].
  explicit Transitions(const double (&matrix)[16]) {
    for (int current = -1; current <= 3; ++current) {
      for (int previous = -1; previous <= 3; ++previous) {
        score_[current + 1][previous + 1] = entry(matrix, 4 * current + previous);
      }
    }
  }

  // [previous state + 1]
  const double* to(int current) const { return score_[current + 1]; }

 private:
  // A missing previous state reads the last entry of the row before, an asymmetry kept on purpose;
  // a negative flat index counts as 0.
  static double entry(const double (&matrix)[16], int index) {
    return index < 0 ? 0.0 : matrix[index];
  }

  double score_[5][5];
};

// The best paths that end at one step.
struct PathCells {
  double score[3];  // [frame]
  int from[3];      // [frame] the path's frame at the step before, or kPathBegins
};

inline PathCells firstCells(const FrameStep& step);

// The cells of `step` from those of the step before.
inline PathCells nextCells(const Transitions& transitions, const FrameStep& stepBefore,
                           const PathCells& before, const FrameStep& step);

// Walks back from the end cell and writes the frames of the path's steps into `path`, which holds
// kOffPath for each step of the read. `cellAt(step, frame)` gives a cell as {int from; bool poor},
// poor as in isPoorPrefix. Returns the number of steps traced.
template <typename CellAt>
int walkBack(const CellAt& cellAt, int endStep, int endFrame, int* path) {
  int k = endStep;
  int f = endFrame;
  int traced = 0;
  while (k > 0) {
    const int before = cellAt(k, f).from;
    if (before == kPathBegins) break;
    ++traced;
    path[k] = f;
    f = before;
    if (k > 2 && cellAt(k - 1, before).poor) break;
    --k;
  }
  path[k] = f;
  return traced;
}

// The walk back stops before a cell of such a score.
inline bool isPoorPrefix(double score) { return score < -20.0; }

// ---- The recurrence

namespace recurrence {

constexpr double kAtgStartScore = 2.0;
constexpr double kOpenStartScore = -30.0;  // also the floor below which a cell restarts
constexpr double kFrameChangePenalty = -20.0;
constexpr double kNoStatePenalty = -70.0;

// best(i, f) = max over g of best(i-1, g) + transition - 70 if f has no state - 20 if g != f,
// against an ATG start of 2; below -30 the cell restarts at -30. `toCurrent` are the transitions
// to the state of f, `previous` the states of step i - 1.
template <size_t kFrame>
void fillCell(const double* toCurrent, const int (&previous)[3], const PathCells& before,
              const FrameStep& step, PathCells& cells) {
  const bool hasState = step.state[kFrame] >= 0;
  const bool atg = step.atg[kFrame];
  double best = atg ? kAtgStartScore : kWorstPathScore;
  int from = atg ? kPathBegins : -1;
  for (size_t g = 0; g < 3; ++g) {
    double s = toCurrent[previous[g] + 1] + before.score[g];
    if (!hasState) s += kNoStatePenalty;
    if (g != kFrame) s += kFrameChangePenalty;
    const bool wins = s > best || (s == best && g == kFrame);
    from = wins ? static_cast<int>(g) : from;
    best = s > best ? s : best;
  }
  const bool restart = best < kOpenStartScore;
  cells.from[kFrame] = restart ? kPathBegins : from;
  cells.score[kFrame] = restart ? kOpenStartScore : best;
}

}  // namespace recurrence

PathCells firstCells(const FrameStep& step) {
  PathCells cells;
  for (size_t f = 0; f < 3; ++f) {
    cells.from[f] = kPathBegins;
    cells.score[f] = step.atg[f] ? recurrence::kAtgStartScore : recurrence::kOpenStartScore;
  }
  return cells;
}

PathCells nextCells(const Transitions& transitions, const FrameStep& stepBefore,
                    const PathCells& before, const FrameStep& step) {
  int previous[3];  // a freshly started path counts as the path start
  for (size_t g = 0; g < 3; ++g) {
    const bool begins = before.from[g] == kPathBegins;
    previous[g] = begins ? decodingState(kPathStart) : stepBefore.state[g];
  }
  PathCells cells;
  recurrence::fillCell<0>(transitions.to(step.state[0]), previous, before, step, cells);
  recurrence::fillCell<1>(transitions.to(step.state[1]), previous, before, step, cells);
  recurrence::fillCell<2>(transitions.to(step.state[2]), previous, before, step, cells);
  return cells;
}

}  // namespace velto
