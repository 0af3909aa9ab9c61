// The definition of the votes of a read: every window is counted and voted on anew.
#pragma once

#include "model/model_tables.h"
#include "model/vote_engine.h"

namespace velto {

class PlainEngine : public VoteEngine {
 public:
  // `seq` holds `length` base codes.
  PlainEngine(const ModelView& model, const short* seq, int length)
      : model_(model), seq_(seq), length_(length) {}

  void score(WindowScores& scores) override;
  int bestTrial(const TrialWindow& window, int otherwise) override;

 private:
  double scoreWindow(int start) const;
  double scoreTrial(const TrialWindow& window, int trial) const;

  ModelView model_;
  const short* seq_;
  int length_;  // bases
};

}  // namespace velto
