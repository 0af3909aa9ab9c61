#include "workbench/decimal_numbers.h"

#include <charconv>
#include <cmath>
#include <regex>
#include <string>

namespace velto {
namespace {

bool isFiniteDecimal(const std::string& text) {
  double value = 0.0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  return result.ec == std::errc() && result.ptr == end && std::isfinite(value);
}

CLI::Validator decimalNumber() {
  static const std::regex leadingZeros("^(-?)0+(?=[0-9])");
  const auto check = [](std::string& text) -> std::string {
    if (!isFiniteDecimal(text)) return "'" + text + "' is not a finite decimal number";
    text = std::regex_replace(text, leadingZeros, "$1");
    return "";
  };
  return CLI::Validator(check, "");
}

bool isNumeric(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  return type.starts_with("INT") || type.starts_with("UINT") || type.starts_with("FLOAT");
}

}  // namespace

void requireDecimalNumbers(CLI::App& app) {
  for (CLI::App* command : app.get_subcommands({})) {
    for (CLI::Option* option : command->get_options()) {
      if (isNumeric(*option)) option->transform(decimalNumber());
    }
  }
}

CLI::Validator atLeast(int least) {
  const auto check = [least](const std::string& text) -> std::string {
    double value = 0.0;
    const bool isNumber = CLI::detail::lexical_cast(text, value);
    return isNumber && value >= least ? "" : "must be " + std::to_string(least) + " or more";
  };
  return CLI::Validator(check, "");
}

}  // namespace velto
