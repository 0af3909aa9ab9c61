// Smooths the predicted window classes of a layout.
#pragma once

#include "decoder/layout.h"

namespace velto {

// In each frame: drops coding runs of 1 to 3 steps without coding steps around them, fills gaps of
// 1 to 6 non-coding steps with at least 7 coding steps among the five before and the five behind,
// and fills gaps of 1 to 9 steps before a stop when the twelve steps before the gap are coding and
// no other frame is coding inside it; then the last rule once more up to the end of the frame.
void smoothLayout(layout& lay);

}  // namespace velto
