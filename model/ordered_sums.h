// The ordered sums of doubles of several windows at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/integer_vote.h"

namespace velto {

// One addition has to wait for the one before, so that several sums side by side take hardly longer
// than one. For one thread at a time.
class OrderedSums {
 public:
  // The tables must outlive the object.
  explicit OrderedSums(const VoteTables& tables) : slots_(tables.slots()) {}

  // Takes the window as it is now. `sum`, to the last bit that of voteSum, is filled by finish() at
  // the latest and must stay where it is until then.
  void take(const IntegerVote& window, double& sum);
  void finish();

 private:
  static constexpr std::size_t kWindows = 8;

  const std::vector<std::uint16_t>& slots_;  // [counted hypothesis, in order]
  std::array<std::array<double, kMostVoteSlots>, kWindows> votes_{};
  double* sums_[kWindows] = {};
  std::size_t taken_ = 0;
};

}  // namespace velto
