// 1. Weights  2. Codons and single amino acids  3. Pairs
#include "model/vote_tables.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/base_code.h"
#include "core/six_digits.h"
#include "model/window_vote.h"
#include "model/window_width.h"

namespace velto {

// ---- 1. Weights

namespace {

// Bound of the sum of all absolute weights in millionths: two such sums differ by less than an int
// holds, and no window scores as low as kWorstTrialScore.
constexpr double kMostWeight = 999e6;

// Longest window of a trial in codons beyond a whole window.
constexpr int kSpareCodons = 1;

}  // namespace

VoteTables::VoteTables(const ModelView& model)
    : model_(model.tables), counts_(windowCodons(model.windowWidth) + 1) {
  usable_ = readWeights();
  if (!usable_) return;
  numberRows();
  fillRules();
  fillCodonVotes();
  pairTables_ = std::make_unique<LazyPairTables[]>(static_cast<size_t>(lengths()));
}

int VoteTables::lengths() const { return 3 * (codons() + kSpareCodons) + 1; }

bool VoteTables::readWeights() {
  double total = 0.0;
  weight_.resize(model_.fh.size());
  for (size_t i = 0; i < model_.fh.size(); ++i) {
    if (!isCounted(model_, i)) continue;
    const double alpha = model_.fh[i].alpha;
    if (!(std::abs(alpha) * kMillion <= kMostWeight)) return false;
    const double millionths = std::nearbyint(alpha * kMillion);
    // The quotient is rounded correctly, as the number read from the decimal text was.
    if (millionths / kMillion != alpha) return false;
    total += std::abs(millionths);
    if (total > kMostWeight) return false;
    counted_.push_back(i);
    weight_[i] = static_cast<int>(millionths);
  }
  return true;
}

void VoteTables::numberSlots() {
  auto next = static_cast<std::uint16_t>(rowCount_);
  std::vector<bool> isTaken(rowCount_);  // [pair row]
  for (const size_t i : counted_) {
    const fnlHypo& h = model_.fh[i];
    const std::uint16_t row = h.kind == kPairKind ? rows_[h.elem1][h.gap][h.elem2] : 0;
    const bool takesRow = h.kind == kPairKind && !isTaken[row];
    if (takesRow) isTaken[row] = true;
    slots_.push_back(takesRow ? row : next++);
  }
  slotVotes_.resize(next);
}

void VoteTables::fillRules() {
  numberSlots();
  for (size_t order = 0; order < counted_.size(); ++order) {
    const size_t i = counted_[order];
    const fnlHypo& h = model_.fh[i];
    const std::uint16_t slot = slots_[order];
    int polarity = model_.pairAcidTrsld[i].polarity;
    if (h.kind == kSingleAcidKind) {
      const CountThreshold& t = model_.snglAcidTrsld[i];
      polarity = t.polarity;
      acidRules_.push_back({slot, static_cast<std::uint8_t>(h.elem1), t.trsld});
    } else if (h.kind == kCodonKind) {
      polarity = model_.codonTrsld[i].polarity;
      addCodonRule(i, slot);
    }
    slotVotes_[slot] = polarity != 0 ? h.alpha : -h.alpha;
  }
}

// The share of a codon grows with its count, so that a least count tells which shares are above.
void VoteTables::addCodonRule(size_t i, std::uint16_t slot) {
  const fnlHypo& h = model_.fh[i];
  const auto codon = static_cast<size_t>(codonIndex(h.elem1, h.elem2, h.elem3));
  codonRules_.push_back({slot,
                         static_cast<std::uint8_t>(ReadData::CodonTable(h.elem1, h.elem2, h.elem3)),
                         codonSynonyms()[codon], static_cast<std::uint32_t>(leastCodons_.size())});
  const auto counts = static_cast<short>(counts_);  // a window's codons, which are few
  for (short acids = 0; acids < counts; ++acids) {
    short least = 0;
    while (least <= acids && !(codonFeature(h, least, acids) > model_.codonTrsld[i].trsld)) ++least;
    leastCodons_.push_back(static_cast<std::uint8_t>(least));
  }
}

// ---- 2. Codons and single amino acids

void VoteTables::fillCodonVotes() {
  codonVotes_.assign(triangle(static_cast<size_t>(counts_)), 0);
  for (const size_t i : counted_) {
    const int kind = model_.fh[i].kind;
    if (kind == kCodonKind) addCodonHypothesis(i);
    if (kind == kSingleAcidKind) addAcidHypothesis(i);
  }
  for (int acid = 0; acid < kAminoAcids; ++acid) {
    emptyAcidVotes_[static_cast<size_t>(acid)] = acidVotes(acid, 0);
  }
}

int* VoteTables::votesOfCodon(int acid, size_t synonym) {
  size_t& table = codonTable_[static_cast<size_t>(acid)][synonym];
  if (table == 0) {
    table = codonVotes_.size();
    codonVotes_.resize(table + triangle(static_cast<size_t>(counts_)), 0);
  }
  return codonVotes_.data() + table;
}

void VoteTables::addCodonHypothesis(size_t i) {
  const fnlHypo& h = model_.fh[i];
  const RealThreshold& t = model_.codonTrsld[i];
  const size_t codon = static_cast<size_t>(codonIndex(h.elem1, h.elem2, h.elem3));
  int* votes =
      votesOfCodon(ReadData::CodonTable(h.elem1, h.elem2, h.elem3), codonSynonyms()[codon]);
  const auto counts = static_cast<short>(counts_);  // a window's codons, which are few
  for (short acids = 0; acids < counts; ++acids) {
    for (short count = 0; count <= acids; ++count) {
      const bool above = codonFeature(h, count, acids) > t.trsld;
      *votes++ += above == (t.polarity != 0) ? weight_[i] : -weight_[i];
    }
  }
}

// The votes stand in the table of one of the amino acid's codons, the same for all its counts.
void VoteTables::addAcidHypothesis(size_t i) {
  const int acid = model_.fh[i].elem1;
  const CountThreshold& t = model_.snglAcidTrsld[i];
  int* votes = votesOfCodon(acid, 0);
  for (int acids = 0; acids < counts_; ++acids) {
    const bool above = acids > t.trsld;
    for (int count = 0; count <= acids; ++count) {
      *votes++ += above == (t.polarity != 0) ? weight_[i] : -weight_[i];
    }
  }
}

// ---- 3. Pairs

void VoteTables::numberRows() {
  static_assert(kPairGaps + kModelHypotheses <= PairTables::kCountStride);
  for (PairRows& ofFirst : rows_) {
    for (std::uint16_t gap = 0; gap < kPairGaps; ++gap) {
      std::fill(std::begin(ofFirst[gap]), std::end(ofFirst[gap]), gap);  // shared
    }
  }
  std::uint16_t next = kPairGaps;
  for (const size_t i : counted_) {
    const fnlHypo& h = model_.fh[i];
    if (h.kind != kPairKind) continue;
    std::uint16_t& row = rows_[h.elem1][h.gap][h.elem2];
    if (row < kPairGaps) row = next++;
  }
  rowCount_ = next;
}

namespace {

// The feature of a pair hypothesis for windows of one length.
class PairFeature {
 public:
  PairFeature(const ModelTables& tables, size_t i, int length, int counts)
      : tables_(tables), i_(i), length_(length), most_(static_cast<short>(counts - 1)) {}

  bool above(int pairs, int first, int second) const {
    return pairFeature(tables_, tables_.fh[i_], static_cast<short>(pairs),
                       static_cast<short>(first), static_cast<short>(second),
                       length_) > tables_.pairAcidTrsld[i_].trsld;
  }

  // True if above() depends on the pair count only, for all counts that a window can have. With
  // positive terms every rounded operation is monotone: the feature grows with the pair count and
  // falls with the others, so that the corners of their ranges tell.
  bool isSteady() const {
    if (!isMonotone()) return false;
    const int least = leastSteady();
    return least > most_ || above(least, most_, most_);
  }

  // Of a steady feature: the least pair count that is above; beyond all counts if there is none.
  int leastSteady() const {
    int least = 0;
    while (least <= most_ && !above(least, least, least)) ++least;
    return least;
  }

  // Appends the hypothesis' entries of PairTables::least.
  void appendLeast(std::vector<std::uint8_t>& least) const {
    constexpr int kColumns = PairTables::kLeastColumns;
    for (int first = 0; first < kColumns; ++first) {
      for (int second = 0; second < kColumns; ++second) {
        least.push_back(leastAbove(first, second));
      }
    }
  }

 private:
  static bool isUsual(double value) { return std::isfinite(value) && value > 0.0; }

  bool isMonotone() const {
    const fnlHypo& h = tables_.fh[i_];
    const double(&pair)[2] = tables_.pairAcidPriproTable[h.gap][h.elem1][h.elem2];
    if (!(pair[0] >= 0.0) || !isUsual(length_ + pair[1])) return false;
    if (!std::isfinite((3.0 * most_ + pair[0]) / (length_ + pair[1]))) return false;
    for (const int acid : {h.elem1, h.elem2}) {
      const double(&prior)[2] = tables_.snglAcidPriproTable[acid];
      if (!(prior[0] > 0.0) || !isUsual(length_ + prior[1])) return false;
      if (!isUsual(prior[0] / (length_ + prior[1]))) return false;
      if (!isUsual((3.0 * most_ + prior[0]) / (length_ + prior[1]))) return false;
    }
    return true;
  }

  // Checks every pair count that can be, so that nothing is taken for granted.
  std::uint8_t leastAbove(int first, int second) const {
    const int mostPairs = std::min(first, second);
    int least = 0;
    while (least <= mostPairs && !above(least, first, second)) ++least;
    for (int pairs = least + 1; pairs <= mostPairs; ++pairs) {
      if (!above(pairs, first, second)) return PairTables::kAskFeature;
    }
    return static_cast<std::uint8_t>(least);
  }

  const ModelTables& tables_;
  size_t i_;  // hypothesis
  int length_;
  short most_;  // largest count
};

std::vector<double> acidRates(const ModelTables& tables, int length, int counts) {
  std::vector<double> rates;
  for (const auto& prior : tables.snglAcidPriproTable) {
    for (int count = 0; count < counts; ++count) {
      rates.push_back((3.0 * count + prior[0]) / (length + prior[1]));
    }
  }
  return rates;
}

}  // namespace

const PairTables* VoteTables::pairTables(int length) const {
  if (length < 0 || length >= lengths()) return nullptr;
  LazyPairTables& lazy = pairTables_[static_cast<size_t>(length)];
  std::call_once(lazy.once, [&] { lazy.tables = shared(makePairTables(length)); });
  return lazy.tables.get();
}

std::shared_ptr<const PairTables> VoteTables::shared(PairTables tables) const {
  const std::lock_guard lock(madeMutex_);
  for (const auto& made : made_) {
    if (made->isSame(tables)) return made;
  }
  made_.push_back(std::make_shared<const PairTables>(std::move(tables)));
  return made_.back();
}

PairTables VoteTables::makePairTables(int length) const {
  PairTables tables;
  tables.leastPlaces.resize(rowCount_);
  const size_t counts = static_cast<size_t>(counts_);
  std::vector<int> votes(rowCount_ * counts);  // of the pair hypotheses that do not move
  for (size_t order = 0; order < counted_.size(); ++order) {
    if (model_.fh[counted_[order]].kind == kPairKind) addPair(order, length, tables, votes);
  }
  tables.step.resize(counts * PairTables::kCountStride);
  for (size_t row = 0; row < rowCount_; ++row) {
    const int* ofRow = votes.data() + row * counts;
    tables.emptySum += ofRow[0];
    for (size_t count = 0; count + 1 < counts; ++count) {
      tables.step[PairTables::place(row, count)] = ofRow[count + 1] - ofRow[count];
    }
  }
  return tables;
}

// The vote of a pair hypothesis when above.
int VoteTables::voteOfPair(size_t i) const {
  return model_.pairAcidTrsld[i].polarity != 0 ? weight_[i] : -weight_[i];
}

void VoteTables::addPair(size_t order, int length, PairTables& tables,
                         std::vector<int>& votes) const {
  const size_t i = counted_[order];
  const fnlHypo& h = model_.fh[i];
  const PairFeature feature(model_, i, length, counts_);
  if (!feature.isSteady()) return addMovingPair(order, length, tables);
  const std::uint16_t row = rows_[h.elem1][h.gap][h.elem2];
  const int least = feature.leastSteady();
  const std::uint16_t leastPlace = PairTables::place(row, static_cast<size_t>(least));
  if (slots_[order] == row) {
    tables.leastPlaces[row] = leastPlace;
  } else {
    tables.steady.push_back({slots_[order], row, leastPlace});
  }
  int* const ofRow = votes.data() + row * static_cast<size_t>(counts_);
  for (int count = 0; count < counts_; ++count) {
    ofRow[count] += count >= least ? voteOfPair(i) : -voteOfPair(i);
  }
}

void VoteTables::addMovingPair(size_t order, int length, PairTables& tables) const {
  if (tables.moving.empty()) {
    tables.movedBy.resize(kPairGaps * 2 * kAminoAcids);
    tables.rate = acidRates(model_, length, counts_);
  }
  const size_t i = counted_[order];
  const fnlHypo& h = model_.fh[i];
  const PairFeature feature(model_, i, length, counts_);
  const double(&prior)[2] = model_.pairAcidPriproTable[h.gap][h.elem1][h.elem2];
  const std::uint8_t first = PairTables::memberElement(h.gap, 0, h.elem1);
  const std::uint8_t second = PairTables::memberElement(h.gap, 1, h.elem2);
  const auto index = static_cast<std::uint16_t>(tables.moving.size());
  tables.moving.push_back({rows_[h.elem1][h.gap][h.elem2], first, second, voteOfPair(i)});
  tables.movingSlots.push_back(slots_[order]);
  tables.features.push_back(
      {h.elem1, h.elem2, prior[0], length + prior[1], model_.pairAcidTrsld[i].trsld});
  if (length >= 3 * codons() - 3) feature.appendLeast(tables.least);
  const bool above = feature.above(0, 0, 0);
  tables.emptyAbove.push_back(above);
  tables.emptySum += above ? voteOfPair(i) : -voteOfPair(i);
  tables.movedBy[first].push_back(index);
  tables.movedBy[second].push_back(index);
}

}  // namespace velto
