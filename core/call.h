// What a decoder says about one read.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

namespace velto {

// An inserted base, or a base lost just before `position`.
struct CallShift {
  enum class Kind { kInsertion, kDeletion };
  Kind kind;
  int position;  // 0-based base of the read
  // 0 to 1; NaN where the decoder gives none.
  double confidence = std::numeric_limits<double>::quiet_NaN();
};

// The answer of a decoder. All positions are 0-based in reading direction.
struct Call {
  bool coding = false;
  double score = 0.0;  // the decoder's own, more is better
  // That the read has a coding region, 0 to 1; NaN where the decoder gives none.
  double probability = std::numeric_limits<double>::quiet_NaN();
  int start = -1;                 // first base of the coding region; -1 unless coding
  int stop = -1;                  // last base; may lie up to two bases behind the read
  std::vector<std::int8_t> frame; // [base] reading frame 0 to 2: codons begin at bases p with
                                  // p mod 3 = frame; -1 off the region and at inserted bases;
                                  // empty unless coding
  std::vector<CallShift> frameshifts;  // by position

  void clear() { *this = Call(); }
};

}  // namespace velto
