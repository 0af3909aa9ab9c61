// Groups transcripts that share sequence, as the isoforms of a gene do.
#pragma once

#include <cstddef>
#include <vector>

#include "simulation/transcript.h"

namespace velto {

// Number of the group of each transcript, from 0. Two transcripts are of one group when they share
// 31 bases exactly, directly or by way of others. Stretches that more than twenty transcripts hold
// are repeats rather than exons and join nothing. A quarter of all stretches, chosen by their
// bases, is looked at: shared exons have many. 16 bytes of memory for each of these.
std::vector<std::size_t> sharedSequenceGroups(const std::vector<const Transcript*>& transcripts);

}  // namespace velto
