#include "decoder/frame_decoder.h"

#include <vector>

#include "core/letter_codes.h"
#include "decoder/base_scores.h"
#include "decoder/decode_frames.h"
#include "decoder/frame_scores.h"
#include "decoder/placed_call.h"

namespace velto {
namespace {

struct ReadScratch : Decoder::Scratch {
  CodedRead codons;
  FrameScratch frames;
};

void fillBaseScores(const VotingRead& read, const WindowScores& scores, Call& call) {
  std::vector<double> stepScores[3];
  layOutScores(read.codons, read.length, read.model.windowWidth, scores, stepScores);
  for (int f = 0; f < 3; ++f) call.scores[f] = baseScores(stepScores[f], f, read.length);
}

}  // namespace

std::unique_ptr<Decoder::Scratch> FrameDecoder::scratch() const {
  return std::make_unique<ReadScratch>();
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
  auto& space = static_cast<ReadScratch&>(scratch);
  const int length = read.length();
  const short* seq = read.codes.data();
  const ReadClass readClass = classifyRead(length, gcPercent(read.codes));
  const ModelView model = models_.model(readClass).view();
  space.codons.assign(seq, length);
  const VotingRead voting{model, tablesOf(readClass), seq, length, space.codons};

  const TracedPath traced = decodeFrames(voting, wishes.scores, space.frames);
  call.clear();
  call.model = readClass.name();
  callPath(space.frames.path, traced.score, length, call);
  if (wishes.scores) fillBaseScores(voting, space.frames.scores, call);
}

}  // namespace velto
