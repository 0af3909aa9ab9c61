#include "hmm/hmm_decoder.h"

#include <algorithm>
#include <vector>

#include "hmm/coding_path.h"
#include "hmm/error_rates.h"
#include "hmm/float_math.h"
#include "hmm/read_lattice.h"

namespace velto {
namespace {

constexpr std::size_t kMostShareReads = 1000;

struct HmmScratch : Decoder::Scratch {
  ReadLattice lattice;
  std::vector<FramePosterior> frames;
  PathTrace trace;
};

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
  const ReadEvidence evidence = own.lattice.evidence();
  const ReadDecision& decision = model_->decision;
  call.clear();
  call.score = evidence.logOdds;
  call.probability =
      withShare(codingProbability(decision, evidence), decision.codingShare, codingShare_);
  call.coding = call.probability >= options_.minProbability;
  if (!call.coding) return;
  const auto givenCoding = static_cast<float>(1.0 / logisticOf(evidence.logOdds));
  framePosteriors(own.lattice.posteriors, givenCoding, own.frames);
  findCodingPath(own.frames, own.trace, call);
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
