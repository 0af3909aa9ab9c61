// The name of a read as each text format can hold it.
#pragma once

#include <string>
#include <string_view>

#include "batch/scanned_read.h"

namespace velto {

// A byte that a format cannot hold becomes '%' and two hexadecimal digits. A record without a name
// is called "record" with its ordinal, but in the table, where the name stays empty.

// Table: all but control characters.
std::string tsvName(const ScannedRead& read);

// FASTA, and the headers of the score rows: all but control characters and blanks.
std::string fastaName(const ScannedRead& read);

// BED: as FASTA, but never "#", "track" or "browser" at the beginning, where readers would pass
// over the line: the first letter is replaced then.
std::string bedName(const ScannedRead& read);

// GFF3: letters, digits and the marks that the format allows in a sequence's name. A repeated name
// gets a blank and its ordinal, which no name in a FASTA file can have, so that it is unique.
std::string gff3Name(const ScannedRead& read);

// Any text that is shown in one line.
std::string withoutControlCharacters(std::string_view text);

}  // namespace velto
