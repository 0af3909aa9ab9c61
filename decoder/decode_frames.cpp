#include "decoder/decode_frames.h"

#include "decoder/coding_region.h"
#include "decoder/frame_scores.h"
#include "decoder/shift_placement.h"
#include "model/window_vote.h"

namespace velto {
namespace {

void scoreWindows(const VotingRead& read, FrameScratch& scratch) {
  if (read.tables.usable()) {
    scoreWindows(read, scratch.vote, scratch.scores);
  } else {
    scratch.scores = scoreWindows(read.model, read.seq, read.length);
  }
}

void classify(const WindowScores& scores, WindowClasses& classes) {
  for (int f = 0; f < 3; ++f) {
    classes.frame[f].clear();
    for (const double score : scores.frame[f]) {
      classes.frame[f].push_back(static_cast<signed char>(windowClass(score)));
    }
  }
}

}  // namespace

TracedPath decodeSteps(const FrameModel& model, const std::vector<FrameStep>& steps,
                       TrialJudge& judge, FrameTrellis& trellis, std::vector<int>& path) {
  trellis.fill(model.matrix, steps);
  const TracedPath traced = trellis.trace(path);
  if (traced.score > kLeastCodingScore) {
    placeShifts(judge, model.windowWidth, traced.endStep, path);
  }
  return traced;
}

TracedPath decodeFrames(const VotingRead& read, bool wantScores, FrameScratch& scratch) {
  const FrameModel model{read.model.tables.malkovChain, read.model.windowWidth};
  const bool exact = read.tables.usable();
  if (wantScores || !exact) {
    scoreWindows(read, scratch);
    classify(scratch.scores, scratch.classes);
  } else {
    classifyWindows(read, scratch.vote, scratch.classes);
  }
  layOutSteps(read.codons, read.length, model.windowWidth, scratch.classes, scratch.steps);
  IntegerJudge byIntegers(read, scratch.vote);
  SlidingJudge byDoubles(read.model, read.seq, read.length);
  TrialJudge& judge = exact ? static_cast<TrialJudge&>(byIntegers) : byDoubles;
  return decodeSteps(model, scratch.steps, judge, scratch.trellis, scratch.path);
}

}  // namespace velto
