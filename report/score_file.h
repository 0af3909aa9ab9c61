// The per-base score file of one prediction.
#pragma once

#include <ostream>

#include "driver/web_predict.h"

namespace velto {

// Writes one row per base of a predicted object: the letter and the window score of the codon that
// covers it in each frame, comma-separated.
void writeScoreFile(std::ostream& out, const WebPredict& result);

}  // namespace velto
