// Splits transcripts by chromosome or gene into the parts of a training run.
#pragma once

#include <vector>

#include "training/transcript.h"
#include "training/window_samples.h"

namespace velto {

struct FoldSplit {
  TranscriptPool boosting;  // three fifths: windows of the votes that the search works with
  TranscriptPool search;    // a fifth: reads of the matrix search; then windows of the final votes
  TranscriptPool heldBack;  // a fifth: reads of the reported accuracy
};

// Keeps the transcripts of a group in one part, unless there are fewer than ten groups: then each
// transcript is a group of its own. The parts point into the arguments, which must outlive them.
FoldSplit splitFolds(const std::vector<Transcript>& coding,
                     const std::vector<Transcript>& noncoding);

}  // namespace velto
