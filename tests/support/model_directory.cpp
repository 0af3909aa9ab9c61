#include "tests/support/model_directory.h"

#include "model/model_file.h"
#include "model/read_class.h"
#include "tests/support/temp_dir.h"

namespace velto::test {

void writeModelDirectory(const std::string& directory, const ModelTables& tables) {
  for (int i = 0; i < kReadClasses; ++i) {
    const ReadClass readClass = readClassAt(i);
    writeFile(readClass.parameterPath(directory), parameterFileText(tables));
    writeFile(readClass.matrixPath(directory), matrixFileText(tables.malkovChain));
  }
}

}  // namespace velto::test
