#include "training/hmm/hmm_trainer.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <nlohmann/json.hpp>

#include "hmm/hmm_model_file.h"
#include "training/fold_split.h"
#include "training/hmm/count_tables.h"
#include "training/hmm/read_calibration.h"

namespace velto {
namespace {

enum Stream : std::uint64_t { kNetworkStream = 1, kCalibrationStream = 2, kJudgeStream = 3 };

std::uint64_t seedOf(std::uint64_t seed, Stream stream) {
  return Random::split(seed, stream).next();
}

HmmModel tablesOf(const TranscriptPool& pool) {
  TranscriptCounts counts;
  for (const Transcript* t : pool.coding) counts.add(*t);
  for (const Transcript* t : pool.noncoding) counts.add(*t);
  HmmModel model;
  counts.fillTables(model);
  return model;
}

// Every part must have something to count and to draw from.
void checkParts(const FoldSplit& split) {
  const auto isEmpty = [](const TranscriptPool& pool) {
    return pool.coding.empty() || pool.noncoding.empty();
  };
  if (!isEmpty(split.heldBack) &&
      std::none_of(split.training.begin(), split.training.end(), isEmpty)) {
    return;
  }
  throw TooLittleData(
      "too little data for the posterior decoder: five parts must each have a coding and a "
      "non-coding transcript");
}

double basesOf(const std::vector<Transcript>& transcripts) {
  double sum = 0.0;
  for (const Transcript& t : transcripts) sum += t.length();
  return sum;
}

class HmmTrainer {
 public:
  HmmTrainer(const TrainingJob& job, const HmmPlan& plan)
      : job_(job), plan_(plan), split_(splitFolds(job.coding, job.noncoding)) {
    checkParts(split_);
    for (const TranscriptPool& fold : split_.training) folds_.push_back(&fold);
  }

  TrainedHmm train() {
    TrainedHmm trained;
    trained.steps = plan_.network.steps;
    trained.model = tablesOf(split_.trainingPool());
    report("tables of the posterior decoder");
    const ReadDrawer reads(folds_, plan_.mixture);
    const Parameters parameters = learnNetwork(reads);
    storeParameters(plan_.network.shape, parameters, trained.model);
    trained.model.truncatedShare =
        reads.truncatedShare(seedOf(job_.seed, kNetworkStream), kShareReads);
    trained.heldBackLikelihood = judge(parameters, trained.model);
    calibrateDecisions(split_.heldBack, plan_.calibrationReads,
                       seedOf(job_.seed, kCalibrationStream), trained.model);
    report("decisions of the posterior decoder");
    return trained;
  }

 private:
  static constexpr std::uint64_t kShareReads = 20000;

  Parameters learnNetwork(const ReadDrawer& reads) const {
    std::vector<HmmModel> tablesOfFold;
    for (std::size_t fold = 0; fold < kTrainingFolds; ++fold) {
      tablesOfFold.push_back(tablesOf(split_.trainingPool(fold)));
    }
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    const auto progress = [&](int step, double) {
      const std::chrono::duration<double> spent = Clock::now() - start;
      const int steps = plan_.network.steps;
      report("network of the posterior decoder, step " + std::to_string(step) + " of " +
             std::to_string(steps) + "; about " +
             std::to_string(std::lround(spent.count() * (steps - step) / step / 60.0)) +
             " min to go");
    };
    return trainNetwork(plan_.network, reads, tablesOfFold, seedOf(job_.seed, kNetworkStream),
                        progress);
  }

  double judge(const Parameters& parameters, const HmmModel& tables) const {
    const ReadDrawer heldBack({&split_.heldBack}, standardMixture());
    return judgeNetwork(plan_.network.shape, parameters, heldBack, {tables},
                        seedOf(job_.seed, kJudgeStream), static_cast<int>(plan_.calibrationReads));
  }

  void report(const std::string& line) const {
    if (job_.progress) job_.progress(line);
  }

  const TrainingJob& job_;
  const HmmPlan& plan_;
  const FoldSplit split_;
  std::vector<const TranscriptPool*> folds_;  // of split_
};

std::string cardOf(const TrainedHmm& trained) {
  const ReadDecision& decision = trained.model.decision;
  const WindowNetwork& network = trained.model.network;
  const nlohmann::ordered_json card{
      {"default", "hmm"},
      {"hmm",
       {{"units", network.units},
        {"steps", trained.steps},
        {"held_back_log_likelihood", std::round(trained.heldBackLikelihood * 1e3) / 1e3},
        {"decision", {decision.constant, decision.logOdds, decision.codingBases}}}}};
  return card.dump();
}

}  // namespace

HmmPlan standardHmmPlan(double codingBases, bool quick) {
  constexpr double kManyBases = 14e6;
  constexpr int kLeastSteps = 200;
  const double mostSteps = quick ? 2400.0 : 8000.0;
  const double share = std::min(1.0, codingBases / kManyBases);
  HmmPlan plan;
  plan.network.shape = {4, 48, {}};
  for (int offset = -8; offset <= 12; offset += 2) plan.network.shape.offsets.push_back(offset);
  plan.network.steps = std::max(kLeastSteps, static_cast<int>(mostSteps * std::pow(share, 0.65)));
  plan.calibrationReads = std::max<std::size_t>(500, static_cast<std::size_t>(3000.0 * share));
  return plan;
}

void checkHmmData(const TrainingJob& job) {
  requireTranscripts(job);
  checkParts(splitFolds(job.coding, job.noncoding));
}

TrainedHmm trainHmm(const TrainingJob& job, const HmmPlan& plan) {
  return HmmTrainer(job, plan).train();
}

TrainedDecoder trainHmmFiles(const TrainingJob& job) {
  const TrainedHmm trained = trainHmm(job, standardHmmPlan(basesOf(job.coding), job.quick));
  return {"hmm", {{kHmmModelFile, hmmModelText(trained.model)}}, cardOf(trained), {}};
}

}  // namespace velto
