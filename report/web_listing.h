// The web listing of one prediction: marks, path and window scores of each frame as plain rows.
#pragma once

#include <ostream>

#include "driver/web_predict.h"

namespace velto {

// Writes the listing of a predicted object whose stop codons are already marked in lay.met. Leaves
// the precision of `out` at 3 if any score was written.
void writeWebListing(std::ostream& out, const WebPredict& result);

}  // namespace velto
