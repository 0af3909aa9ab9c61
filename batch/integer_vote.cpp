#include "batch/integer_vote.h"

#include <algorithm>
#include <iterator>

namespace velto {

void IntegerVote::begin(const VoteTables& tables, const PairTables& pairs) {
  tables_ = &tables;
  pairs_ = &pairs;
  std::fill(std::begin(codonCount_), std::end(codonCount_), std::uint8_t{0});
  std::fill(std::begin(acidCount_), std::end(acidCount_), std::uint8_t{0});
  std::fill(std::begin(memberCount_), std::end(memberCount_), std::uint8_t{0});
  sum_ = pairs.emptySum;
  for (int acid = 0; acid < kAminoAcids; ++acid) {
    acidVotes_[acid] = tables.acidVotes(acid, 0, codonCount_);
    sum_ += acidVotes_[acid];
  }
  place_.resize(tables.rows());
  std::uint16_t start = 0;
  for (std::uint16_t& place : place_) {
    place = start;
    start = static_cast<std::uint16_t>(start + tables.counts());
  }
  above_ = pairs.emptyAbove;
}

template <int kBy>
void IntegerVote::change(const CodedRead& read, int p) {
  const std::uint8_t acid = read.acid(p);
  if (acid == kUncountedAcid) return;
  codonCount_[read.slot(p)] = static_cast<std::uint8_t>(codonCount_[read.slot(p)] + kBy);
  acidCount_[acid] = static_cast<std::uint8_t>(acidCount_[acid] + kBy);
  const int votes = tables_->acidVotes(acid, acidCount_[acid], codonCount_);
  sum_ += votes - acidVotes_[acid];
  acidVotes_[acid] = votes;

  const bool isMoving = !above_.empty();
  for (int gap = 0; gap < kPairGaps; ++gap) {
    const std::uint8_t partner = read.acid(p + 3 + 3 * gap);
    std::uint16_t& place = place_[tables_->row(gap, acid, partner)];
    if (kBy < 0) --place;
    sum_ += kBy * pairs_->step[place];
    if (kBy > 0) ++place;
    if (isMoving && partner != kUncountedAcid) changeMembers<kBy>(gap, acid, partner);
  }
}

template <int kBy>
void IntegerVote::changeMembers(int gap, int first, int second) {
  const size_t elements[2] = {PairTables::memberElement(gap, 0, first),
                              PairTables::memberElement(gap, 1, second)};
  for (const size_t element : elements) {
    memberCount_[element] = static_cast<std::uint8_t>(memberCount_[element] + kBy);
  }
  for (const size_t element : elements) askMoving(element);
}

void IntegerVote::askMoving(size_t element) {
  for (const size_t index : pairs_->movedBy[element]) {
    const MovingPair& pair = pairs_->moving[index];
    const char above = isAbove(pair);
    sum_ += 2 * (above - above_[index]) * pair.weight;
    above_[index] = above;
  }
}

bool IntegerVote::isAbove(const MovingPair& pair) const {
  const size_t counts = static_cast<size_t>(tables_->counts());
  const size_t pairCount = place_[pair.row] - pair.row * counts;
  const size_t first = memberCount_[PairTables::memberElement(pair.gap, 0, pair.first)];
  const size_t second = memberCount_[PairTables::memberElement(pair.gap, 1, pair.second)];
  if ((first | second) < MovingPair::kLeastColumns && !pair.least.empty()) {
    const std::uint8_t least = pair.least[first * MovingPair::kLeastColumns + second];
    if (least != MovingPair::kAskFeature) return pairCount >= least;
  }
  // The same operations as pairFeature, with both member frequencies looked up.
  const double fp = (3.0 * static_cast<double>(pairCount) + pair.prior) / pair.length;
  const double f1 = pairs_->rate[static_cast<size_t>(pair.first) * counts + first];
  const double f2 = pairs_->rate[static_cast<size_t>(pair.second) * counts + second];
  return fp / f1 / f2 > pair.threshold;
}

template void IntegerVote::change<1>(const CodedRead& read, int p);
template void IntegerVote::change<-1>(const CodedRead& read, int p);

}  // namespace velto
