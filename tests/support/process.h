// Runs a program as a process of its own and keeps what it wrote.
#pragma once

#include <string>
#include <vector>

namespace velto::test {

struct ProcessResult {
  int status = -1;  // exit status; 128 + signal number if a signal ended the process
  std::string out;  // standard output
  std::string err;  // standard error
};

// Runs `program` in `directory` with standard input from `input`, and waits for its end.
ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& directory, const std::string& input = "");

// Runs a line of the shell in `directory`, and waits for its end.
ProcessResult runShell(const std::string& line, const std::string& directory);

}  // namespace velto::test
