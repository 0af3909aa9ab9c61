// The subcommand `velto simulate`: labelled error-prone reads from transcripts.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "simulation/read_sampling.h"

namespace velto {

struct SimulateOptions {
  std::vector<std::string> codingFiles;
  std::vector<std::string> noncodingFiles;
  int geneticCode = 1;    // of the coding transcripts
  ReadSampling sampling;  // its errors have qualities if `fastq`
  bool fastq = false;     // else FASTA
  std::string readsPath = "-";
  std::string truthPath;  // empty: no truth table
};

// Writes the reads and, if asked, their truth. Read k depends on the transcripts, the options and k
// alone. Refused records are counted on standard error. Throws InputError when a file cannot be
// read or no transcript is left, OutputError when a file cannot be written.
void simulate(const SimulateOptions& options);

void addSimulateCommand(CLI::App& app);

}  // namespace velto
