// From the letters of a read to base codes, and to the other strand.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "velto/velto.h"

namespace velto {

// Overwrites `codes` with the base codes of the letters.
void codeLetters(std::string_view bases, Letters letters, std::vector<short>& codes);

// How many of the letters, of one read, are no base.
long long countUnknown(std::string_view bases, Letters letters);

// Turns base codes into those of the reverse complement, in place.
void reverseComplement(std::vector<short>& codes);

// Share of G and C among all codes, the unknown ones included, 0 to 100; 0 for no codes.
double gcPercent(std::span<const short> codes);

}  // namespace velto
