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
  std::vector<std::string> decoders;  // to be trained; empty: all
  std::string outputPath;
  std::string heldBackPath;  // FASTA file of the transcripts that were held back; empty: none
  int geneticCode = 1;       // of the coding transcripts
  std::uint64_t seed = 1;
  bool quick = false;  // less work, somewhat less accuracy
  int threads = 0;     // 0: as many as the machine has
  bool quiet = false;
};

// Writes the files of the decoders and `model.json`. The bytes depend on transcripts, decoders,
// seed and `quick` alone. Refused records and classes that had to borrow reads are reported on
// standard error with hints, and so is progress: every line on a terminal, else one a minute.
// Throws InputError, TooLittleData and OutputError; nothing is left of the output then.
void train(const TrainOptions& options);

void addTrainCommand(CLI::App& app);

}  // namespace velto
