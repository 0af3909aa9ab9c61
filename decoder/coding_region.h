// From a placed frame path to the coding region that is reported.
#pragma once

#include <vector>

namespace velto {

// A path with this score or a lower one is no coding region.
constexpr double kLeastCodingScore = -9.0;

// First and last base of the first coding run of a path, 0-based; both -1 when nothing was found.
// stop is 0 when the run begins at the very last step.
struct CodingRegion {
  int start;
  int stop;
};

// The coding region of a path (one entry per codon step) with this score.
CodingRegion codingRegion(const std::vector<int>& path, double score);

}  // namespace velto
