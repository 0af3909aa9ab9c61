// The rows of a score file.
#pragma once

#include <string>
#include <vector>

namespace velto {

// Appends one row per base of a read of `length` base codes: the letter and its scores in the three
// frames, comma-separated; scores are [frame][base].
void appendScoreRows(const short* seq, int length, const std::vector<double> (&scores)[3],
                     std::string& rows);

}  // namespace velto
