#include "model/ordered_sums.h"

namespace velto {

void OrderedSums::take(const IntegerVote& window, double& sum) {
  window.writeVotes(votes_[taken_].data());
  sums_[taken_++] = &sum;
  if (taken_ == kWindows) finish();
}

void OrderedSums::finish() {
  double totals[kWindows] = {};
  for (const std::uint16_t slot : slots_) {
    for (std::size_t w = 0; w < kWindows; ++w) totals[w] += votes_[w][slot];
  }
  for (std::size_t w = 0; w < taken_; ++w) *sums_[w] = totals[w];
  taken_ = 0;
}

}  // namespace velto
