// Where the model directory is when the command line names none.
#pragma once

#include <string>

namespace velto {

// "./param-human" if there is such a directory, otherwise the one installed with this program.
std::string defaultModelDirectory();

}  // namespace velto
