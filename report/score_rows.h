// The rows of a score file.
#pragma once

#include <ostream>
#include <vector>

namespace velto {

// Writes one row per base of a read of `length` base codes: the letter and its scores in the three
// frames, comma-separated; scores are [frame][base].
void writeScoreRows(std::ostream& out, const short* seq, int length,
                    const std::vector<double> (&scores)[3]);

}  // namespace velto
