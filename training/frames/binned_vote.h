// A vote as a table of what each bin of each feature adds, and its sums along a read.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "model/vote_engine.h"
#include "training/frames/boosting.h"

namespace velto {

// A vote as its parameter file will hold it. Votes are whole millionths, so that sums are exact and
// may be kept up to date from window to window; those of the plain engine differ by rounding only.
// Constant after construction; any thread may use it.
class BinnedVote {
 public:
  explicit BinnedVote(const Vote& vote);

  // Vote sums of the scored windows.
  WindowScores score(int windowWidth, const short* seq, int length) const;

  // Place of one frame change as a TrialJudge under the written model picks it.
  int bestTrial(const short* seq, int length, const TrialWindow& window, int otherwise) const;

  // Writes the vote as the 500 hypotheses of a model for this window width, the constant first;
  // `shift`, of whole millionths, joins the constant.
  void write(int windowWidth, double shift, ModelTables& tables) const;

 private:
  friend class WindowBins;
  static constexpr int kBins = 66;  // counts of up to 65 codons

  std::int64_t constant_ = 0;  // millionths, that of the hypothesis
  std::int64_t allNo_ = 0;     // sum of a window that answers no to every stump
  std::vector<std::pair<Stump, std::int64_t>> alphas_;
  std::vector<std::array<std::int32_t, kBins>> added_;  // [feature][bin], over all no
};

}  // namespace velto
