// The prediction of one read as it is judged: a frame for every called base, the shifts, the ends.
#pragma once

#include <cstdint>
#include <vector>

#include "simulation/read_simulator.h"

namespace velto {

// What a model says about a read. Called bases are those from start to stop that belong to a codon:
// every base but the reported insertions.
struct CalledRead {
  std::vector<std::int8_t> frame;   // per base, as SimulatedRead::frame; -1 where nothing is called
  std::vector<FrameShift> shifts;  // as the text report lists them, in order of position
  int start = -1;                  // first base of the coding region; -1 when nothing was called
  int stop = -1;                   // last base of the coding region, as reported; -1 likewise

  bool isCoding() const { return start >= 0; }
};

}  // namespace velto
