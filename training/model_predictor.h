// Predicts single reads with the models of one directory.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "model/model_tables.h"
#include "model/read_class.h"
#include "training/called_read.h"

namespace velto {

// What one model says about a read: as the one-read program does, from the scores of the windows to
// the placed shifts. Reads of fewer than 30 bases, which that program refuses, are not called.
CalledRead predictRead(const ModelView& model, const std::vector<short>& bases);

// All models of a directory. Constant after construction; any number of threads may use it.
class ModelPredictor {
 public:
  // Throws std::runtime_error naming file and line for a file that is missing or irregular.
  explicit ModelPredictor(const std::string& directory);

  CalledRead predict(const ReadClass& readClass, const std::vector<short>& bases) const;

 private:
  std::array<std::unique_ptr<const ModelTables>, kReadClasses> tables_;  // [readClassIndex]
};

}  // namespace velto
