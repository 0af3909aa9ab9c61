// The window scores of a scan, base by base.
#pragma once

#include <string>

#include "batch/scanned_read.h"

namespace velto {

// A line ">NAME STRAND", then the rows of the one-read score file along the strand; nothing if the
// read was not predicted. The prediction must hold scores.
void appendScoreRows(const ScannedRead& read, Letters letters, std::string& text);

}  // namespace velto
