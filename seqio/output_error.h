// The error of output that cannot be written.
#pragma once

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace velto {

// Its message reads "FILE: ACTION: REASON", "-" being named "standard output".
class OutputError : public std::runtime_error {
 public:
  // `action` is for example "cannot write"; `errorNumber` an errno value.
  OutputError(const std::string& path, const std::string& action, int errorNumber)
      : std::runtime_error((path == "-" ? "standard output" : path) + ": " + action + ": " +
                           std::generic_category().message(errorNumber)),
        errorNumber_(errorNumber) {}

  // True if the reader of a pipe went away, as `head` does; needs SIGPIPE to be ignored.
  bool closedPipe() const { return errorNumber_ == EPIPE; }

 private:
  int errorNumber_;
};

}  // namespace velto
