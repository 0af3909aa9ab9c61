// 1. Plan  2. Votes  3. Matrices  4. Training
#include "training/model_trainer.h"

#include <tbb/parallel_for.h>

#include <memory>
#include <mutex>

#include "training/fold_split.h"
#include "training/random.h"
#include "training/vote_table.h"
#include "training/window_features.h"

namespace velto {

// ---- 1. Plan

GroupPlan standardPlan(const ReadClass& readClass) {
  GroupPlan plan;
  plan.sampling.windows = 80000;
  plan.sampling.draws = 300000;
  plan.sampling.windowsPerRead = 4;
  plan.sampling.noncodingReads = 0.12;
  plan.sampling.borrowedShare = 2.0;
  plan.sampling.borrowedWeight = 0.5;
  plan.sampling.shares[0] = 0.35;
  plan.sampling.shares[1] = 0.35;
  plan.sampling.shares[2] = 0.3;
  plan.sampling.mixture = {
      {*presetRates("est"), 0.4}, {*presetRates("mild"), 0.25}, {*presetRates("clean"), 0.35}};
  plan.boosting = {kModelHypotheses - 1, 10, 0, 0, 10, 400.0};
  // Fragments: the calls that clean reads need cost calls of non-coding ones.
  SearchAim fragments;
  fragments.presetWeights[kEstReads] = 0.3;
  fragments.presetWeights[kCleanReads] = 0.4;
  fragments.exactBonus = 0.1;
  fragments.mostNoncodingCalls = 0.24;
  // Reads of a whole transcript: nearly all are called, so that the ends of the region decide.
  SearchAim whole;
  whole.presetWeights[kEstReads] = 0.34;
  whole.presetWeights[kCleanReads] = 0.36;
  whole.frameF1 = 0.35;
  whole.frameRecall = 0.2;
  whole.correlation = 0.45;
  whole.exactBonus = 0.2;
  // Long reads have more bases to judge by, and take longer.
  if (readClass.windowWidth == 96) {
    plan.search = {80, 140, 400, fragments};
    plan.reads = 600;
  } else if (readClass.lengthId == 0) {
    plan.search = {60, 120, 300, fragments};
    plan.reads = 400;
  } else if (readClass.lengthId == 1) {
    plan.search = {50, 80, 200, whole};
    plan.reads = 350;
  } else {
    plan.search = {40, 40, 150, whole};
    plan.reads = 160;
  }
  return plan;
}

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

// ---- 2. Votes

void addShift(double shift, ModelTables& tables) {
  tables.fh[0].alpha = roundedToFile(tables.fh[0].alpha + shift);
}

// ---- 3. Matrices

RateMixture searchRates(int preset) {
  const ErrorRates est = *presetRates("est"), mild = *presetRates("mild");
  switch (preset) {
    case kEstReads:
      return {{est, 1.0}};
    case kMildReads:
      return {{mild, 1.0}};
    case kCleanReads:
      return {{*presetRates("clean"), 1.0}};
    default:
      return {{est, 0.5}, {mild, 0.5}};
  }
}

bool isOfClass(const SimulatedRead& read, const ReadClass& readClass) {
  const ReadClass own = classifyRead(read.length(), 50.0);
  return own.lengthId == readClass.lengthId && own.windowWidth == readClass.windowWidth &&
         gcClassOf(read) == readClass.gcId;
}

std::vector<ScoredRead> drawScoredReads(const std::vector<const Transcript*>& from,
                                        const ReadClass& readClass, const RateMixture& mixture,
                                        std::size_t count, std::uint64_t seed,
                                        const VoteTable& vote) {
  constexpr std::size_t kDrawsPerRead = 40;
  std::vector<ScoredRead> reads;
  for (std::size_t k = 0; !from.empty() && k < kDrawsPerRead * count && reads.size() < count; ++k) {
    Random random = Random::split(seed, k);
    const Transcript& transcript = *from[random.below(static_cast<std::uint32_t>(from.size()))];
    const ErrorRates& rates = drawRates(mixture, random);
    SimulatedRead read = drawRead(transcript, readClass, rates, random);
    if (isOfClass(read, readClass))
      reads.emplace_back(std::move(read), vote, readClass.windowWidth);
  }
  return reads;
}

SearchReads drawSearchReads(const TranscriptPool& pool, const ReadClass& readClass,
                            std::size_t count, std::uint64_t seed, const VoteTable& vote) {
  SearchReads reads;
  tbb::parallel_for(0, static_cast<int>(kSearchPresets), [&](int preset) {
    reads.ofPreset[preset] = drawScoredReads(
        preset == kNoncodingReads ? pool.noncoding : pool.coding, readClass, searchRates(preset),
        count, seed + static_cast<std::uint64_t>(preset), vote);
  });
  return reads;
}

// ---- 4. Training

// Share of the windows that the votes of the matrix search are made from; they need not be the
// best.
constexpr double kFirstShare = 0.35;

// Classes whose windows are in memory at the same time, some 0.4 GB each.
constexpr int kClassesAtOnce = 8;

class Trainer {
 public:
  explicit Trainer(const TrainingJob& job)
      : job_(job), split_(splitFolds(job.coding, job.noncoding)) {}

  TrainedModel train() {
    trainVotes(split_.boosting, kFirstShare, "first vote");
    for (int first = 0; first < kReadClasses; first += kGcClasses) searchGroup(first);
    trainVotes(withSearchPart(), 1.0, "vote");
    for (int first = 0; first < kReadClasses; first += kGcClasses) judgeGroup(first);
    return std::move(model_);
  }

 private:
  TrainedClass& at(int c) { return model_[static_cast<std::size_t>(c)]; }

  TranscriptPool withSearchPart() const {
    TranscriptPool pool = split_.boosting;
    const TranscriptPool& more = split_.search;
    pool.coding.insert(pool.coding.end(), more.coding.begin(), more.coding.end());
    pool.noncoding.insert(pool.noncoding.end(), more.noncoding.begin(), more.noncoding.end());
    return pool;
  }

  // `share` is that of the planned windows.
  void trainVotes(const TranscriptPool& pool, double share, const std::string& what) {
    for (int first = 0; first < kReadClasses; first += kClassesAtOnce) {
      tbb::parallel_for(first, first + kClassesAtOnce, 1, [&](int c) {
        trainVote(c, pool, share);
        report(what + " of class " + readClassAt(c).name());
      });
    }
  }

  void trainVote(int c, const TranscriptPool& pool, double share) {
    const ReadClass readClass = readClassAt(c);
    GroupPlan plan = job_.plan(readClass);
    plan.sampling.windows =
        static_cast<std::size_t>(share * static_cast<double>(plan.sampling.windows));
    WindowSet windows;
    at(c).sample =
        sampleWindows(pool, readClass, plan.sampling, seedOf(job_.seed, kWindowStream, c), windows);
    checkSample(c);
    votes_[static_cast<std::size_t>(c)] =
        std::make_unique<VoteTable>(boostVote(windows, plan.boosting));
  }

  void checkSample(int c) {
    constexpr std::size_t kLeastReads = 100;
    constexpr std::size_t kLeastWindows = 100;
    const SampleCounts& n = at(c).sample;
    const bool enough = n.reads + n.borrowedReads >= kLeastReads && n.windows[0] >= kLeastWindows &&
                        n.windows[1] >= kLeastWindows && n.windows[2] >= kLeastWindows;
    if (enough) return;
    throw TooLittleData("too little data for class " + readClassAt(c).name() + ": " +
                        std::to_string(n.reads) + " reads, " + std::to_string(n.borrowedReads) +
                        " borrowed from other classes of GC content; windows in frame " +
                        std::to_string(n.windows[0]) + ", out of frame " +
                        std::to_string(n.windows[1]) + ", outside coding regions " +
                        std::to_string(n.windows[2]));
  }

  std::array<SearchReads, kGcClasses> drawGroup(int first, const TranscriptPool& pool,
                                                std::size_t count, Stream stream) {
    std::array<SearchReads, kGcClasses> reads;
    for (int gc = 0; gc < kGcClasses; ++gc) {
      const int c = first + gc;
      reads[static_cast<std::size_t>(gc)] =
          drawSearchReads(pool, readClassAt(c), count, seedOf(job_.seed, stream, 4 * c),
                          *votes_[static_cast<std::size_t>(c)]);
    }
    return reads;
  }

  TiedMatrix& matrixOf(int first) {
    return matrices_[static_cast<std::size_t>(first / kGcClasses)];
  }

  void searchGroup(int first) {
    const GroupPlan plan = job_.plan(readClassAt(first));
    const auto reads = drawGroup(first, split_.search, plan.reads, kSearchStream);
    matrixOf(first) = searchMatrix(reads, plan.search, seedOf(job_.seed, kTrialStream, first));
    report("matrix of length group " + groupName(first));
  }

  // Writes the tables of the four classes and measures them on the held-back part.
  void judgeGroup(int first) {
    const TiedMatrix& matrix = matrixOf(first);
    const std::size_t count = job_.plan(readClassAt(first)).reads;
    const auto reads = drawGroup(first, split_.heldBack, count, kHeldBackStream);
    for (int gc = 0; gc < kGcClasses; ++gc) {
      TrainedClass& trained = at(first + gc);
      const double shift = matrix.shifts[static_cast<std::size_t>(gc)];
      votes_[static_cast<std::size_t>(first + gc)]->write(readClassAt(first).windowWidth,
                                                          trained.tables);
      addShift(shift, trained.tables);
      matrix.fill(trained.tables.malkovChain);
      trained.heldBack =
          tallyReads(reads[static_cast<std::size_t>(gc)], trained.tables.malkovChain, shift);
    }
    report("accuracy of length group " + groupName(first));
  }

  static std::string groupName(int first) {
    const std::string name = readClassAt(first).name();
    return name.substr(0, name.find('G'));
  }

  void report(const std::string& line) {
    if (!job_.progress) return;
    const std::lock_guard<std::mutex> lock(mutex_);
    job_.progress(line);
  }

  const TrainingJob& job_;
  const FoldSplit split_;
  std::mutex mutex_;
  std::array<std::unique_ptr<VoteTable>, kReadClasses> votes_;
  std::array<TiedMatrix, kReadClasses / kGcClasses> matrices_;
  TrainedModel model_;
};

}  // namespace

TrainedModel trainModel(const TrainingJob& job) { return Trainer(job).train(); }

}  // namespace velto
