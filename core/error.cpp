#include "velto/velto.h"

namespace velto {
namespace {

std::string message(const std::string& file, long record, long line, const std::string& reason) {
  std::string text = file + ": ";
  if (record > 0) text += "record " + std::to_string(record);
  if (record > 0 && line > 0) text += ", ";
  if (line > 0) text += "line " + std::to_string(line);
  if (record > 0 || line > 0) text += ": ";
  return text + reason;
}

}  // namespace

Error::Error(const std::string& file, long record, long line, const std::string& reason)
    : std::runtime_error(message(file, record, line, reason)),
      file_(file),
      record_(record),
      line_(line) {}

}  // namespace velto
