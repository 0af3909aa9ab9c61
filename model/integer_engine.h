// The votes of a read by integer tables, which is fast.
#pragma once

#include "model/coded_read.h"
#include "model/integer_vote.h"
#include "model/model_tables.h"
#include "model/vote_engine.h"
#include "model/vote_tables.h"

namespace velto {

// One read and its model in both forms. `tables` must be usable; all must outlive the object.
struct VotingRead {
  const ModelView& model;
  const VoteTables& tables;
  const short* seq;  // base codes
  int length;        // bases
  const CodedRead& codons;
};

// Scores are the integer sums, but the ordered sums of doubles where one may print other digits
// than the other: they differ from the plain ones by less than 1e-10 and have the same sign and the
// same six digits. Where integers leave a class or a place open, the doubles decide.
class IntegerEngine : public VoteEngine {
 public:
  // `vote` is scratch.
  IntegerEngine(const VotingRead& read, IntegerVote& vote) : read_(read), vote_(vote) {}

  void score(WindowScores& scores) override;
  void classify(WindowClasses& classes) override;
  int bestTrial(const TrialWindow& window, int otherwise) override;

 private:
  template <typename Use>
  void eachSum(int frame, int windows, const Use& use);
  int bestAmongEqual(const TrialWindow& window, const PairTables& pairs, int best);
  void beginTrials(const TrialWindow& window, const PairTables& pairs);
  void nextTrial(const TrialWindow& window, int trial);

  const VotingRead& read_;
  IntegerVote& vote_;
};

}  // namespace velto
