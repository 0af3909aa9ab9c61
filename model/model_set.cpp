#include "model/model_set.h"

#include <filesystem>
#include <fstream>
#include <utility>

#include "model/model_file.h"

namespace velto {
namespace {

std::string place(const std::string& file, int line) {
  return line == 0 ? file : file + ": line " + std::to_string(line);
}

std::ifstream openOrThrow(const std::string& file) {
  if (std::filesystem::is_directory(file)) throw ModelFileError(file, 0, "is a directory");
  std::ifstream in(file);
  if (!in) throw ModelFileError(file, 0, "cannot be opened");
  return in;
}

void requireRegular(const std::string& file, const ModelFileStatus& status) {
  if (!status.regular()) throw ModelFileError(file, status.line, status.reason);
}

// The vote passes over a hypothesis of another kind, which no regular model has.
void requireKnownKinds(const std::string& file, const ModelTables& tables) {
  for (size_t i = 0; i < tables.fh.size(); ++i) {
    const int kind = tables.fh[i].kind;
    if (kind == kCodonKind || kind == kSingleAcidKind || kind == kPairKind) continue;
    throw ModelFileError(file, static_cast<int>(i) + 1, "the feature kind is not 0, 2 or 3");
  }
}

}  // namespace

ModelFileError::ModelFileError(const std::string& file, int line, const std::string& reason)
    : std::runtime_error(place(file, line) + ": " + reason) {}

Model::Model(const std::string& directory, const ReadClass& readClass)
    : windowWidth_(readClass.windowWidth) {
  const std::string parameters = readClass.parameterPath(directory);
  std::ifstream parameterFile = openOrThrow(parameters);
  requireRegular(parameters, readParameterFile(parameterFile, kModelHypotheses, tables_));
  requireKnownKinds(parameters, tables_);
  const std::string matrix = readClass.matrixPath(directory);
  std::ifstream matrixFile = openOrThrow(matrix);
  requireRegular(matrix, readMatrixFile(matrixFile, tables_.malkovChain));
}

Model::Model(ModelTables tables, int windowWidth)
    : tables_(std::move(tables)), windowWidth_(windowWidth) {}

ModelSet::ModelSet(const std::string& directory) {
  for (int index = 0; index < kReadClasses; ++index) {
    models_[static_cast<size_t>(index)] =
        std::make_unique<const Model>(directory, readClassAt(index));
  }
}

}  // namespace velto
