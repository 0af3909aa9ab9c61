#include "decoder/frame_path.h"

namespace velto {
namespace {

constexpr double kAtgStartScore = 2.0;
constexpr double kOpenStartScore = -30.0;  // also the floor below which a cell restarts
constexpr double kWorstScore = -1000.0;
constexpr double kFrameChangePenalty = -20.0;
constexpr double kNoStatePenalty = -70.0;
constexpr double kPoorPrefixScore = -20.0;  // the walk back stops before a poorer predecessor
constexpr int kLeastTracedSteps = 60;

int entryOr(const std::vector<int>& entries, size_t i, int missing) {
  return i < entries.size() ? entries[i] : missing;
}

// Transition scores by decoding state; -1, no state, is a state here too.
class Transitions {
 public:
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

// What the layout says of one step.
struct LaidStep {
  int state[3];  // [frame] decoding state
  bool atg[3];   // [frame]
};

LaidStep laidStep(const layout& lay, size_t i) {
  LaidStep step;
  for (size_t f = 0; f < 3; ++f) {
    step.state[f] = decodingState(entryOr(lay.cls[f], i, kNoWindow));
    step.atg[f] = entryOr(lay.met[f], i, kOtherCodon) == kAtgCodon;
  }
  return step;
}

// best(i, f) = max over g of best(i-1, g) + transition - 70 if f has no state - 20 if g != f,
// against an ATG start of 2; below -30 the cell restarts at -30. `toCurrent` are the transitions
// to the state of f, `previous` the states of step i - 1.
template <size_t kFrame>
void fillCell(const double* toCurrent, const int (&previous)[3], const dpNode* before,
              const LaidStep& step, dpNode& cell) {
  const int current = step.state[kFrame];
  const bool atg = step.atg[kFrame];
  double best = atg ? kAtgStartScore : kWorstScore;
  int from = atg ? kPathBegins : -1;
  for (size_t g = 0; g < 3; ++g) {
    double s = toCurrent[previous[g] + 1] + before[g].score;
    if (current < 0) s += kNoStatePenalty;
    if (g != kFrame) s += kFrameChangePenalty;
    const bool wins = s > best || (s == best && g == kFrame);
    from = wins ? static_cast<int>(g) : from;
    best = s > best ? s : best;
  }
  const bool restart = best < kOpenStartScore;
  cell.prevFrame = restart ? kPathBegins : from;
  cell.score = restart ? kOpenStartScore : best;
  if (current < 0 || current == decodingState(kStopCodon)) cell.term = 1;
}

}  // namespace

void fillLeadingClasses(layout& lay, int windowWidth) {
  const size_t h = static_cast<size_t>(windowWidth / 6);
  for (std::vector<int>& classes : lay.cls) {
    if (classes.size() <= h) continue;
    for (size_t k = 0; k < h; ++k) classes[k] = classes[h];
  }
}

void fillFramePaths(const double (&matrix)[16], const layout& lay, dpNode* nodes) {
  const size_t n = lay.cls[0].size();
  for (size_t f = 0; n > 0 && f < 3; ++f) {
    nodes[f].prevFrame = kPathBegins;
    nodes[f].score =
        entryOr(lay.met[f], 0, kOtherCodon) == kAtgCodon ? kAtgStartScore : kOpenStartScore;
  }
  const Transitions transitions(matrix);
  LaidStep last = n > 0 ? laidStep(lay, 0) : LaidStep();
  for (size_t i = 1; i < n; ++i) {
    const dpNode* before = nodes + 3 * (i - 1);
    dpNode* cells = nodes + 3 * i;
    int previous[3];  // a freshly started path counts as the path start
    for (size_t g = 0; g < 3; ++g) {
      const bool begins = before[g].prevFrame == kPathBegins;
      previous[g] = begins ? decodingState(kPathStart) : last.state[g];
    }
    const LaidStep step = laidStep(lay, i);
    fillCell<0>(transitions.to(step.state[0]), previous, before, step, cells[0]);
    fillCell<1>(transitions.to(step.state[1]), previous, before, step, cells[1]);
    fillCell<2>(transitions.to(step.state[2]), previous, before, step, cells[2]);
    last = step;
  }
}

TracedPath traceFramePath(const dpNode* nodes, int n, std::vector<int>& path) {
  double best = kWorstScore;
  int end = 0;
  for (int cell = 0; cell < 3 * n; ++cell) {
    if (nodes[cell].term == 1 && nodes[cell].score > best) {
      best = nodes[cell].score;
      end = cell;
    }
  }
  const int endStep = end / 3;
  const size_t base = path.size();
  path.resize(base + static_cast<size_t>(n), kOffPath);
  if (n == 0) return {kShortPathScore, 0};

  int k = endStep;
  int f = end % 3;
  int traced = 0;
  while (k > 0 && nodes[3 * k + f].prevFrame != kPathBegins) {
    ++traced;
    path[base + static_cast<size_t>(k)] = f;
    const int q = nodes[3 * k + f].prevFrame;
    const bool poorPrefix = k > 2 && nodes[3 * (k - 1) + q].score < kPoorPrefixScore;
    f = q;
    if (poorPrefix) break;
    --k;
  }
  path[base + static_cast<size_t>(k)] = f;
  return {traced >= kLeastTracedSteps ? best : kShortPathScore, endStep};
}

}  // namespace velto
