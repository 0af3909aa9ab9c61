// The integer vote of one window whose codons come and go.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/coded_read.h"
#include "model/vote_tables.h"

namespace velto {

// Reusable for one window after another; for one thread at a time.
class IntegerVote {
 public:
  // Begins an empty window of `length` bases, for which the tables have pair tables. The tables
  // must outlive the window; it may never hold more than tables.codons() codons.
  void begin(const VoteTables& tables, const PairTables& pairs);

  // The codon at base p, 0 <= p < read length, comes or goes.
  void add(const CodedRead& read, int p);
  void remove(const CodedRead& read, int p);

  // One codon goes, then another one comes.
  void slide(const CodedRead& read, int leaving, int entering);

  // The vote in millionths.
  int sum() const { return sum_; }

  // The vote as the ordered sum of doubles, to the last bit that of voteSum.
  double orderedSum() const;

  // Writes the votes of the counted hypotheses into their slots, as VoteTables::slots.
  void writeVotes(double* votes) const;

 private:
  template <int kBy>
  int count(const CodedRead& read, int p);
  template <int kBy>
  int countMembers(const CodedRead& read, int p);
  int askMoving(std::uint8_t element);
  bool isAbove(const MovingFeature& feature, unsigned pairCount, unsigned first,
               unsigned second) const;

  const VoteTables* tables_ = nullptr;
  const PairTables* pairs_ = nullptr;
  int sum_ = 0;
  std::array<AcidCounts, kAminoAcids> acidCounts_{};  // [acid]
  std::array<int, kAminoAcids> acidVotes_{};          // [acid], as VoteTables::acidVotes
  std::vector<std::uint16_t> place_;  // [pair row]: of its count in PairTables::step
  std::array<std::uint8_t, kPairGaps * 2 * kAminoAcids> memberCount_{};  // [memberElement]; moving
  std::vector<char> above_;                                              // [moving pair]
};

}  // namespace velto
