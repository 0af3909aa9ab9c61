// The coding region of a prediction with its frameshifts undone.
#pragma once

#include <vector>

#include "velto/velto.h"

namespace velto {

constexpr int kLostBase = -1;

// The read position (0-based on the predicted strand) of every base of the corrected coding
// sequence, kLostBase for a lost one: inserted bases are left out; whole codons only. Empty unless
// the prediction is coding.
std::vector<int> correctedPositions(const Prediction& prediction);

}  // namespace velto
