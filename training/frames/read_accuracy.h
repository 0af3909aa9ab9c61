// How well a decoded path covers the true coding bases of reads, summed over reads.
#pragma once

#include <vector>

#include "decoder/coding_region.h"
#include "simulation/read_simulator.h"

namespace velto {

// Counts over reads; sums of whole numbers, so that the order of summing does not matter.
struct AccuracyTally {
  long reads = 0;
  long readsCalled = 0;
  long bases = 0;
  long coding = 0;        // bases truly coding
  long called = 0;        // bases called coding
  long codingCalled = 0;  // both
  long inFrame = 0;       // called in the frame that they truly code in
  long wholeRegions = 0;  // reads that hold a whole coding region, start and stop codon
  long exactRegions = 0;  // of these, called with exactly this start and stop

  void add(const AccuracyTally& other);

  double frameRecall() const;     // share of coding bases called in the right frame
  double framePrecision() const;  // share of called bases in the right frame
  double frameF1() const;         // harmonic mean of the two; 0 when nothing is right
  double correlation() const;  // of truly coding and called coding over all bases; 0 if undefined
  double callRate() const;     // share of reads with a call
  double exactRate() const;    // share of whole regions found exactly
};

// Adds one read with its decoded path (frame of each codon step) and region.
void tallyRead(const SimulatedRead& truth, const std::vector<int>& path, const CodingRegion& region,
               AccuracyTally& tally);

}  // namespace velto
