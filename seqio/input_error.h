// The error of a file that cannot be read as sequence records.
#pragma once

#include <stdexcept>
#include <string>

namespace velto {

// Its message reads "FILE: record N, line L: REASON".
class InputError : public std::runtime_error {
 public:
  // `path` "-" is named "standard input"; a `record` or `line` of 0 is left out.
  InputError(const std::string& path, long record, long line, const std::string& reason);
};

}  // namespace velto
