// The subcommand `velto scan`: the coding regions of many reads.
#pragma once

#include <CLI/CLI.hpp>

namespace velto {

void addScanCommand(CLI::App& app);

}  // namespace velto
