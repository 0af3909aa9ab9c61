// The ordered sums of doubles of several windows at a time.
#pragma once

#include <cstddef>
#include <vector>

#include "model/integer_vote.h"

namespace velto {

// One addition has to wait for the one before, so that several sums side by side take hardly longer
// than one. For one thread at a time.
class OrderedSums {
 public:
  explicit OrderedSums(const VoteTables& tables)
      : hypotheses_(tables.orderedVotes().size()), votes_(kWindows * (hypotheses_ + 1)) {}

  // Takes the window as it is now. `sum`, to the last bit that of voteSum, is filled by finish() at
  // the latest and must stay where it is until then.
  void take(const IntegerVote& window, double& sum);
  void finish();

 private:
  static constexpr std::size_t kWindows = 4;

  std::size_t hypotheses_;
  std::vector<double> votes_;  // [hypothesis][window], and one row more so that it is never empty
  double* sums_[kWindows] = {};
  std::size_t taken_ = 0;
};

}  // namespace velto
