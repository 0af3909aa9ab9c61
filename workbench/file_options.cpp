#include "workbench/file_options.h"

#include <algorithm>

#include "seqio/file_identity.h"

namespace velto {
namespace {

std::vector<std::string> withoutEmpty(std::vector<std::string> names) {
  names.erase(std::remove(names.begin(), names.end(), ""), names.end());
  return names;
}

}  // namespace

CLI::Validator fileName() {
  const auto check = [](const std::string& name) -> std::string {
    return name.empty() ? "a file needs a name" : "";
  };
  return CLI::Validator(check, "");
}

void requireDistinctFiles(const std::vector<std::string>& inputs,
                          const std::vector<std::string>& outputs) {
  const std::string clash = clashOf(withoutEmpty(inputs), withoutEmpty(outputs));
  if (!clash.empty()) throw CLI::ValidationError(clash);
}

}  // namespace velto
