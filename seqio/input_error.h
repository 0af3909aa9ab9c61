// The error of a file that cannot be read.
#pragma once

#include <string>

#include "velto/velto.h"

namespace velto {

class InputError : public Error {
 public:
  // `path` "-" is named "standard input"; a `record` or `line` of 0 is left out of the message.
  InputError(const std::string& path, long record, long line, const std::string& reason)
      : Error(path == "-" ? "standard input" : path, record, line, reason) {}
};

}  // namespace velto
