// Prints the marks of a layout as rows of characters.
#pragma once

#include <ostream>

#include "decoder/layout.h"

namespace velto {

// Writes start and stop, known errors, known classes, ATG marks, known path and predicted classes,
// one character a step, and an empty line.
void printLayout(std::ostream& out, const layout& lay);

}  // namespace velto
