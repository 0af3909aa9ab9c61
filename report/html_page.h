// The HTML page of one prediction: coloured sequence and frame layout.
#pragma once

#include <ostream>

#include "driver/web_predict.h"

namespace velto {

// Writes the page of a predicted object in blocks of `width` bases; a width below 1 means 60. The
// header is written as it is. The page is left unterminated.
void writeHtmlPage(std::ostream& out, const WebPredict& result, int width);

}  // namespace velto
