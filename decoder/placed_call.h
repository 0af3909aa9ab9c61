// From a placed frame path to the call that is reported.
#pragma once

#include <vector>

#include "core/call.h"

namespace velto {

// Sets the coding region of the call, and, unless there is none, the frame of every base and the
// frameshifts, from a placed frame path (one entry per codon step, 0 to 2 or kOffPath) with this
// score of a read of `length` bases. The frame changes at the base where the shift is reported, so
// that the bases of a codon that is broken by a shift keep the frame they were read in.
void callPath(const std::vector<int>& path, double score, int length, Call& call);

}  // namespace velto
