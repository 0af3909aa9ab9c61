#include "decoder/frame_trellis.h"

#include <gtest/gtest.h>

#include "tests/support/reads.h"

namespace velto {
namespace {

// The steps of a layout; what frames 1 and 2 lack has no state and no ATG.
std::vector<FrameStep> stepsOf(const layout& lay) {
  std::vector<FrameStep> steps(lay.cls[0].size());
  for (size_t i = 0; i < steps.size(); ++i) {
    for (size_t f = 0; f < 3; ++f) {
      const int code = i < lay.cls[f].size() ? lay.cls[f][i] : kNoWindow;
      steps[i].state[f] = static_cast<std::int8_t>(decodingState(code));
      steps[i].atg[f] = i < lay.met[f].size() && lay.met[f][i] == kAtgCodon;
    }
  }
  return steps;
}

void randomMatrix(test::Random& random, double (&matrix)[16]) {
  // Quarters make ties frequent.
  for (double& entry : matrix) entry = test::randomInt(random, -24, 16) / 4.0;
  matrix[4 * 0 + 2] = test::randomInt(random, 0, 160) / 4.0;
}

TEST(FrameTrellis, TracesThePathsOfTheWholeMatrix) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  FrameTrellis trellis;
  std::vector<int> path = {7};
  int scored = 0;
  for (int round = 0; round < 5000; ++round) {
    const layout lay = test::randomLayout(random, test::randomInt(random, 1, 200));
    double matrix[16];
    randomMatrix(random, matrix);
    const std::vector<FrameStep> steps = stepsOf(lay);
    std::vector<dpNode> nodes(3 * steps.size());
    fillFramePaths(matrix, lay, nodes.data());
    std::vector<int> whole;
    const TracedPath expected = traceFramePath(nodes.data(), static_cast<int>(steps.size()), whole);

    trellis.fill(matrix, steps);
    const TracedPath traced = trellis.trace(path);
    ASSERT_EQ(path, whole) << "round " << round;
    ASSERT_EQ(traced.score, expected.score);
    ASSERT_EQ(traced.endStep, expected.endStep);
    scored += traced.score != kShortPathScore;
  }
  EXPECT_GT(scored, 500);
}

TEST(FrameTrellis, OfNoStepsIsAnEmptyPath) {
  const double matrix[16] = {};
  FrameTrellis trellis;
  trellis.fill(matrix, {});
  std::vector<int> path = {7};
  EXPECT_EQ(trellis.trace(path).score, kShortPathScore);
  EXPECT_TRUE(path.empty());
}

}  // namespace
}  // namespace velto
