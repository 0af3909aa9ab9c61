#include "evaluation/model_predictor.h"

#include "simulation/transcript.h"

namespace velto {

CalledRead ModelPredictor::predict(const std::vector<short>& bases) const {
  static thread_local Workspace workspace;
  const Prediction found = predictor_.predict(baseLetters(bases), workspace);
  return calledRead(found.frames, found.score, found.length);
}

}  // namespace velto
