// Entry of the workbench command `velto`: picks the subcommand and turns errors into exit statuses.
#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <iostream>
#include <string>

#include "seqio/output_error.h"
#include "workbench/check_model.h"
#include "workbench/evaluate.h"
#include "workbench/scan.h"
#include "workbench/simulate.h"
#include "workbench/train.h"

namespace {

// Exit statuses.
constexpr int kSuccess = 0;
constexpr int kFailure = 1;  // input, output or anything else went wrong; a closed pipe is quiet
constexpr int kUsage = 2;    // the command line is not understood

std::string usageMessage(const CLI::App*, const CLI::Error& error) {
  return std::string("velto: ") + error.what() + "\nRun with --help for more information.\n";
}

int runCommand(CLI::App& app, int argc, char** argv) {
  try {
    app.parse(argc, argv);
    return kSuccess;
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kSuccess : kUsage;
  } catch (const velto::OutputError& error) {
    if (!error.closedPipe()) std::cerr << "velto: " << error.what() << "\n";
    return kFailure;
  } catch (const std::exception& error) {
    std::cerr << "velto: " << error.what() << "\n";
    return kFailure;
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is an error of the write, not a signal
  CLI::App app("Coding regions and frameshifts of error-prone cDNA reads", "velto");
  app.set_version_flag("--version", std::string("velto ") + VELTO_VERSION);
  app.failure_message(usageMessage);
  app.require_subcommand(1);
  velto::addScanCommand(app);
  velto::addCheckModelCommand(app);
  velto::addSimulateCommand(app);
  velto::addTrainCommand(app);
  velto::addEvaluateCommand(app);
  return runCommand(app, argc, argv);
}
