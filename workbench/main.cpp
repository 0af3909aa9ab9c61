// Entry of the workbench command `velto`: picks the subcommand and turns errors into exit statuses.
#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "predict/model_card.h"
#include "seqio/output_file.h"
#include "seqio/signal_cleanup.h"
#include "workbench/check_model.h"
#include "workbench/decimal_numbers.h"
#include "workbench/evaluate.h"
#include "workbench/models.h"
#include "workbench/scan.h"
#include "workbench/show.h"
#include "workbench/simulate.h"
#include "workbench/train.h"

namespace {

// Exit statuses.
constexpr int kSuccess = 0;
constexpr int kFailure = 1;  // input, output or anything else went wrong; a closed pipe is quiet
constexpr int kUsage = 2;    // the command line is not understood

// What the command line is told to be wrong: an argument that means nothing to the program before
// whatever is missing because of it. Empty if every argument has a meaning.
std::string unknownArgument(const CLI::App& app) {
  const bool inSubcommand = !app.get_subcommands().empty();
  const CLI::App& place = inSubcommand ? *app.get_subcommands().front() : app;
  const std::vector<std::string> unknown = place.remaining();
  if (unknown.empty()) return "";
  const bool isOption = unknown.front().size() > 1 && unknown.front().front() == '-';
  if (isOption) return "there is no option '" + unknown.front() + "'";
  if (inSubcommand) return "'" + unknown.front() + "' is one argument too many";
  return "there is no subcommand '" + unknown.front() + "'";
}

// Help and version go to standard output, where a full device is an error as for any other output.
int answer(const CLI::App& app, const CLI::ParseError& error) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
    std::ostringstream text;
    app.exit(error, text, text);
    velto::OutputFile output("-");
    output.write(text.str());
    output.commit();
    return kSuccess;
  }
  const std::string unknown = unknownArgument(app);
  std::cerr << "velto: " << (unknown.empty() ? error.what() : unknown)
            << "\nRun with --help for more information.\n";
  return kUsage;
}

void addCommands(CLI::App& app) {
  app.set_version_flag("--version", std::string("velto ") + VELTO_VERSION + ", model format " +
                                        std::to_string(velto::kModelFormat));
  app.require_subcommand(1);
  velto::addScanCommand(app);
  velto::addShowCommand(app);
  velto::addModelsCommand(app);
  velto::addCheckModelCommand(app);
  velto::addSimulateCommand(app);
  velto::addTrainCommand(app);
  velto::addEvaluateCommand(app);
  velto::requireDecimalNumbers(app);
}

int parseAndRun(int argc, char** argv) {
  CLI::App app("Coding regions and frameshifts of error-prone cDNA reads", "velto");
  addCommands(app);
  try {
    app.parse(argc, argv);
    return kSuccess;
  } catch (const CLI::ParseError& error) {
    return answer(app, error);
  }
}

int runCommand(int argc, char** argv) {
  try {
    return parseAndRun(argc, argv);
  } catch (const velto::OutputError& error) {
    if (!error.closedPipe()) std::cerr << "velto: " << error.what() << "\n";
    return kFailure;
  } catch (const std::exception& error) {
    std::cerr << "velto: " << error.what() << "\n";
    return kFailure;
  }
}

// A stream that was closed before the start must not become the number of a file opened later,
// which its text would end up in. Reading and writing such a stream fails.
void occupyStreams() {
  for (const auto& [stream, mode] :
       {std::pair{STDIN_FILENO, O_WRONLY}, {STDOUT_FILENO, O_RDONLY}, {STDERR_FILENO, O_RDONLY}}) {
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", mode);
  }
}

}  // namespace

int main(int argc, char** argv) {
  occupyStreams();
  velto::cleanUpAtSignals();
  std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is an error of the write, not a signal
  return runCommand(argc, argv);
}
