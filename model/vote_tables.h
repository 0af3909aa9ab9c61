// The hypotheses of one model merged into integer tables over the counts of a window.
//
// Weights written with six decimals are whole millionths, so the vote is a sum of integers, exact
// in any order, and hypotheses on the same codon, amino acid or pair share one table. The sign of
// the integer sum, and the order of two such sums, are those of the ordered sum of doubles, which
// errs by less than 500 x 2^-53 x 1000, far below one millionth; only where the integer sum is 0,
// or two are equal, the doubles have to be asked.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "model/coded_read.h"
#include "model/model_tables.h"

namespace velto {

// The counts of one amino acid and of its codons in a window: byte s is the count of its codon
// number s, the last byte that of the amino acid, so that one addition counts a codon. No window
// holds as many codons as a byte counts.
using AcidCounts = std::uint64_t;

constexpr int kAcidByte = 56;  // first bit of the amino acid's count

constexpr AcidCounts oneCodon(int synonym) {
  return AcidCounts{1} << kAcidByte | AcidCounts{1} << (8 * synonym);
}

// Most slots for the votes of single hypotheses, as VoteTables::slots.
constexpr int kMostVoteSlots = kModelHypotheses + kPairGaps;

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

// The hypotheses one by one, for the ordered sum of doubles. Each has a slot for its vote; that of
// the first pair hypothesis of a row has the row's number.
struct CodonRule {
  std::uint16_t slot;
  std::uint8_t acid;
  std::uint8_t synonym;
  std::uint32_t leastCodons;  // where its entries of VoteTables::leastCodons begin
};
struct AcidRule {
  std::uint16_t slot;
  std::uint8_t acid;
  int threshold;
};
struct SteadyPairRule {
  std::uint16_t slot;
  std::uint16_t row;         // of the pair count
  std::uint16_t leastPlace;  // PairTables::place of the row's counts that are above, or beyond

  bool operator==(const SteadyPairRule&) const = default;
};

// The pair votes for windows of one length in bases. Constant after construction.
struct PairTables {
  // The place of a row's count in `step`: low counts, which most are, stand close together. The
  // distance of two counts is no power of two, so that they do not compete for cache lines.
  static constexpr unsigned kCountStride = 528;
  static std::uint16_t place(size_t row, size_t count) {
    return static_cast<std::uint16_t>(count * kCountStride + row);
  }

  std::vector<int> step;  // [place]: vote change from the count to the next
  int emptySum = 0;       // votes of all pair hypotheses in a window without pairs

  // [pair row]: leastPlace of its first hypothesis; any number if that one is not steady.
  std::vector<std::uint16_t> leastPlaces;
  std::vector<SteadyPairRule> steady;  // those that are not the first of their row

  std::vector<MovingPair> moving;
  std::vector<std::uint16_t> movingSlots;  // [moving]
  std::vector<MovingFeature> features;     // [moving]
  std::vector<char> emptyAbove;            // [moving] above in a window without pairs
  // Empty where nothing moves:
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

  // True if both are the same tables, as they are for most lengths if all features are steady.
  bool isSame(const PairTables& other) const {
    return moving.empty() && other.moving.empty() && leastPlaces == other.leastPlaces &&
           steady == other.steady;
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

  // [counted hypothesis, in order]: its slot. [slot]: the vote when above.
  const std::vector<std::uint16_t>& slots() const { return slots_; }
  const std::vector<double>& slotVotes() const { return slotVotes_; }

  // The rules of the hypotheses on codons and single amino acids; those of pairs stand in
  // PairTables.
  const std::vector<CodonRule>& codonRules() const { return codonRules_; }
  // The least count of the codon that is above when the amino acid has this count.
  std::uint8_t leastCodons(const CodonRule& rule, AcidCounts counts) const {
    return leastCodons_[rule.leastCodons + (counts >> kAcidByte)];
  }
  const std::vector<AcidRule>& acidRules() const { return acidRules_; }

  // Tables for windows of `length` bases; null for lengths no window of this model has.
  const PairTables* pairTables(int length) const;

  // [gap][second]: pair rows of one first amino acid; second may be kUncountedAcid. Pairs without
  // hypotheses share one row per pair class, since their counts do not matter.
  using PairRows = std::uint16_t[kPairGaps][kAminoAcids + 1];
  const PairRows& rowsAfter(int first) const { return rows_[first]; }
  size_t rows() const { return rowCount_; }

  // [acid]: its votes in a window without it.
  const std::array<int, kAminoAcids>& emptyAcidVotes() const { return emptyAcidVotes_; }

  // Votes of all hypotheses on one amino acid and its codons. Amino acids of fewer codons add
  // zeros: that is faster than a loop whose length cannot be foreseen.
  int acidVotes(int acid, AcidCounts counts) const {
    const int* table = codonVotes_.data() + triangle(counts >> kAcidByte);
    const size_t* codons = codonTable_[static_cast<size_t>(acid)];
    const auto ofCodon = [=](int s) { return table[codons[s] + (counts >> (8 * s) & 0xFF)]; };
    return ofCodon(0) + ofCodon(1) + ofCodon(2) + ofCodon(3) + ofCodon(4) + ofCodon(5);
  }

 private:
  static size_t triangle(size_t count) { return count * (count + 1) / 2; }

  bool readWeights();
  void fillCodonVotes();
  void addCodonHypothesis(size_t i);
  void addAcidHypothesis(size_t i);
  void fillRules();
  void numberSlots();
  void addCodonRule(size_t i, std::uint16_t slot);
  void numberRows();
  int lengths() const;
  int* votesOfCodon(int acid, size_t synonym);
  void addPair(size_t order, int length, PairTables& tables, std::vector<int>& votes) const;
  void addMovingPair(size_t order, int length, PairTables& tables) const;
  int voteOfPair(size_t i) const;
  PairTables makePairTables(int length) const;
  std::shared_ptr<const PairTables> shared(PairTables tables) const;

  struct LazyPairTables {
    std::once_flag once;
    std::shared_ptr<const PairTables> tables;
  };

  const ModelTables& model_;
  int counts_;
  bool usable_ = false;
  std::vector<size_t> counted_;  // hypotheses that vote, in order
  std::vector<int> weight_;      // [hypothesis] millionths, the vote when above
  std::vector<std::uint16_t> slots_;
  std::vector<double> slotVotes_;
  std::vector<CodonRule> codonRules_;
  std::vector<std::uint8_t> leastCodons_;  // of each codon rule: [acid count]
  std::vector<AcidRule> acidRules_;

  // [acid][synonym]: begin of the codon's table in codonVotes_; 0, where a table of zeros stands,
  // for codons without hypotheses and numbers that no codon has.
  size_t codonTable_[kAminoAcids][kSynonyms] = {};
  std::vector<int> codonVotes_;  // of each table: [triangle(acid count) + codon count]
  std::array<int, kAminoAcids> emptyAcidVotes_{};

  PairRows rows_[kAminoAcids];  // [first]
  size_t rowCount_ = 0;
  std::unique_ptr<LazyPairTables[]> pairTables_;  // [window length]
  mutable std::mutex madeMutex_;
  mutable std::vector<std::shared_ptr<const PairTables>> made_;  // no two of them the same
};

}  // namespace velto
