#include "evaluation/figure_intervals.h"

#include <gtest/gtest.h>

#include "evaluation/test_transcripts.h"

namespace velto {
namespace {

TEST(Resampling, AnIntervalLeavesATailOnEitherSide) {
  std::vector<double> values;
  for (int i = 0; i <= 200; ++i) values.push_back(i);
  EXPECT_DOUBLE_EQ(intervalOf(values).low, 5.0);
  EXPECT_DOUBLE_EQ(intervalOf(values).high, 195.0);
  EXPECT_DOUBLE_EQ(intervalOf({0.0, 1.0}).low, 0.025);
  EXPECT_DOUBLE_EQ(intervalOf({7.0}).high, 7.0);
}

TEST(FigureIntervals, TwoTranscriptsGiveTheirThreeMixtures) {
  // Resamples of (2, 8) of 10 are 0.2 in a quarter of the cases, 0.5 in a half, 0.8 in a quarter.
  const auto interval =
      valueOf("sensitivity", figureIntervals({transcriptOf(2), transcriptOf(8)}, 1));
  EXPECT_DOUBLE_EQ(interval->low, 0.2);
  EXPECT_DOUBLE_EQ(interval->high, 0.8);
}

TEST(FigureIntervals, MoreTranscriptsLeaveLessDoubt) {
  std::vector<EvaluationCounts> few;
  for (const long found : {2, 4, 6, 8}) few.push_back(transcriptOf(found));
  std::vector<EvaluationCounts> many;
  for (int copy = 0; copy < 25; ++copy) many.insert(many.end(), few.begin(), few.end());
  const auto wide = valueOf("sensitivity", figureIntervals(few, 1));
  const auto narrow = valueOf("sensitivity", figureIntervals(many, 1));
  EXPECT_NEAR(wide->high - wide->low, 5 * (narrow->high - narrow->low), 0.1);
  EXPECT_LT(narrow->low, 0.5);
  EXPECT_GT(narrow->high, 0.5);
}

TEST(FigureIntervals, WhatNoReadDefinesHasNone) {
  EXPECT_FALSE(valueOf("start_exact", figureIntervals({transcriptOf(2)}, 1)));
  EXPECT_FALSE(valueOf("sensitivity", figureIntervals({}, 1)));
}

}  // namespace
}  // namespace velto
