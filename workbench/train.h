// The subcommand `velto train`: a model directory from transcripts.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

namespace velto {

struct TrainOptions {
  std::vector<std::string> codingFiles;
  std::vector<std::string> noncodingFiles;
  std::string outputPath;
  std::uint64_t seed = 1;
  bool quick = false;  // less work, somewhat less accuracy
  int threads = 0;     // 0: as many as the machine has
  bool quiet = false;
};

// Writes the sixteen parameter files, the sixteen matrix files and `model.json`. The bytes depend
// on transcripts, seed and `quick` alone. Refused records and classes that had to borrow reads are
// reported on standard error with hints, and so is progress: every line on a terminal, else one a
// minute. Throws InputError, TooLittleData and
// OutputError; nothing is left of the output then.
void train(const TrainOptions& options);

void addTrainCommand(CLI::App& app);

}  // namespace velto
