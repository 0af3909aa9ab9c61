// Texts of streams that may hold anything.
#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <string>

namespace velto {

// The rest of a stream, or nothing if it has more than `most` bytes: no file takes more memory.
std::optional<std::string> textUpTo(std::istream& in, std::size_t most);

}  // namespace velto
