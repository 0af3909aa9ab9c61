#include "hmm/hmm_decoder.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>
#include <vector>

#include "hmm/coding_path.h"
#include "hmm/error_rates.h"
#include "hmm/float_math.h"
#ifdef VELTO_HIGHWAY
#include "hmm/lattice_lanes.h"
#endif
#include "hmm/read_lattice.h"

namespace velto {
namespace {

constexpr std::size_t kMostShareReads = 1000;

struct HmmScratch : Decoder::Scratch {
  ReadLattice lattice;
  std::vector<FramePosterior> frames;
  PathTrace trace;
#ifdef VELTO_HIGHWAY
  LatticeLanes lanes;
  std::array<std::vector<BaseEmission>, kLanes> emissions;  // [lane]
#endif
};

#ifdef VELTO_HIGHWAY
// Longer reads, of which eight would take more than 30 MB, are decoded alone.
constexpr std::size_t kMostBasesInLanes = 20000;

// Indices of the reads, equal lengths in order of the reads.
std::vector<std::size_t> longestFirst(std::span<const ReadView> reads) {
  std::vector<std::size_t> order(reads.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return reads[a].codes.size() > reads[b].codes.size();
  });
  return order;
}
#endif

// What turns posteriors into those given that the read codes.
float givenCoding(const Call& call) { return static_cast<float>(1.0 / logisticOf(call.score)); }

ReadView withoutQualities(const ReadView& read) { return {read.codes, {}}; }

}  // namespace

HmmDecoder::HmmDecoder(std::shared_ptr<const HmmModel> model, HmmOptions options)
    : model_(std::move(model)),
      options_(options),
      codingShare_(options.codingShare.value_or(model_->decision.codingShare)) {
  if (options_.errorRates) rates_.mean = *options_.errorRates;
}

std::unique_ptr<Decoder::Scratch> HmmDecoder::scratch() const {
  return std::make_unique<HmmScratch>();
}

void HmmDecoder::decode(const ReadView& read, const Wishes&, Scratch& scratch, Call& call) const {
  auto& own = static_cast<HmmScratch&>(scratch);
  own.lattice.run(*model_, rates_, read, true);
  if (!decide(own.lattice.evidence(), call)) return;
  framePosteriors(own.lattice.posteriors, givenCoding(call), own.frames);
  findCodingPath(own.frames, own.trace, call);
}

#ifdef VELTO_HIGHWAY
void HmmDecoder::decodeAll(std::span<const ReadView> reads, const Wishes& wishes, Scratch& scratch,
                           std::span<Call> calls) const {
  auto& own = static_cast<HmmScratch&>(scratch);
  const std::vector<std::size_t> order = longestFirst(reads);
  std::size_t first = 0;
  while (first < order.size() && reads[order[first]].codes.size() > kMostBasesInLanes) {
    const std::size_t alone = order[first++];
    decode(reads[alone], wishes, scratch, calls[alone]);
  }
  for (; first < order.size(); first += kLanes) {
    const auto group = std::span(order).subspan(first, std::min(kLanes, order.size() - first));
    for (std::size_t lane = 0; lane < group.size(); ++lane) {
      own.lattice.prepare(*model_, rates_, reads[group[lane]], true);
      std::swap(own.lattice.emissions, own.emissions[lane]);
    }
    own.lanes.run(model_->weights, std::span(own.emissions).first(group.size()));
    for (std::size_t lane = 0; lane < group.size(); ++lane) {
      Call& call = calls[group[lane]];
      if (!decide(own.lanes.evidence(lane), call)) continue;
      own.lanes.framePosteriors(lane, givenCoding(call), own.frames);
      findCodingPath(own.frames, own.trace, call);
    }
  }
}
#else
void HmmDecoder::decodeAll(std::span<const ReadView> reads, const Wishes& wishes, Scratch& scratch,
                           std::span<Call> calls) const {
  Decoder::decodeAll(reads, wishes, scratch, calls);
}
#endif

bool HmmDecoder::decide(const ReadEvidence& evidence, Call& call) const {
  const ReadDecision& decision = model_->decision;
  call.clear();
  call.score = evidence.logOdds;
  call.probability =
      withShare(codingProbability(decision, evidence), decision.codingShare, codingShare_);
  call.coding = call.probability >= options_.minProbability;
  return call.coding;
}

std::shared_ptr<const Decoder> HmmDecoder::fitted(std::span<const ReadView> sample) const {
  std::vector<ReadView> reads(sample.begin(), sample.end());
  if (!options_.useQualities)
    std::transform(reads.begin(), reads.end(), reads.begin(), withoutQualities);
  const auto fitted = std::make_shared<HmmDecoder>(*this);
  fitted->rates_ = options_.errorRates ? learnQualityRates(*model_, *options_.errorRates, reads)
                                       : learnErrorRates(*model_, reads);
  if (!options_.codingShare) fitted->codingShare_ = fitted->learnShare(reads);
  return fitted;
}

double HmmDecoder::learnShare(std::span<const ReadView> sample) const {
  const std::size_t count = std::min(kMostShareReads, sample.size());
  ReadLattice lattice;
  std::vector<double> probabilities;
  for (std::size_t k = 0; k < count; ++k) {
    const ReadView& read = sample[k * sample.size() / count];
    if (read.codes.empty()) continue;
    lattice.run(*model_, rates_, read, true);
    probabilities.push_back(codingProbability(model_->decision, lattice.evidence()));
  }
  return learnCodingShare(probabilities, model_->decision.codingShare);
}

}  // namespace velto
