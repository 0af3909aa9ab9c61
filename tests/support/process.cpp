#include "tests/support/process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/temp_dir.h"

namespace velto::test {
namespace {

// Connects a stream of the child process to a file.
void redirect(int stream, const std::string& file, int flags) {
  const int descriptor = open(file.c_str(), flags, 0600);
  if (descriptor < 0 || dup2(descriptor, stream) < 0) _exit(126);
}

[[noreturn]] void becomeProgram(const std::string& program, std::vector<std::string> arguments,
                                const std::string& directory, const TempDir& streams) {
  constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;
  redirect(STDIN_FILENO, streams.file("in"), O_RDONLY);
  redirect(STDOUT_FILENO, streams.file("out"), kWrite);
  redirect(STDERR_FILENO, streams.file("err"), kWrite);
  if (chdir(directory.c_str()) != 0) _exit(126);
  arguments.insert(arguments.begin(), program);
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  execv(program.c_str(), argv.data());
  _exit(127);
}

}  // namespace

ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& directory, const std::string& input) {
  const TempDir streams;
  writeFile(streams.file("in"), input);
  const pid_t child = fork();
  if (child == 0) becomeProgram(program, arguments, directory, streams);
  ProcessResult result;
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) return result;
  result.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  result.out = readFile(streams.file("out"));
  result.err = readFile(streams.file("err"));
  return result;
}

ProcessResult runShell(const std::string& line, const std::string& directory) {
  return runProcess("/bin/sh", {"-c", line}, directory);
}

}  // namespace velto::test
