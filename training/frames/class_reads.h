// Error-prone reads of one class, drawn from transcripts.
#pragma once

#include <vector>

#include "core/random.h"
#include "model/read_class.h"
#include "simulation/read_simulator.h"

namespace velto {

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

// A mixture of error rates; the fractions sum up to 1.
struct WeightedRates {
  ErrorRates rates;
  double fraction;  // of the reads
};
using RateMixture = std::vector<WeightedRates>;
const ErrorRates& drawRates(const RateMixture& mixture, Random& random);

}  // namespace velto
