// Moves each frame change of a decoded path to the codon step at which the frame shifts.
#pragma once

#include <vector>

#include "model/vote_engine.h"

namespace velto {

// Moves every inner frame change of `path` (one entry per codon step, 0 to 2 or -1 off the path),
// in place, to the step at which a window read across it votes highest, as `judge` finds; the model
// has windows of `windowWidth` bases. `endStep` is the step of the path's end, which no change
// moves beyond. The change that enters the path and the one that leaves it stay, and so do changes
// whose window is too short near the read's start.
void placeShifts(TrialJudge& judge, int windowWidth, int endStep, std::vector<int>& path);

}  // namespace velto
