#include "decoder/frame_decoder.h"

#include <vector>

#include "core/letter_codes.h"
#include "decoder/base_scores.h"
#include "decoder/coding_region.h"
#include "decoder/frame_path.h"
#include "decoder/frame_scores.h"
#include "decoder/integer_scores.h"
#include "decoder/placed_call.h"
#include "decoder/shift_placement.h"

namespace velto {
namespace {

struct FrameScratch : Decoder::Scratch {
  CodedRead codons;
  IntegerVote vote;
  WindowScores scores;
  layout lay;
  std::vector<double> frameScore[3];
  std::vector<dpNode> cells;
  std::vector<int> path;
};

// Window scores of the read, or numbers of their signs where that is enough.
void fillScores(const VotingRead& read, bool wantScores, IntegerVote& vote, WindowScores& scores) {
  if (wantScores || !read.tables.usable()) {
    scores = scoreWindows(read.model, read.seq, read.length);
  } else {
    scoreSigns(read, vote, scores);
  }
}

void placeFrameChanges(const VotingRead& read, IntegerVote& vote, int endStep,
                       std::vector<int>& path) {
  if (read.tables.usable()) {
    IntegerJudge judge(read, vote);
    placeShifts(judge, read.model.windowWidth, endStep, path);
  } else {
    placeShifts(read.model, read.seq, read.length, endStep, path);
  }
}

}  // namespace

std::unique_ptr<Decoder::Scratch> FrameDecoder::scratch() const {
  return std::make_unique<FrameScratch>();
}

const VoteTables& FrameDecoder::tablesOf(const ReadClass& readClass) const {
  LazyTables& lazy = tables_[static_cast<size_t>(readClassIndex(readClass))];
  std::call_once(lazy.once, [&] {
    lazy.tables = std::make_unique<const VoteTables>(models_.model(readClass).view());
  });
  return *lazy.tables;
}

void FrameDecoder::decode(const ReadView& read, const Wishes& wishes, Scratch& scratch,
                          Call& call) const {
  auto& space = static_cast<FrameScratch&>(scratch);
  const int length = read.length();
  const short* seq = read.codes.data();
  const ReadClass readClass = classifyRead(length, gcPercent(read.codes));
  const ModelView model = models_.model(readClass).view();
  space.codons.assign(seq, length);
  const VotingRead voting{model, tablesOf(readClass), seq, length, space.codons};

  fillScores(voting, wishes.scores, space.vote, space.scores);
  layOutFrames(model, seq, length, space.scores, space.lay, space.frameScore);
  fillLeadingClasses(space.lay, model.windowWidth);
  const size_t steps = space.lay.cls[0].size();
  space.cells.assign(3 * steps, dpNode());
  fillFramePaths(model.tables.malkovChain, space.lay, space.cells.data());
  space.path.clear();
  const TracedPath traced = traceFramePath(space.cells.data(), static_cast<int>(steps), space.path);
  if (traced.score > kLeastCodingScore) {
    placeFrameChanges(voting, space.vote, traced.endStep, space.path);
  }
  call.clear();
  call.model = readClass.name();
  callPath(space.path, traced.score, length, call);
  if (!wishes.scores) return;
  for (int f = 0; f < 3; ++f) call.scores[f] = baseScores(space.frameScore[f], f, length);
}

}  // namespace velto
