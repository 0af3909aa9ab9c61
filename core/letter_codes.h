// From the letters of a read to base codes, and to the other strand.
#pragma once

#include <string_view>
#include <vector>

#include "velto/velto.h"

namespace velto {

// Overwrites `codes` with the base codes of the letters.
void codeLetters(std::string_view bases, Letters letters, std::vector<short>& codes);

// Turns base codes into those of the reverse complement, in place.
void reverseComplement(std::vector<short>& codes);

}  // namespace velto
