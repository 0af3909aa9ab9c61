// Self-contained HTML pages: no script, nothing from elsewhere.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velto {

// A whole HTML document (also well-formed XML) with the style of pages and drawings. The title is
// any bytes, `body` is markup. A content-security policy forbids scripts and whatever is not in the
// document itself.
std::string htmlPage(std::string_view title, const std::string& body);

// A table of two columns, names and values; both may be any bytes.
using Facts = std::vector<std::pair<std::string, std::string>>;
std::string factTable(const Facts& facts);

// Both drawings; the page shows the one that fits its width.
std::string wideOrNarrow(const std::string& wide, const std::string& narrow);

}  // namespace velto
