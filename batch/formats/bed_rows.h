// The coding regions of a scan as BED with twelve columns.
#pragma once

#include <string>

#include "batch/scanned_read.h"

namespace velto {

// One line, whose blocks are all bases of the coding region but the inserted ones; nothing if the
// read is not coding.
void appendBedRow(const ScannedRead& read, std::string& text);

}  // namespace velto
