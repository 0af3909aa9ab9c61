// The truth about simulated reads as a tab-separated table: written, and read back.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "simulation/read_simulator.h"

namespace velto {

// Consecutive coding bases of a read in one frame.
struct CodingInterval {
  int first;  // 0-based
  int last;   // 0-based inclusive
  int frame;  // 0 to 2, as SimulatedRead::frame
};

// Whether a table has a last column that names the strands of its reads.
enum class Strands { kAllPlus, kNamed };

// One line of the table. Positions are 0-based here and 1-based in the file, along the transcript's
// strand.
struct TruthRow {
  std::string read;
  int length = 0;  // bases of the read
  std::string transcript;
  Fragment fragment{0, 0};             // where the read was cut from the transcript
  std::vector<CodingInterval> coding;  // ascending; split at inserted bases and frame changes
  int start = -1;                      // first coding base; -1 when there is none
  int stop = -1;                       // last coding base; -1 when there is none
  bool startExact = false;             // the start codon stands whole in the read
  bool stopExact = false;              // the stop codon stands whole in the read
  std::vector<int> insertions;         // inserted bases, ascending
  std::vector<int> deletions;          // bases behind the gaps, ascending, one entry per lost base
  bool reversed = false;  // the read in its file is the reverse complement of what the row is about

  bool isCoding() const { return start >= 0; }
  // Frame marks per base as SimulatedRead::frame has them.
  std::vector<signed char> frames() const;
};

// The row of a read under this name.
TruthRow truthOf(const SimulatedRead& read, std::string name);

// First line of the table, with its line feed: the names of the columns.
std::string truthHeader(Strands strands = Strands::kAllPlus);

// One line of the table, with its line feed. Names must hold no tab and no line feed.
std::string truthLine(const TruthRow& row, Strands strands = Strands::kAllPlus);

// Reads a whole table. Throws InputError naming `file` and the line when the header line or a row
// is not of this format or its positions contradict each other.
std::vector<TruthRow> readTruthTable(std::istream& in, const std::string& file);

}  // namespace velto
