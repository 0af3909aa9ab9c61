// The sixteen models of a model directory, loaded strictly and constant afterwards.
#pragma once

#include <array>
#include <memory>

#include "core/file_source.h"
#include "model/model_tables.h"
#include "model/read_class.h"

namespace velto {

// The model of one read class. Constant after construction; any number of threads may use it.
class VoteModel {
 public:
  // Throws ModelError for a file that cannot be opened or is irregular anywhere.
  VoteModel(const FileSource& files, const ReadClass& readClass);

  // A model from tables made elsewhere.
  VoteModel(ModelTables tables, int windowWidth);

  ModelView view() const { return {tables_, windowWidth_}; }

 private:
  ModelTables tables_;
  int windowWidth_;  // bases
};

// All models of a directory.
class ModelSet {
 public:
  // Throws ModelError for the first file that cannot be used.
  explicit ModelSet(const FileSource& files);

  const VoteModel& model(const ReadClass& readClass) const {
    return *models_[static_cast<size_t>(readClassIndex(readClass))];
  }

 private:
  std::array<std::unique_ptr<const VoteModel>, kReadClasses> models_;  // [readClassIndex]
};

}  // namespace velto
