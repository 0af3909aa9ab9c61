#include "evaluation/evaluation_figures.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

namespace velto {
namespace {

// 100 bases: 40 coding, 30 called, 24 both (18 of them in frame), 54 neither.
EvaluationCounts example() {
  EvaluationCounts counts;
  counts.bases = 100;
  counts.coding = 40;
  counts.called = 30;
  counts.both = 24;
  counts.inFrame = 18;
  counts.shifts = {8, 5, {2, 4}};
  counts.insertions = {3, 4, {1, 2}};
  counts.deletions = {5, 1, {0, 1}};
  counts.noncodingReads = 4;
  counts.noncodingCalled = 1;
  counts.startsInside = 5;
  counts.startsExact = 2;
  counts.stopsInside = 10;
  counts.stopsExact = 7;
  counts.bothInside = 3;
  counts.bothExact = 1;
  return counts;
}

FigureValue figure(const char* id, const EvaluationCounts& counts) {
  for (const Figure& f : evaluationFigures()) {
    if (std::strcmp(f.id, id) == 0) return f.of(counts);
  }
  ADD_FAILURE() << "no figure " << id;
  return {};
}

void expectRatio(const char* id, long part, long whole) {
  const FigureValue value = figure(id, example());
  EXPECT_EQ(value.part, part) << id;
  EXPECT_EQ(value.whole, whole) << id;
  ASSERT_TRUE(value.value) << id;
  EXPECT_DOUBLE_EQ(*value.value, static_cast<double>(part) / static_cast<double>(whole)) << id;
}

TEST(EvaluationFigures, RatiosHaveTheirPartsAndWholes) {
  expectRatio("sensitivity", 24, 40);
  expectRatio("precision", 24, 30);
  expectRatio("frame_sensitivity", 18, 40);
  expectRatio("frame_precision", 18, 30);
  expectRatio("shift_recall_15", 2, 8);
  expectRatio("shift_precision_15", 2, 5);
  expectRatio("shift_recall_30", 4, 8);
  expectRatio("shift_precision_30", 4, 5);
  expectRatio("insertion_recall_15", 1, 3);
  expectRatio("insertion_precision_15", 1, 4);
  expectRatio("insertion_recall_30", 2, 3);
  expectRatio("insertion_precision_30", 2, 4);
  expectRatio("deletion_recall_15", 0, 5);
  expectRatio("deletion_precision_15", 0, 1);
  expectRatio("deletion_recall_30", 1, 5);
  expectRatio("deletion_precision_30", 1, 1);
  expectRatio("noncoding_called", 1, 4);
  expectRatio("start_exact", 2, 5);
  expectRatio("stop_exact", 7, 10);
  expectRatio("start_and_stop_exact", 1, 3);
}

TEST(EvaluationFigures, FrameF1IsTheHarmonicMean) {
  // 2 x 0.45 x 0.6 / (0.45 + 0.6) = 36 / 70.
  expectRatio("frame_f1", 36, 70);
  EXPECT_DOUBLE_EQ(*frameF1Of(example()).value, 2 * 0.45 * 0.6 / (0.45 + 0.6));
}

TEST(EvaluationFigures, CorrelationOfTheExampleByHand) {
  // (24 x 54 - 16 x 6) / sqrt(40 x 60 x 30 x 70) = 1200 / 2244.994... = 0.53452...
  EXPECT_NEAR(*correlationOf(example()).value, 0.534522, 1e-6);
}

TEST(EvaluationFigures, CorrelationIsOneForTheTruthAndMinusOneForItsOpposite) {
  EvaluationCounts same;
  same.bases = 10;
  same.coding = same.called = same.both = 4;
  EXPECT_DOUBLE_EQ(*correlationOf(same).value, 1.0);
  EvaluationCounts opposite;
  opposite.bases = 10;
  opposite.coding = 4;
  opposite.called = 6;
  EXPECT_DOUBLE_EQ(*correlationOf(opposite).value, -1.0);
}

TEST(EvaluationFigures, CorrelationHoldsWhereProductsPassThirtyTwoBits) {
  EvaluationCounts counts = example();
  const double small = *correlationOf(counts).value;
  for (long* n : {&counts.bases, &counts.coding, &counts.called, &counts.both, &counts.inFrame}) {
    *n *= 1'000'000;
  }
  EXPECT_NEAR(*correlationOf(counts).value, small, 1e-12);
}

TEST(EvaluationFigures, CorrelationIsUndefinedWhenNothingIsCalled) {
  EvaluationCounts counts = example();
  counts.called = counts.both = 0;
  EXPECT_FALSE(correlationOf(counts).value);
  EXPECT_TRUE(sensitivityOf(counts).value);
  EXPECT_FALSE(precisionOf(counts).value);
}

TEST(EvaluationFigures, NothingCountedGivesNoFigure) {
  for (const Figure& f : evaluationFigures()) EXPECT_FALSE(f.of({}).value) << f.id;
}

TEST(EvaluationFigures, IdsAreUniqueAndOnlyOneFigureIsBetterLow) {
  std::set<std::string> ids;
  for (const Figure& f : evaluationFigures()) {
    EXPECT_TRUE(ids.insert(f.id).second) << f.id;
    EXPECT_EQ(f.lowerIsBetter, std::string(f.id) == "noncoding_called");
  }
  EXPECT_EQ(ids.size(), 22U);
}

}  // namespace
}  // namespace velto
