// The subcommand `velto evaluate`: how well the models of a directory predict labelled reads.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "simulation/read_sampling.h"

namespace velto {

struct EvaluateOptions {
  std::string modelDirectory;
  std::string decoder;           // empty: the model's default one
  std::string compareDirectory;  // empty: the same directory if there is a second decoder, else
                                 // one model
  std::string compareDecoder;    // empty: the second model's default one
  std::string readsPath;         // empty: reads are simulated
  std::string truthPath;
  std::vector<std::string> codingFiles;
  std::vector<std::string> noncodingFiles;
  int geneticCode = 1;    // of the coding transcripts
  ReadSampling sampling;  // its seed is also that of the bootstrap
  std::string jsonPath;   // empty: none; "-": standard output, in place of the tables
  std::string plotsPath;  // folder; empty: none
  int threads = 0;        // 0: as many as there are processors
};

// Evaluates and writes the tables to standard output, and JSON and plots where asked.
// Throws Error.
void evaluate(const EvaluateOptions& options);

void addEvaluateCommand(CLI::App& app);

}  // namespace velto
