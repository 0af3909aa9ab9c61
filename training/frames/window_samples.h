// Draws labelled windows of error-prone reads of one class, for boosting.
#pragma once

#include <cstdint>
#include <vector>

#include "model/read_class.h"
#include "simulation/read_simulator.h"
#include "training/frames/window_set.h"

namespace velto {

// The transcripts that reads are drawn from; not owned.
struct TranscriptPool {
  std::vector<const Transcript*> coding;
  std::vector<const Transcript*> noncoding;
};

// Bounds of the lengths of the fragments that are drawn for a class, in bases.
FragmentLengths readLengths(const ReadClass& readClass);

// Whether a read's length falls into the length class and window width of a class.
bool isOfLengthClass(const SimulatedRead& read, const ReadClass& readClass);

// GC class of a read.
int gcClassOf(const SimulatedRead& read);

// A read of roughly the lengths of a class: a fragment or, mostly where it is of those lengths and
// the class is one of window width 196, the whole transcript. Transcripts of up to 20,000 bases are
// read as a whole for the longest class.
SimulatedRead drawRead(const Transcript& transcript, const ReadClass& readClass,
                       const ErrorRates& rates, Random& random);

// A mixture of error rates.
struct RateShare {
  ErrorRates rates;
  double share;  // the shares of a mixture sum up to 1
};
using RateMixture = std::vector<RateShare>;
const ErrorRates& drawRates(const RateMixture& mixture, Random& random);

struct SamplingPlan {
  std::size_t windows;  // windows wanted from reads of the class itself
  std::size_t draws;    // most reads drawn before the class counts as lacking reads
  int windowsPerRead;
  double noncodingReads;  // share of reads from non-coding transcripts
  double borrowedShare;   // most windows of other GC classes per window of the class itself
  double borrowedWeight;  // of a window, per step to another GC class
  double shares[3];       // of the loss: in frame, out of frame, outside the coding region
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
// class and of the others in GC content. A class that lacks reads after plan.draws takes the
// missing ones from the others. The result depends on its arguments alone.
SampleCounts sampleWindows(const TranscriptPool& pool, const ReadClass& readClass,
                           const SamplingPlan& plan, std::uint64_t seed, WindowSet& windows);

}  // namespace velto
