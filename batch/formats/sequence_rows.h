// The corrected coding sequences and the proteins of a scan as FASTA.
#pragma once

#include <string>

#include "batch/scanned_read.h"

namespace velto {

// One record in one line of letters each; nothing if the read is not coding.
void appendCodingFasta(const ScannedRead& read, std::string& text);
void appendProteinFasta(const ScannedRead& read, std::string& text);

}  // namespace velto
