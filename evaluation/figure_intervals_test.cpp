#include "evaluation/figure_intervals.h"

#include <gtest/gtest.h>

#include <cstring>

#include "evaluation/evaluation_figures.h"

namespace velto {
namespace {

// A transcript with 10 coding bases of which so many are called.
EvaluationCounts transcript(long found) {
  EvaluationCounts counts;
  counts.reads = 1;
  counts.bases = 20;
  counts.coding = 10;
  counts.called = counts.both = found;
  return counts;
}

std::optional<Interval> of(const char* id, const FigureIntervals& intervals) {
  const std::vector<Figure>& figures = evaluationFigures();
  for (std::size_t f = 0; f < figures.size(); ++f) {
    if (std::strcmp(figures[f].id, id) == 0) return intervals.at(f);
  }
  ADD_FAILURE() << "no figure " << id;
  return {};
}

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
  const auto interval = of("sensitivity", figureIntervals({transcript(2), transcript(8)}, 1));
  EXPECT_DOUBLE_EQ(interval->low, 0.2);
  EXPECT_DOUBLE_EQ(interval->high, 0.8);
}

TEST(FigureIntervals, MoreTranscriptsLeaveLessDoubt) {
  std::vector<EvaluationCounts> few;
  for (const long found : {2, 4, 6, 8}) few.push_back(transcript(found));
  std::vector<EvaluationCounts> many;
  for (int copy = 0; copy < 25; ++copy) many.insert(many.end(), few.begin(), few.end());
  const auto wide = of("sensitivity", figureIntervals(few, 1));
  const auto narrow = of("sensitivity", figureIntervals(many, 1));
  EXPECT_NEAR(wide->high - wide->low, 5 * (narrow->high - narrow->low), 0.1);
  EXPECT_LT(narrow->low, 0.5);
  EXPECT_GT(narrow->high, 0.5);
}

TEST(FigureIntervals, WhatNoReadDefinesHasNone) {
  EXPECT_FALSE(of("start_exact", figureIntervals({transcript(2)}, 1)));
  EXPECT_FALSE(of("sensitivity", figureIntervals({}, 1)));
}

}  // namespace
}  // namespace velto
