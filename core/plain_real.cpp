#include "core/plain_real.h"

#include <charconv>
#include <cstdio>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <system_error>
#include <version>

namespace velto {
namespace {

// Slow, but std::from_chars lacks real numbers in a widespread standard library, and does not tell
// numbers that are too small from those that are too large.
template <typename Real>
bool readByStream(std::string_view field, Real& value) {
  std::istringstream in{std::string(field)};
  in.imbue(std::locale::classic());
  in >> value;
  return !in.fail() && in.peek() == std::istringstream::traits_type::eof();
}

template <typename Real>
bool read(std::string_view field, Real& value) {
  if (field.empty() || field.front() == '+') return false;
  if (field.find_first_not_of("0123456789+-.eE") != std::string_view::npos) return false;
#ifdef __cpp_lib_to_chars
  const char* const end = field.data() + field.size();
  const std::from_chars_result result = std::from_chars(field.data(), end, value);
  if (result.ec != std::errc::result_out_of_range) {
    return result.ec == std::errc() && result.ptr == end;
  }
#endif
  return readByStream(field, value);
}

template <typename Real>
void append(std::string& text, Real value) {
#ifdef __cpp_lib_to_chars
  char digits[32];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
#else
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out.precision(std::numeric_limits<Real>::max_digits10);
  out << value;
  text += out.str();
#endif
}

}  // namespace

bool readPlainReal(std::string_view field, float& value) { return read(field, value); }

bool readPlainReal(std::string_view field, double& value) { return read(field, value); }

void appendPlainReal(std::string& text, float value) { append(text, value); }

void appendPlainReal(std::string& text, double value) { append(text, value); }

void appendRounded(std::string& text, double value, int digits) {
  char buffer[64];
#ifdef __cpp_lib_to_chars
  const std::to_chars_result end =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits);
  text.append(buffer, end.ptr);
#else  // slower, and obeys the locale
  text.append(buffer, static_cast<std::size_t>(
                          std::snprintf(buffer, sizeof buffer, "%.*g", digits, value)));
#endif
}

}  // namespace velto
