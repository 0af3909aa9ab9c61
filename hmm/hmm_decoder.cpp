#include "hmm/hmm_decoder.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "core/bounded_text.h"
#include "hmm/coding_path.h"
#include "hmm/error_rates.h"
#include "hmm/float_math.h"
#include "hmm/group_lattice.h"
#include "hmm/hmm_model_file.h"
#include "hmm/poly_a.h"
#include "hmm/read_choice.h"
#include "hmm/read_groups.h"
#ifdef VELTO_HIGHWAY
#include "hmm/read_lanes.h"
#endif
#include "hmm/read_lattice.h"

namespace velto {
namespace {

constexpr std::size_t kMostShareReads = 1000;

// Groups of reads that one task learns from.
constexpr std::size_t kGroupsOfTask = 8;

struct HmmScratch : Decoder::Scratch {
#ifdef VELTO_HIGHWAY
  HmmScratch(const HmmModel& model, const FileRates& rates) : lanes(model, rates, true) {}

  // Whether no read of the group, run forward, has a strand score above those to beat; then sets
  // the scores of their calls.
  bool isBeaten(std::span<const std::size_t> group, const StrandDecision& decision,
                std::span<const double> toBeat, std::span<Call> calls) const {
    if (toBeat.empty()) return false;
    for (std::size_t lane = 0; lane < group.size(); ++lane) {
      Call& call = calls[group[lane]];
      call.clear();
      call.score = lanes.lattice.logOdds(lane);
      call.strandScore = strandScore(decision, call.score, lanes.lattice.logLikelihood(lane));
      if (call.strandScore > toBeat[group[lane]]) return false;
    }
    return true;
  }

  ReadLanes lanes;
#endif

  ReadLattice lattice;
  std::vector<FramePosterior> frames;
  PathTrace trace;
};

double leastProbability(const Wishes& wishes) {
  return std::isnan(wishes.minProbability) ? kMinProbability : wishes.minProbability;
}

void dropRegion(Call& call) {
  call.coding = false;
  call.start = call.stop = -1;
  call.frame.clear();
  call.frameshifts.clear();
}

// A region without a codon is none: a read of unknown bases has no other.
void dropRegionWithoutCodon(Call& call) {
  if (call.stop - call.start < 2) dropRegion(call);
}

// What turns posteriors into those given that the read codes.
float givenCoding(const Call& call) { return static_cast<float>(1.0 / logisticOf(call.score)); }

std::shared_ptr<const HmmModel> loadModel(const FileSource& files) {
  const auto in = files.open(kHmmModelFile);
  const std::optional<std::string> text = textUpTo(*in, kMostHmmModelBytes);
  if (!text) throw ModelError(files.path(kHmmModelFile), 0, 0, "is larger than 32 MB");
  const auto model = std::make_shared<HmmModel>();
  const HmmFileStatus status = readHmmModel(*text, *model);
  if (!status.regular()) {
    throw ModelError(files.path(kHmmModelFile), 0, status.line, status.reason);
  }
  return model;
}

void fillScores(const std::vector<FramePosterior>& frames, double probability, Call& call) {
  for (std::size_t f = 0; f < 3; ++f) {
    call.scores[f].clear();
    for (const FramePosterior& base : frames) {
      call.scores[f].push_back(std::min(1.0, static_cast<double>(base.frame[f])) * probability);
    }
  }
}

}  // namespace

HmmDecoder::HmmDecoder(const FileSource& files) : HmmDecoder(loadModel(files)) {}

HmmDecoder::HmmDecoder(std::shared_ptr<const HmmModel> model)
    : trained_(std::move(model)), model_(trained_), codingShare_(trained_->decision.codingShare) {}

std::unique_ptr<Decoder::Scratch> HmmDecoder::scratch() const {
#ifdef VELTO_HIGHWAY
  return std::make_unique<HmmScratch>(*model_, rates_);
#else
  return std::make_unique<HmmScratch>();
#endif
}

void HmmDecoder::hideMisleading(std::span<short> codes) const { hidePolyA(codes); }

void HmmDecoder::decode(const ReadView& read, const Wishes& wishes, Scratch& scratch,
                        Call& call) const {
  auto& own = static_cast<HmmScratch&>(scratch);
  own.lattice.run(*model_, rates_, read, true);
  decide(own.lattice.evidence(), wishes, call);
  if (!call.coding && !wishes.scores) return;
  framePosteriors(own.lattice.posteriors, givenCoding(call), own.frames);
  if (call.coding) {
    findCodingPath(own.frames, own.trace, call);
    dropRegionWithoutCodon(call);
  }
  if (wishes.scores) fillScores(own.frames, call.probability, call);
}

#ifdef VELTO_HIGHWAY
void HmmDecoder::decodeAll(std::span<const ReadView> reads, const Wishes& wishes, Scratch& scratch,
                           std::span<Call> calls) const {
  auto& own = static_cast<HmmScratch&>(scratch);
  const ReadGroups groups(reads);
  for (std::size_t g = 0; g < groups.size(); ++g) {
    const std::span<const std::size_t> group = groups[g];
    if (group.size() == 1) {
      decode(reads[group.front()], wishes, scratch, calls[group.front()]);
      continue;
    }
    own.lanes.runForward(reads, group);
    if (own.isBeaten(group, model_->strand, wishes.strandScoresToBeat, calls)) continue;
    own.lanes.lattice.runBackward();
    callLanes(group, wishes, scratch, calls);
  }
}

void HmmDecoder::callLanes(std::span<const std::size_t> group, const Wishes& wishes,
                           Scratch& scratch, std::span<Call> calls) const {
  auto& own = static_cast<HmmScratch&>(scratch);
  LaneRow factors{};
  for (std::size_t lane = 0; lane < group.size(); ++lane) {
    Call& call = calls[group[lane]];
    decide(own.lanes.lattice.evidence(lane), wishes, call);
    factors[lane] = givenCoding(call);
  }
  own.lanes.lattice.scorePaths(factors);
  for (std::size_t lane = 0; lane < group.size(); ++lane) {
    Call& call = calls[group[lane]];
    const auto& toBeat = wishes.strandScoresToBeat;
    if (!toBeat.empty() && !(call.strandScore > toBeat[group[lane]])) continue;
    if (call.coding) {
      own.lanes.lattice.takePathOf(lane, call);
      dropRegionWithoutCodon(call);
    }
    if (!wishes.scores) continue;
    own.lanes.lattice.framePosteriors(lane, factors[lane], own.frames);
    fillScores(own.frames, call.probability, call);
  }
}
#else
void HmmDecoder::decodeAll(std::span<const ReadView> reads, const Wishes& wishes, Scratch& scratch,
                           std::span<Call> calls) const {
  Decoder::decodeAll(reads, wishes, scratch, calls);
}
#endif

std::vector<ReadEvidence> HmmDecoder::evidenceOfAll(std::span<const ReadView> reads,
                                                    const ParallelFor& parallel) const {
  const ReadGroups groups(reads);
  std::vector<ReadEvidence> evidence(reads.size());
  parallel((groups.size() + kGroupsOfTask - 1) / kGroupsOfTask, [&](std::size_t task) {
    GroupLattice lattice(*model_, rates_, true);
    const std::size_t end = std::min((task + 1) * kGroupsOfTask, groups.size());
    for (std::size_t g = task * kGroupsOfTask; g < end; ++g) {
      lattice.run(reads, groups[g]);
      for (std::size_t k = 0; k < groups[g].size(); ++k) {
        evidence[groups[g][k]] = lattice.evidence(k);
      }
    }
  });
  return evidence;
}

void HmmDecoder::decide(const ReadEvidence& evidence, const Wishes& wishes, Call& call) const {
  const ReadDecision& decision = model_->decision;
  call.clear();
  call.score = evidence.logOdds;
  call.strandScore = strandScore(model_->strand, evidence.logOdds, evidence.logLikelihood);
  call.strandTrust = strandTrust(model_->strand, evidence);
  call.probability =
      withShare(codingProbability(decision, evidence), decision.codingShare, codingShare_);
  call.coding = call.probability >= leastProbability(wishes);
}

void HmmDecoder::weighOtherStrand(double otherStrandScore, const Wishes& wishes, Call& call) const {
  const double share = strandProbability(call.strandTrust, call.strandScore - otherStrandScore);
  call.probability *= share;
  for (std::vector<double>& frame : call.scores) {
    for (double& score : frame) score *= share;
  }
  if (call.coding && call.probability < leastProbability(wishes)) dropRegion(call);
}

std::vector<std::size_t> HmmDecoder::readsLearntFrom(std::size_t sampleSize) const {
  const std::vector<std::size_t> forRates = chosenIndexes(sampleSize, kMostRateReads);
  const std::vector<std::size_t> forShares = chosenIndexes(sampleSize, kMostShareReads);
  std::vector<std::size_t> all;
  std::set_union(forRates.begin(), forRates.end(), forShares.begin(), forShares.end(),
                 std::back_inserter(all));
  return all;
}

Calibration HmmDecoder::learn(std::span<const ReadView> sample, const Calibration& known,
                              const ParallelFor& parallel) const {
  Calibration learnt = known;
  learnt.reads = static_cast<int>(sample.size());
  if (!known.errorRates || known.qualities.empty()) {
    const LearntRates rates =
        known.errorRates ? learnQualityRates(*trained_, *known.errorRates, sample, parallel)
                         : learnErrorRates(*trained_, sample, parallel);
    const bool tells = known.errorRates || sample.size() >= kLeastReadsForRates;
    if (tells) learnt.errorRates = rates.mean;
    if (known.qualities.empty()) learnt.qualities = rates.qualities;
  }
  const bool isUnknown = !known.codingShare || !known.truncatedShare;
  if (isUnknown && sample.size() >= kLeastReadsForShare) {
    fittedTo(learnt).learnShares(sample, learnt, parallel);
  }
  return learnt;
}

std::shared_ptr<const Decoder> HmmDecoder::calibrated(const Calibration& calibration) const {
  return std::make_shared<HmmDecoder>(fittedTo(calibration));
}

HmmDecoder HmmDecoder::fittedTo(const Calibration& calibration) const {
  const auto usable = [](double share) { return std::clamp(share, 0.001, 0.999); };
  HmmDecoder fitted(trained_);
  fitted.rates_ = FileRates(calibration.errorRates.value_or(kDefaultRates), calibration.qualities);
  fitted.codingShare_ = usable(calibration.codingShare.value_or(trained_->decision.codingShare));
  if (calibration.truncatedShare) {
    const auto model = std::make_shared<HmmModel>(*trained_);
    model->truncatedShare = usable(*calibration.truncatedShare);
    model->weights =
        withTruncatedShare(trained_->weights, trained_->truncatedShare, model->truncatedShare);
    fitted.model_ = model;
  }
  return fitted;
}

void HmmDecoder::learnShares(std::span<const ReadView> sample, Calibration& learnt,
                             const ParallelFor& parallel) const {
  const std::vector<ReadView> chosen = chosenReads(sample, kMostShareReads);
  const std::vector<ReadEvidence> evidence = evidenceOfAll(chosen, parallel);
  std::vector<double> probabilities;
  for (const ReadEvidence& read : evidence) {
    probabilities.push_back(codingProbability(model_->decision, read));
  }
  const double modelShare = model_->decision.codingShare;
  if (!learnt.codingShare) learnt.codingShare = learnCodingShare(probabilities, modelShare);
  if (learnt.truncatedShare) return;
  for (double& p : probabilities) p = withShare(p, modelShare, *learnt.codingShare);
  learnt.truncatedShare = learnTruncatedShare(evidence, probabilities, model_->truncatedShare);
}

}  // namespace velto
