// What a decoder says about one read.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "velto/velto.h"

namespace velto {

// The answer of a decoder. All positions are 0-based in reading direction; the fields mean what
// those of Prediction mean.
struct Call {
  bool coding = false;
  std::string model;         // which of the decoder's models served; may be empty
  double score = 0.0;        // the decoder's own, more is better
  double strandScore = 0.0;  // likewise; of the two strands of a read, that with the higher one is
                             // called
  double strandTrust = 0.0;  // by how much more this strand is the right one than the difference of
                             // strand scores says, as natural logarithm of odds
  double probability = std::numeric_limits<double>::quiet_NaN();
  int start = -1;                       // first base of the region's first codon; -1 unless coding
  int stop = -1;                        // last base; may lie up to two bases behind the read
  std::vector<std::int8_t> frame;       // [base] 0 to 2, or -1; empty unless coding
  std::vector<Frameshift> frameshifts;  // by position
  std::vector<double> scores[3];        // [frame][base]; empty unless wished for

  void clear() { *this = Call(); }
};

}  // namespace velto
