// From the codons of one read to its placed path: windows vote, the best path through the frames is
// traced, and its frame changes are placed.
#pragma once

#include <vector>

#include "decoder/frame_steps.h"
#include "decoder/frame_trellis.h"
#include "decoder/integer_scores.h"
#include "model/integer_vote.h"

namespace velto {

// Reusable for one read after another; for one thread at a time.
struct FrameScratch {
  IntegerVote vote;
  WindowClasses classes;
  std::vector<FrameStep> steps;
  FrameTrellis trellis;
  std::vector<int> path;  // [codon step] frame 0 to 2, or kOffPath: the result
};

// Fills scratch.path; the frame changes are placed if the score is above kLeastCodingScore. Score
// and path are those of the named operations of the one-read program.
TracedPath decodeFrames(const VotingRead& read, FrameScratch& scratch);

}  // namespace velto
