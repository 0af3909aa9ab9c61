// Options of the subcommands that predict.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "velto/velto.h"

namespace velto {

// -d DIR or NAME; the default model where it is not given.
void addModelOption(CLI::App& command, std::string& directory);

// --decoder NAME, one of decoderTable(); empty: the model's default one.
void addDecoderOption(CLI::App& command, std::string& decoder);

// --strand plus|minus|both.
void addStrandOption(CLI::App& command, std::string& strand);
Strand strandNamed(const std::string& name);

// --code N, one of geneticCodes().
void addGeneticCodeOption(CLI::App& command, int& number);

}  // namespace velto
