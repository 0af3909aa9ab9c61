// The corrected coding sequences and the proteins of a scan as FASTA.
#pragma once

#include <string>

#include "batch/scanned_read.h"
#include "predict/coding_sequence.h"

namespace velto {

// One record in one line of letters; nothing if the read is not coding.
void appendCodingFasta(const ScannedRead& read, std::string& text);

// Likewise; the proteins of a region that is split are named NAME.part1, NAME.part2 and so on.
void appendProteinFasta(const ScannedRead& read, InnerStops innerStops, std::string& text);

}  // namespace velto
