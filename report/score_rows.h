// The rows of a score file.
#pragma once

#include <string>
#include <vector>

namespace velto {

// One row per base of a read of `length` base codes: the letter and its scores in the three frames,
// comma-separated; scores are [frame][base].
std::string scoreRows(const short* seq, int length, const std::vector<double> (&scores)[3]);

}  // namespace velto
