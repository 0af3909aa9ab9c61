#include "decoder/decode_frames.h"

#include "decoder/coding_region.h"
#include "decoder/shift_placement.h"

namespace velto {

TracedPath decodeSteps(const FrameModel& model, const std::vector<FrameStep>& steps,
                       TrialJudge& judge, FrameTrellis& trellis, std::vector<int>& path) {
  trellis.fill(model.matrix, steps);
  const TracedPath traced = trellis.trace(path);
  if (traced.score > kLeastCodingScore) {
    placeShifts(judge, model.windowWidth, traced.endStep, path);
  }
  return traced;
}

TracedPath decodeFrames(const FrameModel& model, const CodedRead& codons, int length,
                        VoteEngine& votes, bool wantScores, FrameScratch& scratch) {
  if (wantScores) {
    votes.score(scratch.scores);
    classify(scratch.scores, scratch.classes);
  } else {
    votes.classify(scratch.classes);
  }
  layOutSteps(codons, length, model.windowWidth, scratch.classes, scratch.steps);
  return decodeSteps(model, scratch.steps, votes, scratch.trellis, scratch.path);
}

}  // namespace velto
