// Poly-A tails of reads, and poly-T heads of those of the other strand.
#pragma once

#include <span>

namespace velto {

// Makes unknown the ten middle bases of every stretch of 30 of which 25 or more are A, or T: the
// model knows transcripts, and would take dozens of like bases for strong evidence of whatever has
// a few of them. The same bases are hidden on either strand; base codes as in core/base_code.h.
void hidePolyA(std::span<short> codes);

}  // namespace velto
