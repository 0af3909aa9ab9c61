// The error of output that cannot be written.
#pragma once

#include <cerrno>
#include <string>
#include <system_error>

#include "velto/velto.h"

namespace velto {

// Its message reads "FILE: ACTION: REASON", "-" being named "standard output".
class OutputError : public Error {
 public:
  // `action` is for example "cannot write"; `errorNumber` an errno value.
  OutputError(const std::string& path, const std::string& action, int errorNumber)
      : Error(path == "-" ? "standard output" : path, 0, 0,
              action + ": " + std::generic_category().message(errorNumber)),
        errorNumber_(errorNumber) {}

  // True if the reader of a pipe went away, as `head` does; needs SIGPIPE to be ignored.
  bool closedPipe() const { return errorNumber_ == EPIPE; }

 private:
  int errorNumber_;
};

}  // namespace velto
