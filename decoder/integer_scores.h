// The two places of a prediction where windows vote, done by the integer vote.
#pragma once

#include "decoder/frame_scores.h"
#include "decoder/frame_steps.h"
#include "decoder/shift_placement.h"
#include "model/coded_read.h"
#include "model/integer_vote.h"
#include "model/model_tables.h"
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

// The vote sums of the scored windows in millionths, [frame][window] as in WindowScores.
struct WindowSums {
  std::vector<int> frame[3];
};
void sumWindows(const VotingRead& read, IntegerVote& vote, WindowSums& sums);

// The classes of the scored windows: of sums of 0 the ordered sum of doubles decides.
void classifyWindows(const VotingRead& read, IntegerVote& vote, WindowClasses& classes);

// The scores of the scored windows: the integer sums, but the ordered sums of doubles where one may
// print other digits than the other. They differ from those of the other scoreWindows by less than
// 1e-10 and have the same sign and the same six digits.
void scoreWindows(const VotingRead& read, IntegerVote& vote, WindowScores& scores);

// Picks the trials that the ordered sums of doubles pick.
class IntegerJudge : public TrialJudge {
 public:
  IntegerJudge(const VotingRead& read, IntegerVote& vote) : read_(read), vote_(vote) {}

  int bestTrial(const TrialWindow& window, int otherwise) override;

 private:
  int bestOrdered(const TrialWindow& window, int otherwise) const;
  int bestAmongEqual(const TrialWindow& window, const PairTables& pairs, int best);
  void beginTrials(const TrialWindow& window, const PairTables& pairs);
  void nextTrial(const TrialWindow& window, int trial);

  const VotingRead& read_;
  IntegerVote& vote_;
};

}  // namespace velto
