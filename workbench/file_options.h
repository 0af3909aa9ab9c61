// What every subcommand asks of the files on its command line.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace velto {

// Accepts every file name but the empty one.
CLI::Validator fileName();

// Throws CLI::ValidationError if an output is an input or another output, or a stream is to be read
// twice; see clashOf(). To be called before anything is read. An empty name stands for none.
void requireDistinctFiles(const std::vector<std::string>& inputs,
                          const std::vector<std::string>& outputs);

}  // namespace velto
