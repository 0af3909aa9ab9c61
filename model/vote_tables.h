// The hypotheses of one model merged into integer tables over the counts of a window.
//
// Weights written with six decimals are whole millionths, so the vote is a sum of integers, exact
// in any order, and hypotheses on the same codon, amino acid or pair share one table. The sign of
// the integer sum, and the order of two such sums, are those of the ordered sum of doubles, which
// errs by less than 500 x 2^-53 x 1000, far below one millionth; only where the integer sum is 0,
// or two are equal, the doubles have to be asked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "model/coded_read.h"
#include "model/model_tables.h"

namespace velto {

// A pair hypothesis whose feature moves with the counts of its two amino acids, so that it has to
// be asked whenever one of them changes.
struct MovingPair {
  std::uint16_t row;           // of the pair count
  std::uint8_t firstElement;   // memberElement of its first
  std::uint8_t secondElement;  // and of its second amino acid
  int weight;                  // millionths, the vote when above
};

// The feature of a moving pair, for counts that PairTables::least does not know.
struct MovingFeature {
  int first, second;  // amino acids
  double prior;       // numerator prior of the pair
  double length;      // window length with the denominator prior of the pair
  double threshold;
};

// The pair votes for windows of one length in bases. Constant after construction.
struct PairTables {
  std::vector<int> step;  // [row x counts + count]: vote change from count to count + 1
  int emptySum = 0;       // votes of all pair hypotheses in a window without pairs

  std::vector<MovingPair> moving;
  std::vector<MovingFeature> features;              // [moving]
  std::vector<char> emptyAbove;                     // [moving] above in a window without pairs
  std::vector<std::vector<std::uint16_t>> movedBy;  // [memberElement]: indices of moving
  std::vector<double> rate;                         // [acid x counts + count]: its frequency

  // [leastIndex]: the least pair count that is above, or kAskFeature. Only for counts of the two
  // amino acids below kLeastColumns; empty for lengths of windows cut short, which are rare.
  static constexpr size_t kLeastColumns = 16;
  static constexpr std::uint8_t kAskFeature = 255;
  std::vector<std::uint8_t> least;

  static size_t leastIndex(size_t moving, size_t first, size_t second) {
    return (moving * kLeastColumns + first) * kLeastColumns + second;
  }

  static std::uint8_t memberElement(int gap, int member, int acid) {
    return static_cast<std::uint8_t>((2 * gap + member) * kAminoAcids + acid);
  }
};

// All tables of one model. Constant after construction as far as a caller can see: the tables of a
// window length are made when first asked for. Any number of threads may use one object.
class VoteTables {
 public:
  // The model's tables must outlive the object.
  explicit VoteTables(const ModelView& model);

  // False if the weights are no whole millionths, or too large; then nothing else may be asked.
  bool usable() const { return usable_; }

  int codons() const { return counts_ - 1; }  // of a whole window
  int counts() const { return counts_; }      // entries per count: 0 to codons()

  // Tables for windows of `length` bases; null for lengths no window of this model has.
  const PairTables* pairTables(int length) const;

  // Pair row of two amino acids (kUncountedAcid allowed) in a pair class; rows without hypotheses
  // share one row per pair class, since their counts do not matter.
  std::uint16_t row(int gap, int first, int second) const {
    return rows_[static_cast<size_t>((gap * kPartners + first) * kPartners + second)];
  }
  size_t rows() const { return rowCount_; }

  // Votes of all hypotheses on one amino acid and its codons, from its count and those of its
  // codons ([slot]).
  int acidVotes(int acid, int acidCount, const std::uint8_t* codonCounts) const {
    const int* table = codonVotes_.data() + triangle(acidCount);
    const SlotRange active = active_[static_cast<size_t>(acid)];
    int votes = 0;
    for (size_t slot = active.begin; slot < active.end; ++slot) {
      votes += table[slot * slotEntries_ + codonCounts[slot]];
    }
    return votes;
  }

 private:
  static constexpr int kPartners = kAminoAcids + 1;

  static size_t triangle(int count) { return static_cast<size_t>(count * (count + 1) / 2); }

  struct SlotRange {
    std::uint8_t begin, end;
  };

  bool readWeights();
  void fillCodonVotes();
  void addCodonHypothesis(size_t i);
  void addAcidHypothesis(size_t i);
  void numberRows();
  int lengths() const;
  int* votesOfSlot(int acid, size_t slot);
  void addPair(size_t i, int length, PairTables& tables, std::vector<int>& votes) const;
  std::unique_ptr<const PairTables> makePairTables(int length) const;

  struct LazyPairTables {
    std::once_flag once;
    std::unique_ptr<const PairTables> tables;
  };

  const ModelTables& model_;
  int counts_;
  bool usable_ = false;
  std::vector<size_t> counted_;  // hypotheses that vote, in order
  std::vector<int> weight_;      // [hypothesis] millionths, the vote when above

  size_t slotEntries_;                  // of one slot in codonVotes_
  SlotRange active_[kAminoAcids] = {};  // [acid] slots from the first to the last with votes
  std::vector<int> codonVotes_;         // [slot][triangle(acid count) + codon count]

  std::vector<std::uint16_t> rows_;
  size_t rowCount_ = 0;
  std::unique_ptr<LazyPairTables[]> pairTables_;  // [window length]
};

}  // namespace velto
