#include "decoder/frame_steps.h"

#include <gtest/gtest.h>

#include "decoder/frame_path.h"
#include "decoder/frame_scores.h"
#include "tests/support/reads.h"

namespace velto {
namespace {

// Random votes for the scored windows of a read.
WindowScores randomScores(test::Random& random, int length, int width) {
  WindowScores scores;
  for (int f = 0; f < 3; ++f) {
    scores.frame[f].resize(static_cast<size_t>(scoredWindows(length, width, f)));
    for (double& score : scores.frame[f]) score = test::chance(random, 0.5) ? 1.5 : -1.5;
  }
  return scores;
}

// Reads of every length around the bounds, rich in stop codons and with unknown bases.
TEST(FrameSteps, AreThoseOfTheLayoutForReadsOfAnyLength) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  std::vector<FrameStep> steps;
  CodedRead codons;
  for (const int width : {96, 196}) {
    const ModelTables unused;
    for (int length = 0; length < 3 * width; ++length) {
      SCOPED_TRACE(testing::Message() << "width " << width << " length " << length);
      const std::vector<short> codes = test::baseCodes(test::randomLetters(random, length, 0.05));
      const WindowScores scores = randomScores(random, length, width);
      layout lay;
      std::vector<double> frameScore[3];
      layOutFrames({unused, width}, codes.data(), length, scores, lay, frameScore);
      fillLeadingClasses(lay, width);

      codons.assign(codes.data(), length);
      WindowClasses classes;
      classify(scores, classes);
      layOutSteps(codons, length, width, classes, steps);
      ASSERT_EQ(steps.size(), lay.cls[0].size());
      for (size_t i = 0; i < steps.size(); ++i) {
        for (size_t f = 0; f < 3; ++f) {
          const int code = i < lay.cls[f].size() ? lay.cls[f][i] : kNoWindow;
          const bool atg = i < lay.met[f].size() && lay.met[f][i] == kAtgCodon;
          ASSERT_EQ(steps[i].state[f], decodingState(code)) << "step " << i << " frame " << f;
          ASSERT_EQ(steps[i].atg[f], atg) << "step " << i << " frame " << f;
        }
      }
      std::vector<double> stepScores[3];
      layOutScores(codons, length, width, scores, stepScores);
      for (int f = 0; f < 3; ++f) ASSERT_EQ(stepScores[f], frameScore[f]) << "frame " << f;
    }
  }
}

}  // namespace
}  // namespace velto
