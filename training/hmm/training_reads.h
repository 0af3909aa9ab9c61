// Simulated reads for the network, and the states in which their bases truly are.
#pragma once

#include <cstdint>
#include <vector>

#include "core/random.h"
#include "hmm/base_rates.h"
#include "hmm/forward_backward.h"
#include "simulation/read_simulator.h"
#include "training/fold_split.h"

namespace velto {

// A kind of sequencer: how it errs, and how large a share of the reads it made.
struct ReadProfile {
  ErrorModel errors;
  double share;
};

// What reads the network is trained on. The shares of kinds of reads, and of profiles, sum up to 1;
// what the other kinds leave is the share of reads of non-coding transcripts.
struct ReadMixture {
  double coding = 0.51;      // with at least kLeastCodingBases coding bases
  double antisense = 0.08;   // the other strand of such reads, on which nothing codes
  double utr3 = 0.08;        // wholly behind the coding region
  double wholeShare = 0.15;  // of the coding and antisense reads: whole transcripts
  int longestWhole = 5000;   // bases of a transcript that is read as a whole
  FragmentLengths lengths{300, 800};
  std::vector<ReadProfile> profiles;
};

ReadMixture standardMixture();

struct TrainingRead {
  SimulatedRead read;
  BaseErrorRates rates;    // with which the model reads it
  std::size_t fold = 0;    // that its transcript belongs to
  bool antisense = false;  // the bases of `read` are of the other strand than all else of it
};

// Draws reads from the training folds; the k-th of a seed is always the same. Any thread may draw.
class ReadDrawer {
 public:
  // `split` must outlive the drawer and have coding and non-coding transcripts.
  ReadDrawer(const std::vector<const TranscriptPool*>& folds, ReadMixture mixture);

  TrainingRead draw(std::uint64_t seed, std::uint64_t k) const;

  // Share of the coding ones among the first `count` reads of a seed that begin inside their coding
  // region, to four digits; between 0.01 and 0.99.
  double truncatedShare(std::uint64_t seed, std::uint64_t count) const;

 private:
  struct Source {
    const Transcript* transcript;
    std::size_t fold;
  };

  const ErrorModel& drawErrorModel(Random& random) const;
  const Source& drawSource(const std::vector<Source>& sources, Random& random) const;
  Fragment drawCoding(const Transcript& transcript, Random& random) const;
  Fragment drawUtr3(const Transcript& transcript, Random& random) const;

  ReadMixture mixture_;
  std::vector<Source> coding_, noncoding_, utr3_;
};

// The states that each base of a read may truly be in. Bases near a frameshift, or near a start or
// stop codon that was misread beyond what the model allows, may be in any.
void trueStates(const SimulatedRead& read, std::vector<StateMask>& masks);

// The same; those of an antisense read are the ones of non-coding transcripts.
void trueStates(const TrainingRead& drawn, std::vector<StateMask>& masks);

}  // namespace velto
