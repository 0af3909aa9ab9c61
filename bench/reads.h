// The model and the reads that the benchmarks of the parts work on.
#pragma once

#include <string>
#include <vector>

namespace velto::bench {

// A model directory: the one named by the environment variable VELTO_BENCH_MODEL, otherwise one
// made up for the occasion in a temporary directory.
const std::string& modelDirectory();

// Some hundred reads of 300 to 800 bases: the first ones of the FASTA file named by
// VELTO_BENCH_READS, otherwise reads of the made-up species.
const std::vector<std::string>& reads();

}  // namespace velto::bench
