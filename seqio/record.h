// One sequence record as it stands in an input file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velto {

constexpr std::uint8_t kMaxPhred = 93;  // the most that FASTQ and SAM can write, as '~'

struct Record {
  std::string name;         // header up to its first blank or tab, without '>' or '@'
  std::string description;  // header after that blank or tab; empty for BAM
  std::string bases;  // letters, '-' and '*' as in the file; line ends, blanks and tabs removed
  long number = 0;    // 1-based place in its file; in BAM skipped records count too
  long line = 0;      // 1-based line of its header; 0 for BAM
  // Phred value of each base, 0 to kMaxPhred; empty if the file has none.
  std::vector<std::uint8_t> qualities = {};
};

}  // namespace velto
