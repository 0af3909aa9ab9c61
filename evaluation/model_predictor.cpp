#include "evaluation/model_predictor.h"

#include "simulation/transcript.h"

namespace velto {

CalledRead ModelPredictor::predict(const std::vector<short>& bases) const {
  static thread_local Workspace workspace;
  const Prediction found = predictor_.predict(baseLetters(bases), workspace);
  CalledRead called;
  called.frame = found.frame;
  called.frame.resize(bases.size(), -1);
  called.start = found.start;
  called.stop = found.stop;
  for (const Frameshift& shift : found.frameshifts) {
    called.shifts.push_back({shift.position, shift.kind == Frameshift::Kind::kInsertion});
  }
  return called;
}

}  // namespace velto
