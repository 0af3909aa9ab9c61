// The subcommand `velto simulate`: labelled error-prone reads from transcripts.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "training/read_simulator.h"

namespace velto {

struct SimulateOptions {
  std::vector<std::string> codingFiles;
  std::vector<std::string> noncodingFiles;
  ErrorRates rates;
  std::optional<FragmentLengths> lengths;  // nothing: whole transcripts
  std::optional<std::uint64_t> reads;      // each from a random transcript; nothing: perTranscript
  std::uint64_t perTranscript = 1;         // reads of each transcript in turn
  std::uint64_t seed = 1;
  std::string fastaPath = "-";
  std::string truthPath;  // empty: no truth table
};

// Writes the reads and, if asked, their truth. Read k depends on the transcripts, the options and k
// alone. Refused records are counted on standard error. Throws InputError when a file cannot be
// read or no transcript is left, OutputError when a file cannot be written.
void simulate(const SimulateOptions& options);

void addSimulateCommand(CLI::App& app);

}  // namespace velto
