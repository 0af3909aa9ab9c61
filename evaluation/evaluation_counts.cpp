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

void countBases(const std::vector<signed char>& known, const std::vector<signed char>& called,
                EvaluationCounts& counts) {
  counts.bases = static_cast<long>(known.size());
  for (size_t p = 0; p < known.size(); ++p) {
    const bool isCoding = known[p] >= 0;
    const bool isCalled = called[p] >= 0;
    counts.coding += isCoding;
    counts.called += isCalled;
    counts.both += isCoding && isCalled;
    counts.neither += !isCoding && !isCalled;
    counts.inFrame += isCoding && known[p] == called[p];
  }
}

std::vector<int> positionsOf(const std::vector<FrameShift>& shifts, bool insertion) {
  std::vector<int> positions;
  for (const FrameShift& shift : shifts) {
    if (shift.insertion == insertion) positions.push_back(shift.position);
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

std::vector<int> positionsOf(const CalledRead& called) {
  return merged(positionsOf(called.shifts, true), positionsOf(called.shifts, false));
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

void countEnds(const TruthRow& truth, const CalledRead& called, EvaluationCounts& counts) {
  const bool startExact = truth.startExact && called.start == truth.start;
  const bool stopExact = truth.stopExact && called.stop == truth.stop;
  counts.startsInside = truth.startExact;
  counts.startsExact = startExact;
  counts.stopsInside = truth.stopExact;
  counts.stopsExact = stopExact;
  counts.bothInside = truth.startExact && truth.stopExact;
  counts.bothExact = startExact && stopExact;
}

}  // namespace

EvaluationCounts& EvaluationCounts::operator+=(const EvaluationCounts& other) {
  static constexpr long EvaluationCounts::*kMembers[] = {&EvaluationCounts::reads,
                                                         &EvaluationCounts::noncodingReads,
                                                         &EvaluationCounts::noncodingCalled,
                                                         &EvaluationCounts::bases,
                                                         &EvaluationCounts::coding,
                                                         &EvaluationCounts::called,
                                                         &EvaluationCounts::both,
                                                         &EvaluationCounts::neither,
                                                         &EvaluationCounts::inFrame,
                                                         &EvaluationCounts::startsInside,
                                                         &EvaluationCounts::startsExact,
                                                         &EvaluationCounts::stopsInside,
                                                         &EvaluationCounts::stopsExact,
                                                         &EvaluationCounts::bothInside,
                                                         &EvaluationCounts::bothExact};
  for (const auto member : kMembers) this->*member += other.*member;
  add(shifts, other.shifts);
  add(insertions, other.insertions);
  add(deletions, other.deletions);
  return *this;
}

EvaluationCounts countRead(const TruthRow& truth, const CalledRead& called) {
  EvaluationCounts counts;
  counts.reads = 1;
  counts.noncodingReads = !truth.isCoding();
  counts.noncodingCalled = !truth.isCoding() && called.isCoding();
  countBases(truth.frames(), called.frame, counts);
  counts.insertions = countShifts(truth.insertions, positionsOf(called.shifts, true));
  counts.deletions = countShifts(truth.deletions, positionsOf(called.shifts, false));
  counts.shifts = countShifts(positionsOf(truth), positionsOf(called));
  countEnds(truth, called, counts);
  return counts;
}

std::vector<int> shiftDistances(const TruthRow& truth, const CalledRead& called, int reach) {
  std::vector<int> distances;
  for (const ShiftMatch& match : matchShifts(positionsOf(truth), positionsOf(called), reach)) {
    distances.push_back(match.distance());
  }
  return distances;
}

}  // namespace velto
