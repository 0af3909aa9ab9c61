// The subcommand `velto show`: the drawing of one read.
#pragma once

#include <CLI/CLI.hpp>

namespace velto {

void addShowCommand(CLI::App& app);

}  // namespace velto
