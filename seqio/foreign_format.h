// Formats that are not read, named so that the user knows what to do.
#pragma once

#include <string>
#include <string_view>

namespace velto {

// What a file is that begins with these (decompressed) bytes, and how to make it readable; "" if it
// is none of the formats known here. A few hundred bytes are enough.
std::string foreignFormat(std::string_view start);

}  // namespace velto
