// The per-base score file of one prediction.
#pragma once

#include <ostream>
#include <vector>

#include "driver/web_predict.h"

namespace velto {

// Writes one row per base of a predicted object: the letter and the window score of the codon that
// covers it in each frame, comma-separated.
void writeScoreFile(std::ostream& out, const WebPredict& result);

// Writes the same rows for a read of `length` base codes with scores [frame][codon step].
void writeScoreRows(std::ostream& out, const short* seq, int length,
                    const std::vector<double> (&scores)[3]);

}  // namespace velto
