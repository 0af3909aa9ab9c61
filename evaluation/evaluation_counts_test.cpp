#include "evaluation/evaluation_counts.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

constexpr auto kInsertion = Frameshift::Kind::kInsertion;
constexpr auto kDeletion = Frameshift::Kind::kDeletion;

// A read of 12 bases whose bases 2 to 8 are coding in frame 2, with both ends whole.
TruthRow truth() {
  TruthRow row;
  row.read = "r";
  row.length = 12;
  row.coding = {{2, 8, 2}};
  row.start = 2;
  row.stop = 8;
  row.startExact = true;
  row.stopExact = true;
  return row;
}

TruthRow noncoding(int length) {
  TruthRow row;
  row.length = length;
  return row;
}

Prediction uncalled(int length) {
  Prediction called;
  called.frame.assign(static_cast<size_t>(length), -1);
  return called;
}

// Bases first to last called in this frame.
Prediction called(int length, int first, int last, int frame) {
  Prediction read = uncalled(length);
  for (int p = first; p <= last; ++p) {
    read.frame[static_cast<size_t>(p)] = static_cast<signed char>(frame);
  }
  read.start = first;
  read.stop = last;
  return read;
}

TEST(EvaluationCounts, BasesAreCountedByTruthAndCall) {
  // True 2 to 8, called 5 to 10: both 5 to 8; neither 0, 1 and 11.
  const EvaluationCounts counts = countRead(truth(), called(12, 5, 10, 2));
  EXPECT_EQ(counts.bases, 12);
  EXPECT_EQ(counts.coding, 7);
  EXPECT_EQ(counts.called, 6);
  EXPECT_EQ(counts.both, 4);
  EXPECT_EQ(counts.neither(), 3);
  EXPECT_EQ(counts.inFrame, 4);
}

TEST(EvaluationCounts, CodingBasesCalledInAnotherFrameAreNotInFrame) {
  const EvaluationCounts counts = countRead(truth(), called(12, 5, 10, 0));
  EXPECT_EQ(counts.both, 4);
  EXPECT_EQ(counts.inFrame, 0);
}

TEST(EvaluationCounts, InsertedBasesAreNeitherCodingNorCalled) {
  TruthRow row = truth();
  row.coding = {{2, 4, 2}, {6, 8, 0}};
  row.insertions = {5};
  Prediction read = called(12, 2, 8, 2);
  read.frame = {-1, -1, 2, 2, 2, -1, 0, 0, 0, -1, -1, -1};
  read.frameshifts = {{kInsertion, 5}};
  const EvaluationCounts counts = countRead(row, read);
  EXPECT_EQ(counts.coding, 6);
  EXPECT_EQ(counts.called, 6);
  EXPECT_EQ(counts.inFrame, 6);
  EXPECT_EQ(counts.neither(), 6);
}

TEST(EvaluationCounts, CallOfANoncodingReadIsCounted) {
  const EvaluationCounts called9 = countRead(noncoding(9), called(9, 0, 5, 0));
  EXPECT_EQ(called9.noncodingReads, 1);
  EXPECT_EQ(called9.noncodingCalled, 1);
  EXPECT_EQ(called9.coding, 0);
  EXPECT_EQ(called9.called, 6);
  const EvaluationCounts silent = countRead(noncoding(9), uncalled(9));
  EXPECT_EQ(silent.noncodingReads, 1);
  EXPECT_EQ(silent.noncodingCalled, 0);
  EXPECT_EQ(countRead(truth(), called(12, 2, 8, 2)).noncodingReads, 0);
}

TEST(EvaluationCounts, EmptyReadCountsNoBases) {
  const EvaluationCounts counts = countRead(noncoding(0), uncalled(0));
  EXPECT_EQ(counts.reads, 1);
  EXPECT_EQ(counts.bases, 0);
}

TEST(EvaluationCounts, StartAndStopMustBeExactToTheBase) {
  const EvaluationCounts exact = countRead(truth(), called(12, 2, 8, 2));
  EXPECT_EQ(exact.startsExact, 1);
  EXPECT_EQ(exact.stopsExact, 1);
  EXPECT_EQ(exact.bothExact, 1);
  const EvaluationCounts late = countRead(truth(), called(12, 5, 8, 2));
  EXPECT_EQ(late.startsExact, 0);
  EXPECT_EQ(late.stopsExact, 1);
  EXPECT_EQ(late.bothExact, 0);
  EXPECT_EQ(late.bothInside, 1);
}

TEST(EvaluationCounts, EndsThatTheReadDoesNotHoldAreNotJudged) {
  TruthRow row = truth();
  row.startExact = false;
  const EvaluationCounts counts = countRead(row, called(12, 2, 8, 2));
  EXPECT_EQ(counts.startsInside, 0);
  EXPECT_EQ(counts.startsExact, 0);
  EXPECT_EQ(counts.stopsInside, 1);
  EXPECT_EQ(counts.stopsExact, 1);
  EXPECT_EQ(counts.bothInside, 0);
}

// A read of 300 bases, all of them coding, with these frameshifts.
TruthRow shifted(const std::vector<int>& insertions, const std::vector<int>& deletions) {
  TruthRow row;
  row.length = 300;
  row.coding = {{0, 299, 0}};
  row.start = 0;
  row.stop = 299;
  row.insertions = insertions;
  row.deletions = deletions;
  return row;
}

TEST(EvaluationCounts, ShiftsAreMatchedWithinFifteenAndWithinThirtyBases) {
  Prediction read = called(300, 0, 299, 0);
  read.frameshifts = {{kInsertion, 65}, {kInsertion, 130}, {kInsertion, 231}};
  const EvaluationCounts counts = countRead(shifted({50, 100, 200}, {}), read);
  EXPECT_EQ(counts.shifts.known, 3);
  EXPECT_EQ(counts.shifts.called, 3);
  EXPECT_EQ(counts.shifts.matched[0], 1);  // 50 and 65
  EXPECT_EQ(counts.shifts.matched[1], 2);  // 100 and 130 too; 200 and 231 are 31 apart
}

TEST(EvaluationCounts, ByKindOnlyShiftsOfTheSameKindMatch) {
  Prediction read = called(300, 0, 299, 0);
  read.frameshifts = {{kDeletion, 52}, {kDeletion, 101}};
  const EvaluationCounts counts = countRead(shifted({50}, {100}), read);
  EXPECT_EQ(counts.shifts.matched[0], 2);
  EXPECT_EQ(counts.insertions.known, 1);
  EXPECT_EQ(counts.insertions.called, 0);
  EXPECT_EQ(counts.insertions.matched[0], 0);
  EXPECT_EQ(counts.deletions.known, 1);
  EXPECT_EQ(counts.deletions.called, 2);
  EXPECT_EQ(counts.deletions.matched[0], 1);
}

TEST(EvaluationCounts, DistancesAreCalledMinusTruePositions) {
  Prediction read = called(300, 0, 299, 0);
  read.frameshifts = {{kInsertion, 40}, {kDeletion, 107}, {kInsertion, 280}};
  const TruthRow row = shifted({50}, {100});
  EXPECT_EQ(shiftDistances(row, read, 60), (std::vector<int>{-10, 7}));
}

TEST(EvaluationCounts, SumAddsEveryCount) {
  Prediction read = called(12, 2, 8, 2);
  read.frameshifts = {{kInsertion, 5}};
  TruthRow row = truth();
  row.insertions = {5};
  row.deletions = {6};
  EvaluationCounts sum = countRead(row, read);
  sum += countRead(row, read);
  sum += countRead(noncoding(9), called(9, 0, 5, 0));
  EXPECT_EQ(sum.reads, 3);
  EXPECT_EQ(sum.noncodingReads, 1);
  EXPECT_EQ(sum.noncodingCalled, 1);
  EXPECT_EQ(sum.bases, 33);
  EXPECT_EQ(sum.coding, 14);
  EXPECT_EQ(sum.called, 20);
  EXPECT_EQ(sum.both, 14);
  EXPECT_EQ(sum.neither(), 13);
  EXPECT_EQ(sum.inFrame, 14);
  EXPECT_EQ(sum.shifts.known, 4);
  EXPECT_EQ(sum.shifts.called, 2);
  EXPECT_EQ(sum.shifts.matched[0], 2);
  EXPECT_EQ(sum.shifts.matched[1], 2);
  EXPECT_EQ(sum.insertions.matched[0], 2);
  EXPECT_EQ(sum.deletions.known, 2);
  EXPECT_EQ(sum.startsInside, 2);
  EXPECT_EQ(sum.startsExact, 2);
  EXPECT_EQ(sum.stopsInside, 2);
  EXPECT_EQ(sum.stopsExact, 2);
  EXPECT_EQ(sum.bothInside, 2);
  EXPECT_EQ(sum.bothExact, 2);
}

}  // namespace
}  // namespace velto
