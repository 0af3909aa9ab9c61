// Calls labelled reads with the models of one directory.
#pragma once

#include <string>
#include <vector>

#include "evaluation/called_read.h"
#include "velto/velto.h"

namespace velto {

// The public predictor, its predictions as called reads. Constant after construction; any number
// of threads may use it.
class ModelPredictor {
 public:
  // Throws ModelError naming file and line for a file that is missing or irregular.
  explicit ModelPredictor(const std::string& directory) : predictor_(directory) {}

  // Reads of fewer than kLeastReadBases bases are not called.
  CalledRead predict(const std::vector<short>& bases) const;

 private:
  Predictor predictor_;
};

}  // namespace velto
