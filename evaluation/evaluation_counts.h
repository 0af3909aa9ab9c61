// What is counted of a prediction against the truth; all figures of an evaluation are ratios of it.
#pragma once

#include <vector>

#include "evaluation/called_read.h"
#include "simulation/truth_table.h"

namespace velto {

// How far a called frameshift may lie from the true one, in bases.
constexpr int kShiftReaches[] = {15, 30};
constexpr int kReaches = 2;

// True, called and matched frameshifts of one sort.
struct ShiftCounts {
  long known = 0;
  long called = 0;
  long matched[kReaches] = {};  // pairs within each of kShiftReaches
};

// Counts of one read or of many. A base is truly coding, or called, when it belongs to a codon:
// inserted bases are neither.
struct EvaluationCounts {
  long reads = 0;
  long noncodingReads = 0;   // without any coding base
  long noncodingCalled = 0;  // of these, with a call

  long bases = 0;
  long coding = 0;   // truly coding bases
  long called = 0;   // called bases
  long both = 0;     // truly coding and called
  long neither = 0;  // not coding and not called
  long inFrame = 0;  // of `both`, those whose called frame is the true one

  ShiftCounts shifts;      // matched whatever their kind
  ShiftCounts insertions;  // matched among themselves
  ShiftCounts deletions;   // matched among themselves

  long startsInside = 0;  // reads that hold the whole true start codon
  long startsExact = 0;   // of these, called to start at its first base
  long stopsInside = 0;   // reads that hold the whole true stop codon
  long stopsExact = 0;    // of these, called to stop at its last base
  long bothInside = 0;    // reads that hold both codons whole
  long bothExact = 0;     // of these, start and stop exact

  EvaluationCounts& operator+=(const EvaluationCounts& other);
};

// Counts of one read, whose truth and prediction must have the same length.
EvaluationCounts countRead(const TruthRow& truth, const CalledRead& called);

// Called minus true position of every pair when shifts of any kind are matched within `reach`.
std::vector<int> shiftDistances(const TruthRow& truth, const CalledRead& called, int reach);

}  // namespace velto
