// The subcommand `velto check-model`: is a model directory whole and regular?
#pragma once

#include <CLI/CLI.hpp>

namespace velto {

void addCheckModelCommand(CLI::App& app);

}  // namespace velto
