// One sequence record as it stands in an input file.
#pragma once

#include <string>

namespace velto {

struct Record {
  std::string name;         // header up to its first blank or tab, without '>' or '@'
  std::string description;  // header after that blank or tab; empty for BAM
  std::string bases;        // letters as in the file; line ends, blanks and tabs removed
  long number = 0;          // 1-based place in its file; in BAM skipped records count too
  long line = 0;            // 1-based line of its header; 0 for BAM
};

}  // namespace velto
