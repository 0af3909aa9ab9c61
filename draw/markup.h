// Text and numbers inside HTML and SVG.
#pragma once

#include <string>
#include <string_view>

namespace velto {

// Any bytes as text of one line. Replaced by U+FFFD are bytes that are not UTF-8, control
// characters, characters that turn the direction of writing, and what XML does not allow.
std::string printable(std::string_view bytes);

// Any bytes as the content of an element or of a quoted attribute: printable, markup as entities.
std::string escaped(std::string_view bytes);

// Characters of UTF-8 text.
std::size_t charactersOf(std::string_view text);

// The number rounded to `decimals` (0 to 6) decimals without trailing zeros, whatever the locale;
// halves away from zero. "0" for NaN and for numbers beyond 10^12.
std::string decimal(double number, int decimals = 1);

// A count with its thousands set apart by narrow no-break spaces: 12 345.
std::string grouped(long long count);

// name="value" with a blank before it; the value is escaped.
std::string attribute(std::string_view name, std::string_view value);
std::string attribute(std::string_view name, double value);

}  // namespace velto
