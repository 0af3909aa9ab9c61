// How much of a file is looked at to learn what is to be known of it.
#pragma once

#include <cstddef>

namespace velto {

// The sample is the reads that a file begins with, up to the one, or the batch of reads, that
// brings it to this many reads or bases.
constexpr std::size_t kSampleReads = 4096;
constexpr std::size_t kSampleBases = 4'000'000;

}  // namespace velto
