#include "model/integer_vote.h"

#include <bit>
#include <numeric>

namespace velto {
namespace {

// The vote if above, its negative otherwise.
double signedVote(double whenAbove, bool above) {
  constexpr int kSignBit = 63;
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(whenAbove) ^
                               static_cast<std::uint64_t>(!above) << kSignBit);
}

}  // namespace

// The change of the sum by the codon's own hypotheses and by the steady pairs.
template <int kBy>
int IntegerVote::count(const CodedRead& read, int p) {
  constexpr std::uint16_t kOneCount = PairTables::kCountStride;
  const std::uint8_t acid = read.acid(p);
  if (acid == kUncountedAcid) return 0;
  const AcidCounts one = oneCodon(read.synonym(p));
  acidCounts_[acid] += kBy > 0 ? one : -one;
  const int votes = tables_->acidVotes(acid, acidCounts_[acid]);
  int change = votes - acidVotes_[acid];
  acidVotes_[acid] = votes;

  const int* step = pairs_->step.data();
  const VoteTables::PairRows& rows = tables_->rowsAfter(acid);
  std::uint16_t* places = place_.data();
  for (int gap = 0; gap < kPairGaps; ++gap) {
    std::uint16_t& place = places[rows[gap][read.acid(p + 3 + 3 * gap)]];
    if (kBy < 0) place = static_cast<std::uint16_t>(place - kOneCount);
    change += kBy * step[place];
    if (kBy > 0) place = static_cast<std::uint16_t>(place + kOneCount);
  }
  return change;
}

void IntegerVote::begin(const VoteTables& tables, const PairTables& pairs) {
  tables_ = &tables;
  pairs_ = &pairs;
  acidCounts_.fill(0);
  acidVotes_ = tables.emptyAcidVotes();
  sum_ = std::accumulate(acidVotes_.begin(), acidVotes_.end(), pairs.emptySum);
  place_.resize(tables.rows());
  for (size_t row = 0; row < place_.size(); ++row) place_[row] = PairTables::place(row, 0);
  memberCount_.fill(0);
  above_ = pairs.emptyAbove;
}

void IntegerVote::add(const CodedRead& read, int p) {
  sum_ += count<1>(read, p);
  if (!above_.empty()) sum_ += countMembers<1>(read, p);
}

void IntegerVote::remove(const CodedRead& read, int p) {
  sum_ += count<-1>(read, p);
  if (!above_.empty()) sum_ += countMembers<-1>(read, p);
}

void IntegerVote::slide(const CodedRead& read, int leaving, int entering) {
  const int gone = count<-1>(read, leaving);
  sum_ += gone + count<1>(read, entering);
  if (above_.empty()) return;
  sum_ += countMembers<-1>(read, leaving);
  sum_ += countMembers<1>(read, entering);
}

// The change of the sum by the moving pairs, once the pairs are counted.
template <int kBy>
int IntegerVote::countMembers(const CodedRead& read, int p) {
  int change = 0;
  const std::uint8_t acid = read.acid(p);
  for (int gap = 0; acid != kUncountedAcid && gap < kPairGaps; ++gap) {
    const int partner = read.acid(p + 3 + 3 * gap);
    if (partner == kUncountedAcid) continue;
    const std::uint8_t elements[2] = {PairTables::memberElement(gap, 0, acid),
                                      PairTables::memberElement(gap, 1, partner)};
    for (const std::uint8_t element : elements) {
      memberCount_[element] = static_cast<std::uint8_t>(memberCount_[element] + kBy);
    }
    change += askMoving(elements[0]) + askMoving(elements[1]);
  }
  return change;
}

// The change of the sum.
int IntegerVote::askMoving(std::uint8_t element) {
  const MovingPair* moving = pairs_->moving.data();
  const std::uint8_t* least = pairs_->least.empty() ? nullptr : pairs_->least.data();
  char* aboveNow = above_.data();
  int change = 0;
  for (const std::uint16_t index : pairs_->movedBy[element]) {
    const MovingPair pair = moving[index];
    const unsigned pairCount = place_[pair.row] / PairTables::kCountStride;
    const unsigned first = memberCount_[pair.firstElement];
    const unsigned second = memberCount_[pair.secondElement];
    unsigned bound = PairTables::kAskFeature;
    if ((first | second) < PairTables::kLeastColumns && least != nullptr) {
      bound = least[PairTables::leastIndex(index, first, second)];
    }
    const bool above = bound != PairTables::kAskFeature
                           ? pairCount >= bound
                           : isAbove(pairs_->features[index], pairCount, first, second);
    change += 2 * (above - aboveNow[index]) * pair.weight;
    aboveNow[index] = above;
  }
  return change;
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

double IntegerVote::orderedSum() const {
  double votes[kMostVoteSlots];
  writeVotes(votes);
  double sum = 0.0;
  for (const std::uint16_t slot : tables_->slots()) sum += votes[slot];
  return sum;
}

// Rule by rule, the kinds one after the other, without unforeseeable branches.
void IntegerVote::writeVotes(double* votes) const {
  const double* whenAbove = tables_->slotVotes().data();
  const std::uint16_t* leastPlaces = pairs_->leastPlaces.data();
  for (size_t row = 0; row < place_.size(); ++row) {
    votes[row] = signedVote(whenAbove[row], place_[row] >= leastPlaces[row]);
  }
  const auto write = [=](std::size_t slot, bool above) {
    votes[slot] = signedVote(whenAbove[slot], above);
  };
  for (const CodonRule& rule : tables_->codonRules()) {
    const AcidCounts counts = acidCounts_[rule.acid];
    write(rule.slot, (counts >> (8 * rule.synonym) & 0xFF) >= tables_->leastCodons(rule, counts));
  }
  for (const AcidRule& rule : tables_->acidRules()) {
    write(rule.slot, static_cast<int>(acidCounts_[rule.acid] >> kAcidByte) > rule.threshold);
  }
  for (const SteadyPairRule& rule : pairs_->steady) {
    write(rule.slot, place_[rule.row] >= rule.leastPlace);
  }
  for (size_t i = 0; i < above_.size(); ++i) write(pairs_->movingSlots[i], above_[i] != 0);
}

}  // namespace velto
