// Writes a model as the directory that the programs read.
#pragma once

#include <string>

#include "model/model_tables.h"

namespace velto::test {

// Writes the model as the parameter and matrix file of each of the sixteen classes.
void writeModelDirectory(const std::string& directory, const ModelTables& tables);

}  // namespace velto::test
