#include "evaluation/evaluation_counts.h"

#include <algorithm>

#include "evaluation/shift_matching.h"

namespace velto {
namespace {

void add(ShiftCounts& sum, const ShiftCounts& other) {
  sum.known += other.known;
  sum.called += other.called;
  for (int r = 0; r < kReaches; ++r) sum.matched[r] += other.matched[r];
}

std::vector<int> positionsOf(const Prediction& called, Frameshift::Kind kind) {
  std::vector<int> positions;
  for (const Frameshift& shift : called.frameshifts) {
    if (shift.kind == kind) positions.push_back(shift.position);
  }
  return positions;
}

std::vector<int> merged(const std::vector<int>& a, const std::vector<int>& b) {
  std::vector<int> both(a.size() + b.size());
  std::merge(a.begin(), a.end(), b.begin(), b.end(), both.begin());
  return both;
}

std::vector<int> positionsOf(const TruthRow& truth) {
  return merged(truth.insertions, truth.deletions);
}

std::vector<int> positionsOf(const Prediction& called) {
  return merged(positionsOf(called, Frameshift::Kind::kInsertion),
                positionsOf(called, Frameshift::Kind::kDeletion));
}

ShiftCounts countShifts(const std::vector<int>& known, const std::vector<int>& called) {
  ShiftCounts counts;
  counts.known = static_cast<long>(known.size());
  counts.called = static_cast<long>(called.size());
  for (int r = 0; r < kReaches; ++r) {
    counts.matched[r] = static_cast<long>(matchShifts(known, called, kShiftReaches[r]).size());
  }
  return counts;
}

void countEnds(const RegionTruth& truth, int start, int stop, EvaluationCounts& counts) {
  const bool startExact = truth.startInside && start == truth.start;
  const bool stopExact = truth.stopInside && stop == truth.stop;
  counts.startsInside = truth.startInside;
  counts.startsExact = startExact;
  counts.stopsInside = truth.stopInside;
  counts.stopsExact = stopExact;
  counts.bothInside = truth.startInside && truth.stopInside;
  counts.bothExact = startExact && stopExact;
}

}  // namespace

EvaluationCounts& EvaluationCounts::operator+=(const EvaluationCounts& other) {
  static constexpr long EvaluationCounts::*kMembers[] = {
      &EvaluationCounts::reads,           &EvaluationCounts::noncodingReads,
      &EvaluationCounts::noncodingCalled, &EvaluationCounts::startsInside,
      &EvaluationCounts::startsExact,     &EvaluationCounts::stopsInside,
      &EvaluationCounts::stopsExact,      &EvaluationCounts::bothInside,
      &EvaluationCounts::bothExact};
  ConfusionCounts::operator+=(other);
  for (const auto member : kMembers) this->*member += other.*member;
  add(shifts, other.shifts);
  add(insertions, other.insertions);
  add(deletions, other.deletions);
  return *this;
}

EvaluationCounts sumOf(const std::vector<EvaluationCounts>& counts,
                       std::span<const std::uint32_t> places) {
  EvaluationCounts total;
  for (const std::uint32_t i : places) total += counts[i];
  return total;
}

EvaluationCounts countRegion(const RegionTruth& truth, std::span<const std::int8_t> frame,
                             int start, int stop) {
  EvaluationCounts counts;
  static_cast<ConfusionCounts&>(counts) = countBases(truth.frame, frame);
  counts.reads = 1;
  counts.noncodingReads = truth.start < 0;
  counts.noncodingCalled = truth.start < 0 && start >= 0;
  countEnds(truth, start, stop, counts);
  return counts;
}

EvaluationCounts countRead(const TruthRow& truth, const Prediction& called) {
  const std::vector<signed char> frame = truth.frames();
  EvaluationCounts counts =
      countRegion({frame, truth.start, truth.stop, truth.startExact, truth.stopExact}, called.frame,
                  called.start, called.stop);
  counts.insertions =
      countShifts(truth.insertions, positionsOf(called, Frameshift::Kind::kInsertion));
  counts.deletions = countShifts(truth.deletions, positionsOf(called, Frameshift::Kind::kDeletion));
  counts.shifts = countShifts(positionsOf(truth), positionsOf(called));
  return counts;
}

std::vector<int> shiftDistances(const TruthRow& truth, const Prediction& called, int reach) {
  std::vector<int> distances;
  for (const ShiftMatch& match : matchShifts(positionsOf(truth), positionsOf(called), reach)) {
    distances.push_back(match.distance());
  }
  return distances;
}

}  // namespace velto
