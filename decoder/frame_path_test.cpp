// 1. Cells by hand  2. Traceback by hand  3. Every path of tiny layouts  4. Paths scored again
#include "decoder/frame_path.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/reads.h"

namespace velto {
namespace {

constexpr int kA = kAtgCodon, kO = kOtherCodon;
constexpr int kC = kCodingWindow, kN = kNonCodingWindow, kS = kStopCodon, kX = kNoWindow;

std::vector<dpNode> decode(const double (&matrix)[16], const layout& lay) {
  std::vector<dpNode> nodes(3 * lay.cls[0].size());
  fillFramePaths(matrix, lay, nodes.data());
  return nodes;
}

// A layout of these classes in frame 0; frames 1 and 2 never have a state and no ATG.
layout inFrameZero(const std::vector<int>& classes, const std::vector<int>& marks) {
  layout lay;
  lay.cls[0] = classes;
  lay.cls[1] = lay.cls[2] = std::vector<int>(classes.size(), kX);
  lay.met[0] = marks;
  lay.met[1] = lay.met[2] = std::vector<int>(classes.size(), kO);
  return lay;
}

layout sameInAllFrames(const std::vector<int>& classes, int mark) {
  layout lay;
  for (int f = 0; f < 3; ++f) {
    lay.cls[f] = classes;
    lay.met[f] = std::vector<int>(classes.size(), mark);
  }
  return lay;
}

// ---- 1. Cells by hand

TEST(LeadingClasses, TakeTheClassOfTheFirstFullWindow) {
  layout lay;
  for (int f = 0; f < 3; ++f) lay.cls[f] = std::vector<int>(18, kLeadingFiller);
  for (int f = 0; f < 3; ++f) lay.cls[f][16] = f == 1 ? kS : kC;
  lay.cls[0][17] = kN;
  fillLeadingClasses(lay, 96);
  EXPECT_EQ(lay.cls[0][0], kC);
  EXPECT_EQ(lay.cls[0][15], kC);
  EXPECT_EQ(lay.cls[0][17], kN);
  EXPECT_EQ(lay.cls[1][0], kS);
}

TEST(LeadingClasses, OfAWindowOf196BasesAre32) {
  layout lay;
  for (int f = 0; f < 3; ++f) lay.cls[f] = std::vector<int>(34, kN);
  lay.cls[2][32] = kC;
  fillLeadingClasses(lay, 196);
  EXPECT_EQ(lay.cls[2][31], kC);
  EXPECT_EQ(lay.cls[2][33], kN);
}

TEST(FramePaths, StepZeroStartsAPathInEveryFrameAndNeverEndsOne) {
  layout lay = sameInAllFrames({kS}, kO);
  lay.met[1][0] = kA;
  const double matrix[16] = {};
  const std::vector<dpNode> nodes = decode(matrix, lay);
  for (const dpNode& node : nodes) {
    EXPECT_EQ(node.prevFrame, 10);
    EXPECT_NE(node.term, 1);
  }
  EXPECT_EQ(nodes[0].score, -30.0);
  EXPECT_EQ(nodes[1].score, 2.0);
}

TEST(FramePaths, FreshPathCountsAsTheStartState) {
  double matrix[16] = {};
  matrix[4 * 0 + 2] = 7.0;   // coding after path start
  matrix[4 * 0 + 0] = 0.5;   // coding after coding
  matrix[4 * 3 + 0] = 0.25;  // stop after coding
  const std::vector<dpNode> nodes = decode(matrix, inFrameZero({kC, kC, kC, kS}, {kA, kO, kO, kO}));
  EXPECT_EQ(nodes[3].score, 9.0);
  EXPECT_EQ(nodes[6].score, 9.5);
  EXPECT_EQ(nodes[9].score, 9.75);
  EXPECT_EQ(nodes[9].prevFrame, 0);
  EXPECT_EQ(nodes[9].term, 1);
  EXPECT_NE(nodes[6].term, 1);
}

TEST(FramePaths, StepWithoutAStateCostsSeventyAndMayEndAPath) {
  double matrix[16] = {};
  std::fill(std::begin(matrix), std::end(matrix), 90.0);  // not used where the step has no state
  const std::vector<dpNode> nodes = decode(matrix, inFrameZero({kC, kC, kX}, {kA, kO, kO}));
  EXPECT_EQ(nodes[3].score, 92.0);
  EXPECT_EQ(nodes[6].score, 22.0);
  EXPECT_EQ(nodes[6].term, 1);
}

TEST(FramePaths, MissingPreviousStateReadsTheLastEntryOfTheRowBefore) {
  double matrix[16] = {};
  matrix[4 * 1 - 1] = 5.0;  // non-coding now, no state before
  const std::vector<dpNode> nodes = decode(matrix, inFrameZero({kC, kX, kN}, {kA, kO, kO}));
  // Step 1: 2 - 70 falls below the floor and restarts, so it counts as the start state.
  EXPECT_EQ(nodes[3].prevFrame, 10);
  EXPECT_EQ(nodes[6].score, -30.0);
  matrix[4 * 0 + 2] = 100.0;
  const std::vector<dpNode> rich = decode(matrix, inFrameZero({kC, kC, kX, kN}, {kA, kO, kO, kO}));
  EXPECT_EQ(rich[6].score, 32.0);
  EXPECT_EQ(rich[6].prevFrame, 0);
  EXPECT_EQ(rich[9].score, 37.0);
}

TEST(FramePaths, CodingAfterAStepWithoutStateAddsNothing) {
  double matrix[16] = {};
  std::fill(std::begin(matrix), std::end(matrix), 1.0);
  matrix[4 * 0 + 2] = 100.0;
  const std::vector<dpNode> nodes = decode(matrix, inFrameZero({kC, kC, kX, kC}, {kA, kO, kO, kO}));
  EXPECT_EQ(nodes[6].score, 32.0);
  EXPECT_EQ(nodes[9].score, 32.0);  // the flat index is -1
}

TEST(FramePaths, FrameChangeCostsTwenty) {
  double matrix[16] = {};
  layout lay = sameInAllFrames({kC, kC, kC}, kO);
  lay.met[2][0] = kA;
  const std::vector<dpNode> nodes = decode(matrix, lay);
  EXPECT_EQ(nodes[3 + 0].score, -18.0);
  EXPECT_EQ(nodes[3 + 0].prevFrame, 2);
  EXPECT_EQ(nodes[3 + 2].score, 2.0);
}

TEST(FramePaths, PenaltyOfAMissingStateIsTakenBeforeThatOfAFrameChange) {
  // Numbers of this size are multiples of 8, an even one here. Less 70 it is rounded to 72 less;
  // of the 20 less, halfway between 16 and 24, the even multiple, 24 less, is taken: 96 in all.
  // In the other order it would be 16 and 72, 88 in all.
  const double huge = 3 * 18014398509481984.0;  // 3 x 2 to the 54
  double matrix[16] = {};
  matrix[4 * 0 + 2] = huge;
  const std::vector<dpNode> nodes = decode(matrix, inFrameZero({kC, kC, kX}, {kA, kO, kO}));
  EXPECT_EQ(nodes[6 + 1].score, huge - 96.0);
  EXPECT_EQ(nodes[6 + 1].prevFrame, 0);
}

TEST(FramePaths, SameFrameWinsATieAgainstALowerFrame) {
  const double matrix[16] = {};
  layout lay = sameInAllFrames({kC, kC, kC}, kO);
  lay.met[0][0] = kA;
  const std::vector<dpNode> nodes = decode(matrix, lay);
  EXPECT_EQ(nodes[3 + 1].score, -18.0);  // from frame 0: 2 - 20
  EXPECT_EQ(nodes[3 + 1].prevFrame, 0);
  EXPECT_EQ(nodes[6 + 1].score, -18.0);  // from frame 0: 2 - 20, from frame 1: -18
  EXPECT_EQ(nodes[6 + 1].prevFrame, 1);
}

TEST(FramePaths, LowerFrameWinsATieBetweenTwoOtherFrames) {
  double matrix[16] = {};
  layout lay = sameInAllFrames({kC, kC}, kO);
  lay.met[0][0] = lay.met[1][0] = kA;
  const std::vector<dpNode> nodes = decode(matrix, lay);
  EXPECT_EQ(nodes[3 + 2].score, -18.0);
  EXPECT_EQ(nodes[3 + 2].prevFrame, 0);
}

TEST(FramePaths, StayingInTheFrameWinsATieAgainstAnAtgStart) {
  double matrix[16] = {};
  const std::vector<dpNode> nodes = decode(matrix, inFrameZero({kC, kC}, {kA, kA}));
  EXPECT_EQ(nodes[3].score, 2.0);
  EXPECT_EQ(nodes[3].prevFrame, 0);
}

TEST(FramePaths, AtgStartWinsATieAgainstAnotherFrame) {
  double matrix[16] = {};
  matrix[4 * 0 + 2] = 20.0;
  layout lay = sameInAllFrames({kN, kC}, kO);
  for (int f = 0; f < 3; ++f) lay.cls[f][1] = f == 1 ? kC : kN;
  lay.met[0][0] = kA;
  lay.met[1][1] = kA;
  // Frame 1 at step 1: from frame 0 2 + 20 - 20 = 2, its own start 2.
  const std::vector<dpNode> nodes = decode(matrix, lay);
  EXPECT_EQ(nodes[3 + 1].score, 2.0);
  EXPECT_EQ(nodes[3 + 1].prevFrame, 10);
}

TEST(FramePaths, CellOfExactlyMinusThirtyKeepsItsPredecessor) {
  double matrix[16] = {};
  matrix[4 * 0 + 2] = -32.0;
  const std::vector<dpNode> nodes = decode(matrix, inFrameZero({kC, kC}, {kA, kO}));
  EXPECT_EQ(nodes[3].score, -30.0);
  EXPECT_EQ(nodes[3].prevFrame, 0);
}

TEST(FramePaths, CellBelowMinusThirtyRestarts) {
  double matrix[16] = {};
  matrix[4 * 0 + 2] = -32.25;
  const std::vector<dpNode> nodes = decode(matrix, inFrameZero({kC, kC}, {kA, kO}));
  EXPECT_EQ(nodes[3].score, -30.0);
  EXPECT_EQ(nodes[3].prevFrame, 10);
}

TEST(FramePaths, StepsThatFramesOneAndTwoLackHaveNoStateAndNoAtg) {
  double matrix[16] = {};
  matrix[4 * 0 + 2] = 100.0;
  layout lay = sameInAllFrames({kC, kC, kC}, kA);
  lay.cls[1].pop_back();
  lay.cls[2].pop_back();
  lay.met[0].resize(1);
  lay.met[1].resize(1);
  lay.met[2].resize(1);
  const std::vector<dpNode> nodes = decode(matrix, lay);
  EXPECT_EQ(nodes[6 + 1].score, 102.0 - 70.0);
  EXPECT_EQ(nodes[6 + 1].term, 1);
  EXPECT_EQ(nodes[6 + 0].score, 102.0);
  EXPECT_NE(nodes[6 + 0].term, 1);
}

// ---- 2. Traceback by hand

// Cells of one path in frame 0 from step 0 to `traced`, the only cell that may end a path.
std::vector<dpNode> straightPath(int steps, int traced, double score) {
  std::vector<dpNode> nodes(3 * static_cast<size_t>(steps));
  for (dpNode& node : nodes) node.prevFrame = 0;
  for (int f = 0; f < 3; ++f) nodes[static_cast<size_t>(f)].prevFrame = kPathBegins;
  for (int k = 0; k <= traced; ++k) nodes[3 * static_cast<size_t>(k)].score = score;
  nodes[3 * static_cast<size_t>(traced)].term = 1;
  return nodes;
}

TEST(TracedPath, OfSixtyStepsReturnsItsScore) {
  std::vector<int> path;
  const TracedPath traced = traceFramePath(straightPath(70, 60, 12.5).data(), 70, path);
  EXPECT_EQ(traced.score, 12.5);
  EXPECT_EQ(traced.endStep, 60);
  EXPECT_EQ(path.size(), 70U);
  EXPECT_EQ(std::count(path.begin(), path.end(), 0), 61);
  EXPECT_EQ(path[61], kOffPath);
}

TEST(TracedPath, OfFiftyNineStepsReturnsMinusTen) {
  std::vector<int> path;
  const TracedPath traced = traceFramePath(straightPath(70, 59, 12.5).data(), 70, path);
  EXPECT_EQ(traced.score, -10.0);
  EXPECT_EQ(traced.endStep, 59);
  EXPECT_EQ(std::count(path.begin(), path.end(), 0), 60);
}

TEST(TracedPath, WithoutAnEndHoldsFrameZeroAtStepZeroOnly) {
  layout lay = sameInAllFrames({kC, kC, kN, kC}, kA);
  const double matrix[16] = {};
  std::vector<int> path = {5};
  const TracedPath traced = traceFramePath(decode(matrix, lay).data(), 4, path);
  EXPECT_EQ(traced.score, -10.0);
  EXPECT_EQ(traced.endStep, 0);
  EXPECT_EQ(path, (std::vector<int>{5, 0, -1, -1, -1}));  // appended
}

TEST(TracedPath, EqualEndsGoToTheEarliestStepThenTheLowestFrame) {
  std::vector<dpNode> nodes(12);
  for (dpNode& node : nodes) node.prevFrame = kPathBegins;
  for (const size_t cell : {3U + 2U, 6U + 1U, 6U + 0U, 9U + 0U}) {
    nodes[cell].term = 1;
    nodes[cell].score = 4.0;
  }
  std::vector<int> path;
  EXPECT_EQ(traceFramePath(nodes.data(), 4, path).endStep, 1);
  EXPECT_EQ(path, (std::vector<int>{-1, 2, -1, -1}));
  nodes[3 + 2].score = 3.0;
  path.clear();
  EXPECT_EQ(traceFramePath(nodes.data(), 4, path).endStep, 2);
  EXPECT_EQ(path, (std::vector<int>{-1, -1, 0, -1}));
}

TEST(TracedPath, StopsBeforeAPredecessorBelowMinusTwentyAndShowsItsFrame) {
  std::vector<dpNode> nodes = straightPath(70, 65, 5.0);
  nodes[3 * 10].prevFrame = 1;      // step 10 comes from frame 1 ...
  nodes[3 * 9 + 1].score = -20.25;  // ... whose score is too poor
  std::vector<int> path;
  EXPECT_EQ(traceFramePath(nodes.data(), 70, path).score, -10.0);  // 56 steps
  EXPECT_EQ(path[9], kOffPath);
  EXPECT_EQ(path[10], 1);
  EXPECT_EQ(path[11], 0);
}

TEST(TracedPath, PredecessorOfExactlyMinusTwentyIsFollowed) {
  std::vector<dpNode> nodes = straightPath(70, 65, 5.0);
  nodes[3 * 9].score = -20.0;
  std::vector<int> path;
  EXPECT_EQ(traceFramePath(nodes.data(), 70, path).score, 5.0);
  EXPECT_EQ(path[0], 0);
}

TEST(TracedPath, PoorPredecessorOfTheFirstThreeStepsIsFollowed) {
  std::vector<dpNode> nodes = straightPath(70, 65, 5.0);
  nodes[0].score = nodes[3].score = -29.0;  // predecessors of steps 1 and 2
  std::vector<int> path;
  traceFramePath(nodes.data(), 70, path);
  EXPECT_EQ(path[0], 0);
  nodes[6].score = -29.0;  // predecessor of step 3
  path.clear();
  traceFramePath(nodes.data(), 70, path);
  EXPECT_EQ(path[2], kOffPath);
  EXPECT_EQ(path[3], 0);
}

TEST(TracedPath, OfNoStepsIsEmpty) {
  std::vector<int> path;
  EXPECT_EQ(traceFramePath(nullptr, 0, path).score, -10.0);
  EXPECT_TRUE(path.empty());
}

// ---- 3. Every path of tiny layouts

// A path of frames from one step on, scored from its first codon by the rules of the programme.
struct FramePath {
  size_t firstStep;
  std::vector<int> frames;
  double startScore;
};

int codeOf(const layout& lay, int frame, size_t step) {
  return step < lay.cls[frame].size() ? lay.cls[frame][step] : kX;
}

bool isAtg(const layout& lay, int frame, size_t step) {
  return step < lay.met[frame].size() && lay.met[frame][step] == kA;
}

// The price of going from one cell to the next; `before` is the code of the step left.
double stepPrice(const double (&matrix)[16], int before, int now, bool changesFrame) {
  const auto stateOf = [](int code) {
    const int states[] = {kC, kN, kPathStart, kS};
    const auto* at = std::find(std::begin(states), std::end(states), code);
    return at == std::end(states) ? -1 : static_cast<int>(at - states);
  };
  double price = changesFrame ? -20.0 : 0.0;
  const int current = stateOf(now);
  if (current < 0) return price - 70.0;
  const int flat = current * 4 + stateOf(before);
  return flat < 0 ? price : price + matrix[flat];
}

double scoreOf(const double (&matrix)[16], const layout& lay, const FramePath& path) {
  double score = path.startScore;
  for (size_t i = 1; i < path.frames.size(); ++i) {
    const size_t step = path.firstStep + i;
    const int before = i == 1 ? kPathStart : codeOf(lay, path.frames[i - 1], step - 1);
    score += stepPrice(matrix, before, codeOf(lay, path.frames[i], step),
                       path.frames[i] != path.frames[i - 1]);
  }
  return score;
}

double startScoreAt(const layout& lay, int frame, size_t step) {
  return isAtg(lay, frame, step) ? 2.0 : -30.0;
}

// Best score of any path that ends at a cell, over every start and every sequence of frames.
double bestOfEveryPath(const double (&matrix)[16], const layout& lay, size_t endStep,
                       int endFrame) {
  double best = -1e9;
  for (size_t first = 0; first <= endStep; ++first) {
    const size_t free = endStep - first;  // frames before the last
    size_t sequences = 1;
    for (size_t i = 0; i < free; ++i) sequences *= 3;
    for (size_t number = 0; number < sequences; ++number) {
      FramePath path{first, {}, 0.0};
      for (size_t rest = number, i = 0; i < free; ++i, rest /= 3) {
        path.frames.push_back(static_cast<int>(rest % 3));
      }
      path.frames.push_back(endFrame);
      path.startScore = startScoreAt(lay, path.frames[0], first);
      best = std::max(best, scoreOf(matrix, lay, path));
    }
  }
  return best;
}

double quarters(test::Random& random, int least, int most) {
  return test::randomInt(random, 4 * least, 4 * most) / 4.0;
}

// A tiny layout whose steps have a state, but for a tail without windows in every frame.
layout tinyLayout(test::Random& random) {
  static constexpr int kStates[] = {kC, kN, kS};
  const int steps = test::randomInt(random, 2, 6);
  const int tail = test::randomInt(random, 0, 2);
  layout lay;
  for (int f = 0; f < 3; ++f) {
    for (int i = 0; i < steps; ++i) {
      const bool inTail = i >= steps - tail;
      lay.cls[f].push_back(inTail ? kX : kStates[test::randomInt(random, 0, 2)]);
      lay.met[f].push_back(test::chance(random, 0.25) ? kA : kO);
    }
  }
  return lay;
}

// With entries that depend on the current state only, the price of a step does not depend on how
// its cell was reached: then the recurrence must find the best of all paths in every cell. All
// values are quarters, so that sums are exact and ties are frequent.
TEST(FramePathsOfTinyLayouts, HoldTheBestOfEveryPathInEveryCell) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  for (int round = 0; round < 400; ++round) {
    SCOPED_TRACE(testing::Message() << "layout " << round);
    const layout lay = tinyLayout(random);
    double matrix[16];
    for (int c = 0; c < 4; ++c) {
      const double entry = quarters(random, -25, 25);
      for (int p = 0; p < 4; ++p) matrix[4 * c + p] = entry;
    }
    const std::vector<dpNode> nodes = decode(matrix, lay);
    double bestEnd = -1000.0;
    size_t end = 0;
    for (size_t cell = 0; cell < nodes.size(); ++cell) {
      const auto frame = static_cast<int>(cell % 3);
      const double best = bestOfEveryPath(matrix, lay, cell / 3, frame);
      ASSERT_EQ(nodes[cell].score, best) << "cell " << cell;
      const int code = codeOf(lay, frame, cell / 3);
      const bool mayEnd = cell >= 3 && (code == kS || code == kX);
      ASSERT_EQ(nodes[cell].term == 1, mayEnd) << "cell " << cell;
      if (mayEnd && best > bestEnd) {
        bestEnd = best;
        end = cell;
      }
    }
    std::vector<int> path;
    const TracedPath traced =
        traceFramePath(nodes.data(), static_cast<int>(nodes.size() / 3), path);
    ASSERT_EQ(traced.endStep, static_cast<int>(end / 3));
    ASSERT_EQ(traced.score, kShortPathScore);
  }
}

// With any matrix a path is the best continuation of best paths: of every cell the whole best path
// is kept, and each of its continuations is scored anew from its first codon.
class KeptPaths {
 public:
  KeptPaths(const double (&matrix)[16], const layout& lay) : matrix_(matrix), lay_(lay) {
    for (size_t step = 0; step < lay.cls[0].size(); ++step) {
      std::vector<FramePath> now;
      for (int f = 0; f < 3; ++f) now.push_back(bestAt(step, f));
      kept_.push_back(now);
    }
  }

  const FramePath& at(size_t step, size_t frame) const { return kept_[step][frame]; }
  double scoreAt(size_t step, size_t frame) const {
    return scoreOf(matrix_, lay_, at(step, frame));
  }

 private:
  FramePath bestAt(size_t step, int frame) const {
    const FramePath fresh{step, {frame}, startScoreAt(lay_, frame, step)};
    if (step == 0) return fresh;
    // In the order in which a tie is decided: the same frame, an ATG start, the lower frame.
    std::vector<FramePath> candidates = {continued(step, frame, frame)};
    if (isAtg(lay_, frame, step)) candidates.push_back(fresh);
    for (int g = 0; g < 3; ++g) {
      if (g != frame) candidates.push_back(continued(step, g, frame));
    }
    const auto better = [this](const FramePath& a, const FramePath& b) {
      return scoreOf(matrix_, lay_, a) < scoreOf(matrix_, lay_, b);
    };
    const FramePath best = *std::max_element(candidates.begin(), candidates.end(), better);
    if (scoreOf(matrix_, lay_, best) < -30.0) return {step, {frame}, -30.0};
    return best;
  }

  FramePath continued(size_t step, int from, int frame) const {
    FramePath path = kept_[step - 1][static_cast<size_t>(from)];
    path.frames.push_back(frame);
    return path;
  }

  const double (&matrix_)[16];
  const layout& lay_;
  std::vector<std::vector<FramePath>> kept_;  // [step][frame]
};

// The frame entries that the walk back from a cell shows, by the rule of the poor prefix.
std::vector<int> shownPath(const KeptPaths& kept, size_t steps, size_t endStep, size_t endFrame) {
  std::vector<int> shown(steps, kOffPath);
  const FramePath& path = kept.at(endStep, endFrame);
  size_t k = endStep;
  for (; k > path.firstStep; --k) {
    const auto before = static_cast<size_t>(path.frames[k - 1 - path.firstStep]);
    shown[k] = path.frames[k - path.firstStep];
    if (k > 2 && kept.scoreAt(k - 1, before) < -20.0) {
      shown[k] = static_cast<int>(before);
      return shown;
    }
  }
  shown[k] = path.frames[0];
  return shown;
}

TEST(FramePathsOfTinyLayouts, AreTheBestContinuationsOfBestPathsWithAnyMatrix) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  for (int round = 0; round < 3000; ++round) {
    SCOPED_TRACE(testing::Message() << "layout " << round);
    const layout lay = test::randomLayout(random, test::randomInt(random, 1, 12));
    double matrix[16];
    // Few values make ties frequent.
    const int most = test::chance(random, 0.5) ? 2 : 60;
    for (double& entry : matrix) entry = 10.0 * quarters(random, -most, most) / most;
    for (double& entry : matrix) entry = static_cast<double>(static_cast<int>(entry * 4)) / 4;
    const std::vector<dpNode> nodes = decode(matrix, lay);
    const KeptPaths kept(matrix, lay);
    double best = -1000.0;
    size_t end = 0;
    for (size_t cell = 0; cell < nodes.size(); ++cell) {
      const FramePath& path = kept.at(cell / 3, cell % 3);
      ASSERT_EQ(nodes[cell].score, kept.scoreAt(cell / 3, cell % 3)) << "cell " << cell;
      const size_t length = path.frames.size();
      ASSERT_EQ(nodes[cell].prevFrame, length == 1 ? kPathBegins : path.frames[length - 2])
          << "cell " << cell;
      if (nodes[cell].term == 1 && nodes[cell].score > best) {
        best = nodes[cell].score;
        end = cell;
      }
    }
    std::vector<int> path;
    const size_t steps = nodes.size() / 3;
    traceFramePath(nodes.data(), static_cast<int>(steps), path);
    ASSERT_EQ(path, shownPath(kept, steps, end / 3, end % 3));
  }
}

// ---- 4. Paths scored again

// The score of a traced path, from the first cell that the walk back reached to its end.
double scoreAgain(const double (&matrix)[16], const layout& lay, const std::vector<dpNode>& nodes,
                  const std::vector<int>& path, int endStep) {
  const auto end = static_cast<size_t>(endStep);
  size_t k = end;
  while (k > 0 && path[k - 1] != kOffPath) --k;
  const auto cellAt = [&](size_t step, int frame) {
    return nodes[3 * step + static_cast<size_t>(frame)];
  };
  // A walk that was cut shows the predecessor's frame at its first step, not the step's own.
  int frame = k == end ? path[k] : cellAt(k + 1, path[k + 1]).prevFrame;
  const bool wholePath = frame == path[k] && cellAt(k, frame).prevFrame == kPathBegins;
  double score = wholePath ? startScoreAt(lay, frame, k) : cellAt(k - 1, path[k]).score;
  int before = wholePath ? kPathStart : codeOf(lay, path[k], k - 1);
  if (!wholePath) {
    if (cellAt(k - 1, path[k]).prevFrame == kPathBegins) before = kPathStart;
    score += stepPrice(matrix, before, codeOf(lay, frame, k), frame != path[k]);
    before = codeOf(lay, frame, k);
  }
  for (size_t i = k + 1; i <= end; ++i) {
    const int now = codeOf(lay, path[i], i);
    score += stepPrice(matrix, before, now, path[i] != frame);
    frame = path[i];
    before = now;
  }
  return score;
}

TEST(FramePathsOfRandomLayouts, TracedPathScoredAgainHasTheReportedScore) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  int scored = 0;
  for (int round = 0; round < 12000; ++round) {
    SCOPED_TRACE(testing::Message() << "layout " << round);
    const int steps = test::randomInt(random, 62, 160);
    const layout lay = test::randomLayout(random, steps);
    double matrix[16];
    for (double& entry : matrix) entry = quarters(random, -6, 4);
    matrix[4 * 0 + 2] = quarters(random, 0, 40);
    const std::vector<dpNode> nodes = decode(matrix, lay);
    std::vector<int> path;
    const TracedPath traced = traceFramePath(nodes.data(), steps, path);
    ASSERT_EQ(path.size(), static_cast<size_t>(steps));
    const auto onPath = std::count_if(path.begin(), path.end(), [](int f) { return f >= 0; });
    if (traced.score == kShortPathScore && onPath < 61) continue;
    ASSERT_EQ(traced.score, scoreAgain(matrix, lay, nodes, path, traced.endStep));
    ++scored;
  }
  EXPECT_GT(scored, 2000);
}

}  // namespace
}  // namespace velto
