// From the codons of one read to its placed path: windows vote, the best path through the frames is
// traced, and its frame changes are placed.
#pragma once

#include <vector>

#include "decoder/frame_steps.h"
#include "decoder/frame_trellis.h"
#include "model/vote_engine.h"

namespace velto {

// Reusable for one read after another; for one thread at a time.
struct FrameScratch {
  WindowScores scores;  // if wanted
  WindowClasses classes;
  std::vector<FrameStep> steps;
  FrameTrellis trellis;
  std::vector<int> path;  // [codon step] frame 0 to 2, or kOffPath: the result
};

// What decoding takes of a model beside its votes.
struct FrameModel {
  const double (&matrix)[16];  // [4 x current state + previous state]
  int windowWidth;             // bases
};

// From the steps of one read to its placed path: `path` is replaced by the best path through the
// frames, whose changes are placed by the judge if its score is above kLeastCodingScore.
TracedPath decodeSteps(const FrameModel& model, const std::vector<FrameStep>& steps,
                       TrialJudge& judge, FrameTrellis& trellis, std::vector<int>& path);

// The same from the codons of a read of `length` bases and its votes, into scratch.path; fills
// scratch.scores if wanted. Score and path are those of the named operations of the one-read
// program.
TracedPath decodeFrames(const FrameModel& model, const CodedRead& codons, int length,
                        VoteEngine& votes, bool wantScores, FrameScratch& scratch);

}  // namespace velto
