// What the reads of a run are like: distributions, frameshifts and types.
#pragma once

#include <array>
#include <string>

#include "batch/histogram.h"
#include "batch/scanned_read.h"
#include "predict/coding_sequence.h"

namespace velto {

constexpr int kMostShifts = 30;  // of a read; more are counted as that many

// Sums over reads in any order make the same figures.
class RunFigures {
 public:
  RunFigures();

  void add(const ScannedRead& read);
  void add(const RunFigures& other);

  // Of reads that have bases, and of those that were predicted.
  const Histogram& lengths() const { return lengths_; }
  const Histogram& gcPercents() const { return gcPercents_; }
  const Histogram& scores() const { return scores_; }
  const Histogram& probabilities() const { return probabilities_; }  // empty: none given

  // Of coding reads.
  const Histogram& shiftsPerRead() const { return shiftsPerRead_; }
  long long codingBases() const { return codingBases_; }  // of the reads, inside coding regions
  long insertions() const { return insertions_; }
  long deletions() const { return deletions_; }
  long innerStops() const { return innerStops_; }
  long readsOf(CodingType type) const { return types_[static_cast<size_t>(type)]; }

  // 0 without coding bases.
  double perKilobase(long shifts) const;

 private:
  void addCoding(const ScannedRead& read);

  Histogram lengths_;
  Histogram gcPercents_;
  Histogram scores_;
  Histogram probabilities_;
  Histogram shiftsPerRead_;
  long long codingBases_ = 0;
  long insertions_ = 0;
  long deletions_ = 0;
  long innerStops_ = 0;
  std::array<long, kCodingTypes> types_ = {};
};

// All figures as a JSON object; each distribution has the edges of its bins and two lists of
// counts.
std::string figuresJson(const RunFigures& figures);

}  // namespace velto
