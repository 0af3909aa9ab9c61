#include "decoder/frame_decoder.h"

#include <vector>

#include "core/letter_codes.h"
#include "decoder/base_scores.h"
#include "decoder/decode_frames.h"
#include "decoder/placed_call.h"
#include "model/integer_engine.h"
#include "model/sliding_engine.h"

namespace velto {
namespace {

struct ReadScratch : Decoder::Scratch {
  CodedRead codons;
  IntegerVote vote;
  FrameScratch frames;
};

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
  const ModelView view = models_.model(readClass).view();
  const FrameModel model{view.tables.malkovChain, view.windowWidth};
  const VoteTables& tables = tablesOf(readClass);
  space.codons.assign(seq, length);

  const VotingRead voting{view, tables, seq, length, space.codons};
  IntegerEngine integers(voting, space.vote);
  SlidingEngine doubles(view, seq, length);
  VoteEngine& votes = tables.usable() ? static_cast<VoteEngine&>(integers) : doubles;
  const TracedPath traced =
      decodeFrames(model, space.codons, length, votes, wishes.scores, space.frames);

  call.clear();
  call.model = readClass.name();
  callPath(space.frames.path, traced.score, length, call);
  if (!wishes.scores) return;
  std::vector<double> stepScores[3];
  layOutScores(space.codons, length, view.windowWidth, space.frames.scores, stepScores);
  for (int f = 0; f < 3; ++f) call.scores[f] = baseScores(stepScores[f], f, length);
}

}  // namespace velto
