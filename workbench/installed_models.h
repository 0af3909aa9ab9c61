// Where models are: those that come with the program, by name, and any other by its directory.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace velto {

// "./param-human" if there is such a directory, otherwise the one installed with this program.
std::string defaultModelDirectory();

struct InstalledModel {
  std::string name;  // for -d
  std::string directory;
};

// "human", the default model, if it is there; then the directories that have a card in the folder
// `models` beside it, by their names in alphabetical order.
std::vector<InstalledModel> installedModels();

// Makes the directory of an installed model of its name, and leaves every other argument as it is:
// the path of a model directory. A name that holds a '/' is always a path. Refuses what is neither
// installed nor there.
CLI::Validator modelDirectory();

}  // namespace velto
