#include "model/model_set.h"

#include <utility>

#include "model/model_file.h"
#include "velto/velto.h"

namespace velto {
namespace {

void requireRegular(const std::string& file, const ModelFileStatus& status) {
  if (!status.regular()) throw ModelError(file, 0, status.line, status.reason);
}

// The vote passes over a hypothesis of another kind, which no regular model has.
void requireKnownKinds(const std::string& file, const ModelTables& tables) {
  for (size_t i = 0; i < tables.fh.size(); ++i) {
    const int kind = tables.fh[i].kind;
    if (kind == kCodonKind || kind == kSingleAcidKind || kind == kPairKind) continue;
    throw ModelError(file, 0, static_cast<long>(i) + 1,
                     "a hypothesis of a kind that never votes: not 0, 2 or 3");
  }
}

}  // namespace

VoteModel::VoteModel(const FileSource& files, const ReadClass& readClass)
    : windowWidth_(readClass.windowWidth) {
  const std::string parameters = files.path(readClass.parameterFile());
  const auto parameterFile = files.open(readClass.parameterFile());
  requireRegular(parameters, readParameterFile(*parameterFile, kModelHypotheses, tables_));
  requireKnownKinds(parameters, tables_);
  const auto matrixFile = files.open(readClass.matrixFile());
  requireRegular(files.path(readClass.matrixFile()),
                 readMatrixFile(*matrixFile, tables_.malkovChain));
}

VoteModel::VoteModel(ModelTables tables, int windowWidth)
    : tables_(std::move(tables)), windowWidth_(windowWidth) {}

ModelSet::ModelSet(const FileSource& files) {
  for (int index = 0; index < kReadClasses; ++index) {
    models_[static_cast<size_t>(index)] =
        std::make_unique<const VoteModel>(files, readClassAt(index));
  }
}

}  // namespace velto
