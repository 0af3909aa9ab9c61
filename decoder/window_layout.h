// The rule by which the scored windows of one frame are laid out step by step.
#pragma once

#include <cstddef>
#include <vector>

#include "decoder/layout.h"
#include "model/window_vote.h"

namespace velto {

// Where the windows of one frame lie.
struct FrameWindows {
  int length;  // bases of the read
  int half;    // codons; the centre codon is codon number half of its window
  int frame;

  // Windows of at least half + 2 codons inside the read.
  int whole() const {
    const int room = length - 3 * half - 6 - frame;
    return room < 0 ? 0 : room / 3 + 1;
  }
};

inline int classOf(double score) { return windowClass(score); }
inline int classOf(signed char code) { return code; }

// Calls append(code, vote) for the class code of every whole window of the frame and for the first
// one that is not whole. `scored` holds the votes of the windows that are scored, as score or as
// class code; the windows behind them take over `last`, the vote of the window that was called
// last, of whatever frame. A stop codon in a window's centre keeps it from being called.
// isStop(p) tells whether a stop codon begins at base p of the read.
template <typename Vote, typename IsStop, typename Append>
void layOutWindows(const FrameWindows& windows, const std::vector<Vote>& scored,
                   const IsStop& isStop, Vote& last, const Append& append) {
  const int whole = windows.whole();
  int centre = windows.frame + 3 * windows.half;
  for (int k = 0; k < whole; ++k, centre += 3) {
    if (isStop(centre)) {
      append(kStopCodon, static_cast<Vote>(kNoWindowScore));
    } else {
      if (static_cast<size_t>(k) < scored.size()) last = scored[static_cast<size_t>(k)];
      append(classOf(last), last);
    }
  }
  append(isStop(centre) ? kStopCodon : kNoWindow, static_cast<Vote>(kNoWindowScore));
}

}  // namespace velto
