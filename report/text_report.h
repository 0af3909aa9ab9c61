// The text report of one prediction.
#pragma once

#include <ostream>

#include "driver/web_predict.h"

namespace velto {

// Writes the report of a predicted object; a display line holds `width` characters, marks included.
// Leaves the precision of `out` at 5.
void writeTextReport(std::ostream& out, const WebPredict& result, unsigned width);

}  // namespace velto
