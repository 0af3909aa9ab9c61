// Splits transcripts by chromosome or gene into the parts of a training run.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "simulation/transcript.h"

namespace velto {

// Transcripts that reads are drawn from; not owned.
struct TranscriptPool {
  std::vector<const Transcript*> coding;
  std::vector<const Transcript*> noncoding;
};

constexpr std::size_t kTrainingFolds = 4;

// Five parts of about equal size.
struct FoldSplit {
  std::array<TranscriptPool, kTrainingFolds> training;  // windows of the votes, and reads of the
                                                        // matrix search
  TranscriptPool heldBack;                              // reads of the reported accuracy

  // The training folds together, but for fold `without`; all of them by default.
  TranscriptPool trainingPool(std::size_t without = kTrainingFolds) const;
};

// Keeps the transcripts of a group in one part, unless there are fewer than ten groups: then each
// transcript is a group of its own. The parts point into the arguments, which must outlive them.
FoldSplit splitFolds(const std::vector<Transcript>& coding,
                     const std::vector<Transcript>& noncoding);

}  // namespace velto
