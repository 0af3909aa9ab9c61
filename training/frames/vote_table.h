// A vote as a table of what each level of each feature adds, and its sums along a read.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "decoder/frame_scores.h"
#include "decoder/shift_placement.h"
#include "training/frames/boosting.h"

namespace velto {

// A vote as its parameter file will hold it. Votes are whole millionths, so that sums are exact and
// may be kept up to date from window to window; those of scoreWindows differ by rounding only.
// Constant after construction; any thread may use it.
class VoteTable {
 public:
  explicit VoteTable(const Vote& vote);

  // Vote sums of the windows that scoreWindows scores.
  WindowScores score(int windowWidth, const short* seq, int length) const;

  // Place of one frame change as a TrialJudge under the written model picks it.
  int bestTrial(const short* seq, int length, const TrialWindow& window, int otherwise) const;

  // Writes the vote as the 500 hypotheses of a model for this window width, the constant first.
  void write(int windowWidth, ModelTables& tables) const;

 private:
  friend class WindowLevels;
  static constexpr int kLevels = 66;  // counts of up to 65 codons

  std::int64_t constant_ = 0;  // millionths, that of the hypothesis
  std::int64_t allNo_ = 0;     // sum of a window that answers no to every question
  std::vector<std::pair<WindowQuestion, std::int64_t>> alphas_;
  std::vector<std::array<std::int32_t, kLevels>> added_;  // [feature][level], over all no
};

}  // namespace velto
