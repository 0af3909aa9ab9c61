// The key to the signs of a drawn read.
#pragma once

#include <string>

#include "draw/drawn_read.h"
#include "draw/lanes.h"

namespace velto {

struct Legend {
  std::string svg;
  double height;  // pixels
};

// Entries for what the drawing shows, in rows from (left, top) up to `right`.
Legend readLegend(const Prediction& prediction, const LaneCurves& curves, double left, double right,
                  double top);

}  // namespace velto
