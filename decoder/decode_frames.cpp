#include "decoder/decode_frames.h"

#include "decoder/coding_region.h"
#include "decoder/frame_scores.h"
#include "decoder/shift_placement.h"
#include "model/window_vote.h"

namespace velto {
namespace {

void classifyByDoubles(const VotingRead& read, WindowClasses& classes) {
  const WindowScores scores = scoreWindows(read.model, read.seq, read.length);
  for (int f = 0; f < 3; ++f) {
    classes.frame[f].clear();
    for (const double score : scores.frame[f]) {
      classes.frame[f].push_back(static_cast<signed char>(windowClass(score)));
    }
  }
}

void placeFrameChanges(const VotingRead& read, int endStep, FrameScratch& scratch) {
  if (read.tables.usable()) {
    IntegerJudge judge(read, scratch.vote);
    placeShifts(judge, read.model.windowWidth, endStep, scratch.path);
  } else {
    placeShifts(read.model, read.seq, read.length, endStep, scratch.path);
  }
}

}  // namespace

TracedPath decodeFrames(const VotingRead& read, FrameScratch& scratch) {
  if (read.tables.usable()) {
    classifyWindows(read, scratch.vote, scratch.classes);
  } else {
    classifyByDoubles(read, scratch.classes);
  }
  layOutSteps(read.codons, read.length, read.model.windowWidth, scratch.classes, scratch.steps);
  scratch.trellis.fill(read.model.tables.malkovChain, scratch.steps);
  const TracedPath traced = scratch.trellis.trace(scratch.path);
  if (traced.score > kLeastCodingScore) placeFrameChanges(read, traced.endStep, scratch);
  return traced;
}

}  // namespace velto
