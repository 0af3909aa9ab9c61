// What is counted of a prediction against the truth; all figures of an evaluation are ratios of it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/confusion_counts.h"
#include "simulation/truth_table.h"
#include "velto/velto.h"

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

// Counts of one read or of many.
struct EvaluationCounts : ConfusionCounts {
  long reads = 0;
  long noncodingReads = 0;   // without any coding base
  long noncodingCalled = 0;  // of these, with a call

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

// Sum over the counts in these places; a place may occur several times.
EvaluationCounts sumOf(const std::vector<EvaluationCounts>& counts,
                       std::span<const std::uint32_t> places);

// What is known of the coding region of a read; a view.
struct RegionTruth {
  std::span<const std::int8_t> frame;  // per base, as SimulatedRead::frame
  int start;                           // first coding base; -1 when there is none
  int stop;                            // last coding base; -1 likewise
  bool startInside;                    // the start codon stands whole in the read
  bool stopInside;                     // the stop codon likewise
};

// Counts of one read, but for its frameshifts. `frame`, `start` and `stop` are those of a
// prediction of the read.
EvaluationCounts countRegion(const RegionTruth& truth, std::span<const std::int8_t> frame,
                             int start, int stop);

// All counts of one read; `called` is a prediction of it along the read as it is.
EvaluationCounts countRead(const TruthRow& truth, const Prediction& called);

// Called minus true position of every pair when shifts of any kind are matched within `reach`.
std::vector<int> shiftDistances(const TruthRow& truth, const Prediction& called, int reach);

}  // namespace velto
