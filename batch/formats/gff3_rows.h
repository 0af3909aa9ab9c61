// The coding regions of a scan as GFF3.
#pragma once

#include <string>

#include "batch/scanned_read.h"

namespace velto {

// The first line of the file.
std::string gff3Header();

// The bounds of the read, an mRNA over the whole read and the lines of its CDS; nothing if the read
// is not coding. An inserted base is a gap between two lines of the CDS, a codon that lost a base
// is in no line. Coordinates are those of the read as given; the errors in the attributes count
// along the strand.
void appendGff3Rows(const ScannedRead& read, std::string& text);

}  // namespace velto
