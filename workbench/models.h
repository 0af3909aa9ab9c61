// The subcommand `velto models`: the models that come with the program.
#pragma once

#include <CLI/CLI.hpp>

namespace velto {

void addModelsCommand(CLI::App& app);

}  // namespace velto
