// The options of every subcommand that simulates reads from transcripts.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "simulation/read_sampling.h"

namespace velto {

// The options as they are written on the command line. Must outlive the parsing.
struct SamplingLine {
  std::string preset = "est";
  std::string rates;
  std::string lengths = "300-800";
  bool fullLength = false;
  std::uint64_t reads = 0;
  std::uint64_t perTranscript = 1;
  std::uint64_t seed = 1;
  int geneticCode = 1;
};

// Adds --preset, --rates, --length, --full-length, --read-count, --per-transcript, --seed and
// --code.
void addSamplingOptions(CLI::App& command, SamplingLine& line);

// The plan these options stand for. Throws CLI::ValidationError naming the option at fault.
ReadSampling parseSampling(const CLI::App& command, const SamplingLine& line);

// The accepted records of both kinds by the genetic code of this number, coding ones first. Refused
// records are counted on standard error. Throws InputError when a file cannot be read, Error when
// nothing is left.
std::vector<Transcript> loadSources(const std::vector<std::string>& codingFiles,
                                    const std::vector<std::string>& noncodingFiles, int codeNumber);

}  // namespace velto
