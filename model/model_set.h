// The sixteen models of a model directory, loaded strictly and constant afterwards.
#pragma once

#include <array>
#include <memory>
#include <stdexcept>
#include <string>

#include "model/model_tables.h"
#include "model/read_class.h"

namespace velto {

// One model file that cannot be used; the message reads "FILE: line L: REASON", or "FILE: REASON"
// for a file as a whole.
class ModelFileError : public std::runtime_error {
 public:
  ModelFileError(const std::string& file, int line, const std::string& reason);
};

// The model of one read class. Constant after construction; any number of threads may use it.
class Model {
 public:
  // Throws ModelFileError for a file that cannot be opened or is irregular anywhere.
  Model(const std::string& directory, const ReadClass& readClass);

  // A model from tables made elsewhere.
  Model(ModelTables tables, int windowWidth);

  ModelView view() const { return {tables_, windowWidth_}; }

 private:
  ModelTables tables_;
  int windowWidth_;  // bases
};

// All models of a directory.
class ModelSet {
 public:
  // Throws ModelFileError for the first file that cannot be used.
  explicit ModelSet(const std::string& directory);

  const Model& model(const ReadClass& readClass) const {
    return *models_[static_cast<size_t>(readClassIndex(readClass))];
  }

 private:
  std::array<std::unique_ptr<const Model>, kReadClasses> models_;  // [readClassIndex]
};

}  // namespace velto
