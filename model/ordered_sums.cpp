#include "model/ordered_sums.h"

namespace velto {

void OrderedSums::take(const IntegerVote& window, double& sum) {
  window.writeVotes(votes_.data() + taken_, kWindows);
  sums_[taken_++] = &sum;
  if (taken_ == kWindows) finish();
}

void OrderedSums::finish() {
  double totals[kWindows] = {};
  for (std::size_t i = 0; i < hypotheses_; ++i) {
    for (std::size_t w = 0; w < kWindows; ++w) totals[w] += votes_[kWindows * i + w];
  }
  for (std::size_t w = 0; w < taken_; ++w) *sums_[w] = totals[w];
  taken_ = 0;
}

}  // namespace velto
