// Searches the frame-transition matrix of one length group, and the vote shift of its four classes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "decoder/path_recurrence.h"
#include "evaluation/evaluation_counts.h"
#include "model/model_tables.h"
#include "model/read_class.h"
#include "simulation/read_simulator.h"
#include "training/frames/binned_vote.h"

namespace velto {

constexpr int kGcClasses = 4;

// What the reads of a search differ in: error rates of coding reads, or non-coding reads.
enum SearchPreset { kEstReads, kMildReads, kCleanReads, kNoncodingReads, kSearchPresets };

// Counts of each preset; frameshifts are not counted.
using PresetCounts = std::array<EvaluationCounts, kSearchPresets>;

// Numbers of a matrix with the entries that the search ties together, and the shifts added to the
// votes of the GC classes.
struct TiedMatrix {
  double stay = 1.8;        // coding after coding
  double change = 0.3;      // coding after non-coding and the reverse
  double empty = -0.15;     // non-coding after non-coding
  double opening = 10.0;    // first step after a path's start
  double crossing = -80.0;  // first step after a stop codon that the path runs over
  double ending = -75.0;    // stop codon
  double gate = 30.0;       // stop codon right after a path's start: what every real path must beat
  std::array<double, kGcClasses> shifts{};

  static constexpr std::size_t kNumbers = 7 + kGcClasses;
  double& number(std::size_t i);

  // The matrix, rounded to the decimals of its file.
  void fill(double (&matrix)[16]) const;
};

// A read with its window votes, ready to be decoded under any matrix and shift.
class ScoredRead {
 public:
  // `vote` must outlive the read.
  ScoredRead(SimulatedRead read, const BinnedVote& vote, int windowWidth);

  // Counts of the read decoded as the frame decoder does it, but for the rounding of votes. One
  // thread at a time: best trials are kept for the next matrix.
  EvaluationCounts decode(const double (&matrix)[16], double shift) const;

 private:
  struct Step {
    FrameStep laid;  // states of voted windows: kVoted
    float vote[3];   // [frame]
  };
  static constexpr signed char kVoted = 9;
  static constexpr signed char kNotTried = -1;
  class KeptTrials;

  SimulatedRead read_;
  const BinnedVote* vote_;
  int windowWidth_;                          // bases
  std::vector<Step> steps_;                  // as the frame decoder lays them out
  mutable std::vector<signed char> trials_;  // best ones: [last codon step of a trial window][first
                                             // base's frame][shift - 1], or kNotTried
};

// Reads of one class by preset.
struct SearchReads {
  std::vector<ScoredRead> ofPreset[kSearchPresets];
};

using GroupReads = std::array<SearchReads, kGcClasses>;  // [GC class], of one length group

// Counts of the first `fraction` of the reads of each preset of one class. Uses all threads of
// the calling arena.
PresetCounts countReads(const SearchReads& reads, const double (&matrix)[16], double shift,
                        double fraction = 1.0);

// What a search maximises. The value of a matrix is the mean over the presets of coding reads, by
// their weights, of frame F1, frame recall and correlation, by theirs; more for exact regions, less
// for calls of non-coding reads.
struct SearchObjective {
  double presetWeights[kNoncodingReads] = {0.32, 0.3, 0.38};  // sum up to 1
  double frameF1 = 0.4;
  double frameRecall = 0.3;
  double correlation = 0.3;
  double exactBonus = 0.2;  // if all clean reads had start and stop exact
  double freeCalls = 0.2;   // share of non-coding reads whose calls cost nothing
  double callCost = 2.0;    // of the share of the other non-coding reads that are called
};
double searchValue(const PresetCounts& counts, const SearchObjective& objective);

struct SearchPlan {
  int generations;       // of a population of candidates, judged by a fraction of the reads
  double earlyFraction;  // of the reads in these generations
  int lateGenerations;   // of the same population, judged by all reads
  int steps;             // at least 1, of a random walk from the best candidate, on all reads
  SearchObjective objective = {};
};

// The mean of the numbers met on the walk, which keeps near the best value: the best numbers
// themselves owe part of their value to the very reads they were judged by. Depends on its
// arguments alone, not on the number of threads.
TiedMatrix searchMatrix(const GroupReads& reads, const SearchPlan& plan, std::uint64_t seed);

}  // namespace velto
