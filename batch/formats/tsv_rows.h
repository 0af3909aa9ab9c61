// The table of a scan: one tab-separated row per record.
#pragma once

#include <string>

#include "batch/scanned_read.h"

namespace velto {

// The names of the columns, with line feed.
std::string tsvHeader();

void appendTsvRow(const ScannedRead& read, std::string& text);

}  // namespace velto
