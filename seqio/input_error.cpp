#include "seqio/input_error.h"

namespace velto {
namespace {

std::string describe(const std::string& path, long record, long line, const std::string& reason) {
  std::string text = path == "-" ? "standard input" : path;
  text += ": ";
  if (record > 0) text += "record " + std::to_string(record);
  if (line > 0) text += (record > 0 ? ", line " : "line ") + std::to_string(line);
  if (record > 0 || line > 0) text += ": ";
  return text + reason;
}

}  // namespace

InputError::InputError(const std::string& path, long record, long line, const std::string& reason)
    : std::runtime_error(describe(path, record, line, reason)) {}

}  // namespace velto
