#include "core/plain_real.h"

#include <locale>
#include <sstream>
#include <string>

namespace velto {
namespace {

// Not std::from_chars, which a widespread standard library lacks for real numbers.
template <typename Real>
bool read(std::string_view field, Real& value) {
  if (field.empty() || field.front() == '+') return false;
  if (field.find_first_not_of("0123456789+-.eE") != std::string_view::npos) return false;
  std::istringstream in{std::string(field)};
  in.imbue(std::locale::classic());
  in >> value;
  return !in.fail() && in.peek() == std::istringstream::traits_type::eof();
}

}  // namespace

bool readPlainReal(std::string_view field, float& value) { return read(field, value); }

bool readPlainReal(std::string_view field, double& value) { return read(field, value); }

}  // namespace velto
