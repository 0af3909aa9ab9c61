// Real numbers in texts, alike whatever the locale and the standard library.
#pragma once

#include <string>
#include <string_view>

namespace velto {

// Reads a whole field of digits, sign, point and exponent, as in "-1.5e-3"; false for any other
// text, a leading plus sign or blank included, and for a number that is too large.
bool readPlainReal(std::string_view field, float& value);
bool readPlainReal(std::string_view field, double& value);

// Appends digits that read back as the same number, the fewest if the standard library can tell.
void appendPlainReal(std::string& text, float value);
void appendPlainReal(std::string& text, double value);

// Appends up to so many significant digits, 1 to 17, as an output stream of that precision does.
void appendRounded(std::string& text, double value, int digits);

}  // namespace velto
