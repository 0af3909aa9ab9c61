// Numbers inside the text of an option.
#pragma once

#include <CLI/CLI.hpp>
#include <charconv>
#include <string>
#include <string_view>

namespace velto {

// The whole text as a number. Throws CLI::ValidationError naming the option.
template <typename Number>
Number parseNumber(std::string_view text, const std::string& option) {
  Number value{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc() || result.ptr != end) {
    throw CLI::ValidationError(option, "'" + std::string(text) + "' is not a number");
  }
  return value;
}

}  // namespace velto
