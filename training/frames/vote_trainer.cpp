// 1. Matrices  2. Training
#include "training/frames/vote_trainer.h"

#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iterator>
#include <memory>
#include <mutex>
#include <numeric>

#include "core/random.h"
#include "training/fold_split.h"
#include "training/frames/binned_vote.h"
#include "training/frames/window_features.h"

namespace velto {

namespace {

// Streams of random numbers of one seed.
enum Stream : std::uint64_t {
  kWindowStream = 100,
  kSearchStream = 200,
  kHeldBackStream = 300,
  kTrialStream = 400
};

std::uint64_t seedOf(std::uint64_t seed, Stream stream, int index) {
  return Random::split(seed, stream + static_cast<std::uint64_t>(index)).next();
}

// ---- 1. Matrices

RateMixture searchRates(int preset) {
  const ErrorRates est = presetErrors("est")->rates, mild = presetErrors("mild")->rates;
  switch (preset) {
    case kEstReads:
      return {{est, 1.0}};
    case kMildReads:
      return {{mild, 1.0}};
    case kCleanReads:
      return {{presetErrors("clean")->rates, 1.0}};
    default:
      return {{est, 0.5}, {mild, 0.5}};
  }
}

using VotesOfGroup = std::array<const BinnedVote*, kGcClasses>;  // [GC class]

// Reads of one preset as they come: each transcript as likely as any other, in turn from the folds.
// Reads of folds[i] are scored by votes[i].
void drawScoredReads(const std::vector<const TranscriptPool*>& folds,
                     const std::vector<VotesOfGroup>& votes, const ReadClass& lengthGroup,
                     SearchPreset preset, std::size_t count, std::uint64_t seed,
                     GroupReads& reads) {
  constexpr std::size_t kDrawsPerRead = 40;
  const RateMixture mixture = searchRates(preset);
  std::size_t drawn = 0;
  for (std::size_t k = 0; drawn < count && k < kDrawsPerRead * count; ++k) {
    Random random = Random::split(seed, k);
    const std::size_t fold = k % folds.size();
    const auto& from = preset == kNoncodingReads ? folds[fold]->noncoding : folds[fold]->coding;
    if (from.empty()) continue;
    const Transcript& transcript = *from[random.below(static_cast<std::uint32_t>(from.size()))];
    SimulatedRead read = drawRead(transcript, lengthGroup, drawRates(mixture, random), random);
    if (!isOfLengthClass(read, lengthGroup)) continue;
    const auto gc = static_cast<std::size_t>(gcClassOf(read));
    reads[gc].ofPreset[preset].emplace_back(std::move(read), *votes[fold][gc],
                                            lengthGroup.windowWidth);
    ++drawn;
  }
}

GroupReads drawGroup(const std::vector<const TranscriptPool*>& folds,
                     const std::vector<VotesOfGroup>& votes, const ReadClass& lengthGroup,
                     std::size_t count, std::uint64_t seed) {
  GroupReads reads;
  tbb::parallel_for(0, static_cast<int>(kSearchPresets), [&](int preset) {
    drawScoredReads(folds, votes, lengthGroup, static_cast<SearchPreset>(preset), count,
                    seed + static_cast<std::uint64_t>(preset), reads);
  });
  return reads;
}

// ---- 2. Training

constexpr std::size_t kMinLongTranscripts = 10;

// Fraction of the windows, and of the reads drawn for them, that the votes of the matrix search are
// made from; they need not be the best.
constexpr double kSearchFraction = 0.3;

// Time of a matrix search over that of training one vote, roughly, by length group.
constexpr double kSearchWork[] = {3.0, 5.0, 7.0, 11.0};

// Classes whose windows are in memory at the same time, some 1.2 GB each.
constexpr int kClassesAtOnce = 3;

class VoteTrainer {
 public:
  VoteTrainer(const TrainingJob& job, const PlanOfGroup& plan)
      : job_(job), plan_(plan), split_(splitFolds(job.coding, job.noncoding)) {}

  TrainedVotes train() {
    for (std::size_t fold = 0; fold <= kTrainingFolds; ++fold) trainVotes(fold);
    for (int first = 0; first < kReadClasses; first += kGcClasses) {
      judgeGroup(first, searchGroup(first));
    }
    return std::move(model_);
  }

 private:
  TrainedClass& at(int c) { return model_[static_cast<std::size_t>(c)]; }
  BinnedVote& vote(std::size_t without, int c) {
    return *votes_[without][static_cast<std::size_t>(c)];
  }

  // Trains on the training folds but `without`. The votes that leave none out are the model's.
  void trainVotes(std::size_t without) {
    const TranscriptPool pool = split_.trainingPool(without);
    const std::string what =
        without == kTrainingFolds
            ? "vote of class "
            : "vote without fold " + std::to_string(without + 1) + " of class ";
    const auto train = [&](int c) {
      trainVote(c, without, pool);
      report(without == kTrainingFolds ? 1.0 : kSearchFraction, what + readClassAt(c).name());
    };
    tbb::task_arena arena(std::min(kClassesAtOnce, tbb::this_task_arena::max_concurrency()));
    arena.execute([&] { tbb::parallel_for(0, kReadClasses, 1, train, tbb::simple_partitioner()); });
  }

  void trainVote(int c, std::size_t without, const TranscriptPool& pool) {
    const ReadClass readClass = readClassAt(c);
    GroupPlan plan = plan_(readClass);
    if (without < kTrainingFolds) {
      for (std::size_t* size : {&plan.sampling.windows, &plan.sampling.maxDraws}) {
        *size = static_cast<std::size_t>(kSearchFraction * static_cast<double>(*size));
      }
    }
    const int stream = c + kReadClasses * static_cast<int>(without);
    WindowSet windows;
    const SampleCounts sample = sampleWindows(pool, readClass, plan.sampling,
                                              seedOf(job_.seed, kWindowStream, stream), windows);
    checkSample(sample, readClass);
    if (without == kTrainingFolds) at(c).sample = sample;
    votes_[without][static_cast<std::size_t>(c)] =
        std::make_unique<BinnedVote>(boostVote(windows, plan.boosting));
  }

  static void checkSample(const SampleCounts& n, const ReadClass& readClass) {
    constexpr std::size_t kMinReads = 100;
    constexpr std::size_t kMinWindows = 100;
    const bool enough = n.reads + n.borrowedReads >= kMinReads && n.windows[0] >= kMinWindows &&
                        n.windows[1] >= kMinWindows && n.windows[2] >= kMinWindows;
    if (enough) return;
    throw TooLittleData("too little data for class " + readClass.name() + ": " +
                        std::to_string(n.reads) + " reads, " + std::to_string(n.borrowedReads) +
                        " borrowed from other classes of GC content; windows in frame " +
                        std::to_string(n.windows[0]) + ", out of frame " +
                        std::to_string(n.windows[1]) + ", outside coding regions " +
                        std::to_string(n.windows[2]));
  }

  VotesOfGroup votesOfGroup(std::size_t without, int first) {
    VotesOfGroup votes;
    for (int gc = 0; gc < kGcClasses; ++gc) {
      votes[static_cast<std::size_t>(gc)] = &vote(without, first + gc);
    }
    return votes;
  }

  TiedMatrix searchGroup(int first) {
    const GroupPlan plan = plan_(readClassAt(first));
    std::vector<const TranscriptPool*> folds;
    std::vector<VotesOfGroup> votes;
    for (std::size_t fold = 0; fold < kTrainingFolds; ++fold) {
      folds.push_back(&split_.training[fold]);
      votes.push_back(votesOfGroup(fold, first));
    }
    const GroupReads reads = drawGroup(folds, votes, readClassAt(first), plan.reads,
                                       seedOf(job_.seed, kSearchStream, 4 * first));
    const TiedMatrix matrix =
        searchMatrix(reads, plan.search, seedOf(job_.seed, kTrialStream, first));
    report(kSearchWork[first / kGcClasses], "matrix of length group " + groupName(first));
    return matrix;
  }

  // Writes the tables of the four classes and measures them on the held-back part.
  void judgeGroup(int first, const TiedMatrix& matrix) {
    const GroupReads reads =
        drawGroup({&split_.heldBack}, {votesOfGroup(kTrainingFolds, first)}, readClassAt(first),
                  plan_(readClassAt(first)).reads, seedOf(job_.seed, kHeldBackStream, 4 * first));
    for (int gc = 0; gc < kGcClasses; ++gc) {
      TrainedClass& trained = at(first + gc);
      const double shift = matrix.shifts[static_cast<std::size_t>(gc)];
      vote(kTrainingFolds, first + gc).write(readClassAt(first).windowWidth, shift, trained.tables);
      matrix.fill(trained.tables.malkovChain);
      trained.heldBack =
          countReads(reads[static_cast<std::size_t>(gc)], trained.tables.malkovChain, shift);
    }
    report(0.0, "accuracy of length group " + groupName(first));
  }

  static std::string groupName(int first) {
    const std::string name = readClassAt(first).name();
    return name.substr(0, name.find('G'));
  }

  // So much more of the work is done.
  void report(double work, const std::string& what) {
    if (!job_.progress) return;
    const std::lock_guard<std::mutex> lock(mutex_);
    done_ += work;
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start_;
    const double togo = spent.count() * (wholeWork() - done_) / std::max(done_, 1.0);
    job_.progress(what + "; " + std::to_string(std::lround(100.0 * done_ / wholeWork())) +
                  " % done, about " + std::to_string(std::lround(togo / 60.0)) + " min to go");
  }

  // The unit is the training of one of the model's own votes.
  static double wholeWork() {
    return kReadClasses * (1.0 + kTrainingFolds * kSearchFraction) +
           std::accumulate(std::begin(kSearchWork), std::end(kSearchWork), 0.0);
  }

  const TrainingJob& job_;
  const PlanOfGroup& plan_;
  const FoldSplit split_;
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::mutex mutex_;
  double done_ = 0.0;  // of wholeWork()
  // [fold left out, kTrainingFolds for none][class]
  std::array<std::array<std::unique_ptr<BinnedVote>, kReadClasses>, kTrainingFolds + 1> votes_;
  TrainedVotes model_;
};

}  // namespace

void checkVoteData(const TrainingJob& job) {
  requireTranscripts(job);
  const std::vector<Transcript>& coding = job.coding;
  const int longRead = readLengths({0, 2, 196}).shortest;
  const auto isLong = [longRead](const Transcript& t) { return t.length() >= longRead; };
  const auto longOnes =
      static_cast<std::size_t>(std::count_if(coding.begin(), coding.end(), isLong));
  if (longOnes < kMinLongTranscripts) {
    throw TooLittleData("too little data for the longest reads: " + std::to_string(longOnes) +
                        " of " + std::to_string(coding.size()) +
                        " coding transcripts have more than 3000 bases, at least " +
                        std::to_string(kMinLongTranscripts) + " are needed");
  }
}

TrainedVotes trainVotes(const TrainingJob& job, const PlanOfGroup& plan) {
  checkVoteData(job);
  return VoteTrainer(job, plan).train();
}

}  // namespace velto
