// Draws labelled windows of error-prone reads of one class, for boosting.
#pragma once

#include <cstddef>
#include <cstdint>

#include "training/fold_split.h"
#include "training/frames/class_reads.h"
#include "training/frames/window_set.h"

namespace velto {

struct SamplingPlan {
  std::size_t windows;   // wanted from reads of the class itself
  std::size_t maxDraws;  // reads drawn before the class counts as lacking reads
  int windowsPerRead;
  double noncodingFraction;  // of the reads
  double maxBorrowed;        // windows of other GC classes per window of the class itself
  double borrowedWeight;     // of a window, per step to another GC class
  double lossFractions[3];   // in frame, out of frame, outside the coding region
  RateMixture mixture;
};

// What a sample was made of.
struct SampleCounts {
  std::size_t reads = 0;          // of the class itself
  std::size_t borrowedReads = 0;  // of other GC classes
  bool lackedReads = false;       // others made up for reads that the class did not give
  std::size_t windows[3] = {};    // in frame, out of frame, outside the coding region
};

// Draws reads one after another, the k-th by Random::split(seed, k), and windows from those of the
// class and of the others in GC content. A class that lacks reads after plan.maxDraws takes the
// missing ones from the others. The result depends on its arguments alone.
SampleCounts sampleWindows(const TranscriptPool& pool, const ReadClass& readClass,
                           const SamplingPlan& plan, std::uint64_t seed, WindowSet& windows);

}  // namespace velto
