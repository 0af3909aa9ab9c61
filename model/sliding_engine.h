// The votes of a read from window to window: only the leaving and the entering codon are counted.
#pragma once

#include "model/model_tables.h"
#include "model/vote_engine.h"

namespace velto {

// Scores equal the plain ones to the last bit, for any model.
class SlidingEngine : public VoteEngine {
 public:
  // `seq` holds `length` base codes.
  SlidingEngine(const ModelView& model, const short* seq, int length)
      : model_(model), seq_(seq), length_(length) {}

  void score(WindowScores& scores) override;
  int bestTrial(const TrialWindow& window, int otherwise) override;

 private:
  ModelView model_;
  const short* seq_;
  int length_;  // bases
};

}  // namespace velto
