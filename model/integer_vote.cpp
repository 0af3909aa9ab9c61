#include "model/integer_vote.h"

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
  const std::uint8_t elements[2] = {PairTables::memberElement(gap, 0, first),
                                    PairTables::memberElement(gap, 1, second)};
  for (const std::uint8_t element : elements) {
    memberCount_[element] = static_cast<std::uint8_t>(memberCount_[element] + kBy);
  }
  for (const std::uint8_t element : elements) askMoving(element);
}

void IntegerVote::askMoving(std::uint8_t element) {
  const MovingPair* moving = pairs_->moving.data();
  const std::uint8_t* least = pairs_->least.empty() ? nullptr : pairs_->least.data();
  const auto counts = static_cast<unsigned>(tables_->counts());
  char* aboveNow = above_.data();
  int sum = sum_;
  for (const std::uint16_t index : pairs_->movedBy[element]) {
    const MovingPair pair = moving[index];
    const unsigned pairCount = place_[pair.row] - pair.row * counts;
    const unsigned first = memberCount_[pair.firstElement];
    const unsigned second = memberCount_[pair.secondElement];
    unsigned bound = PairTables::kAskFeature;
    if ((first | second) < PairTables::kLeastColumns && least != nullptr) {
      bound = least[PairTables::leastIndex(index, first, second)];
    }
    const bool above = bound != PairTables::kAskFeature
                           ? pairCount >= bound
                           : isAbove(pairs_->features[index], pairCount, first, second);
    sum += 2 * (above - aboveNow[index]) * pair.weight;
    aboveNow[index] = above;
  }
  sum_ = sum;
}

// The same operations as pairFeature, with both member frequencies looked up.
bool IntegerVote::isAbove(const MovingFeature& feature, unsigned pairCount, unsigned first,
                          unsigned second) const {
  const auto rate = [this](int acid, unsigned count) {
    return pairs_->rate[static_cast<size_t>(acid * tables_->counts()) + count];
  };
  const double fp = (3.0 * pairCount + feature.prior) / feature.length;
  return fp / rate(feature.first, first) / rate(feature.second, second) > feature.threshold;
}

template void IntegerVote::change<1>(const CodedRead& read, int p);
template void IntegerVote::change<-1>(const CodedRead& read, int p);

}  // namespace velto
