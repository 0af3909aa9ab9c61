// Numbers of millionths as they are printed with six significant digits.
#pragma once

#include <string>

namespace velto {

constexpr double kMillion = 1e6;

// True if another number that differs from this one by less than 1e-10 may print other digits: the
// number lies halfway between two of six digits, or so close to 0 that it prints more decimals than
// millionths have.
bool isRoundingEdge(int millionths);

// Appends the text that an output stream of the usual precision writes. Whole millionths that are
// no rounding edge are written faster than others.
void appendSixDigits(std::string& text, double number);

}  // namespace velto
