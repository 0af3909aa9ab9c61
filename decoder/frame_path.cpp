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

// A missing previous state reads the last entry of the row before, an asymmetry kept on purpose; a
// negative flat index counts as 0.
double transition(const double (&matrix)[16], int current, int previous) {
  const int index = 4 * current + previous;
  return index < 0 ? 0.0 : matrix[index];
}

// State of cell (i - 1, g): a freshly started path counts as the path start.
int previousState(const layout& lay, const dpNode& cell, size_t step, size_t frame) {
  if (cell.prevFrame == kPathBegins) return decodingState(kPathStart);
  return decodingState(entryOr(lay.cls[frame], step, kNoWindow));
}

// best(i, f) = max over g of best(i-1, g) + transition - 70 if f has no state - 20 if g != f,
// against an ATG start of 2; below -30 the cell restarts at -30.
void fillCell(const double (&matrix)[16], const layout& lay, const int (&previous)[3],
              const dpNode* before, size_t i, size_t f, dpNode& cell) {
  const int current = decodingState(entryOr(lay.cls[f], i, kNoWindow));
  const bool atg = entryOr(lay.met[f], i, kOtherCodon) == kAtgCodon;
  double best = atg ? kAtgStartScore : kWorstScore;
  int from = atg ? kPathBegins : -1;
  for (size_t g = 0; g < 3; ++g) {
    double s = transition(matrix, current, previous[g]) + before[g].score;
    if (current < 0) s += kNoStatePenalty;
    if (g != f) s += kFrameChangePenalty;
    if (s == best && g == f) {
      from = static_cast<int>(g);
    } else if (s > best) {
      best = s;
      from = static_cast<int>(g);
    }
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
  for (size_t i = 1; i < n; ++i) {
    const dpNode* before = nodes + 3 * (i - 1);
    int previous[3];
    for (size_t g = 0; g < 3; ++g) previous[g] = previousState(lay, before[g], i - 1, g);
    for (size_t f = 0; f < 3; ++f) {
      fillCell(matrix, lay, previous, before, i, f, nodes[3 * i + f]);
    }
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
