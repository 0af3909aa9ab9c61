// What the one-read program's FASTA reader takes from a stream.
#pragma once

#include <istream>
#include <string>
#include <vector>

namespace velto {

// Reads of fewer bases are refused by the one-read program.
constexpr int kLeastBases = 30;

struct FastaRead {
  std::string header;        // the first line without '>', empty if the file has no header line
  std::vector<short> codes;  // base codes of all other characters but line breaks
};

// Reads one record to the end of the stream; a later '>' line counts as bases. Never fails. Without
// a header line the first character is kept even if it is a line break.
FastaRead readFasta(std::istream& in);

}  // namespace velto
