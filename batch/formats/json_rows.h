// The results of a scan as JSON Lines.
#pragma once

#include <string>

#include "batch/scanned_read.h"

namespace velto {

// One object with the columns of the table, null where they are empty, and the description; bytes
// that are no UTF-8 become replacement characters.
void appendJsonRow(const ScannedRead& read, std::string& text);

}  // namespace velto
