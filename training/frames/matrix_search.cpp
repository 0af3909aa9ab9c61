#include "training/frames/matrix_search.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_reduce.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/random.h"
#include "decoder/decode_frames.h"
#include "decoder/frame_scores.h"
#include "decoder/layout.h"
#include "decoder/placed_call.h"
#include "decoder/shift_placement.h"
#include "evaluation/evaluation_figures.h"
#include "model/window_width.h"
#include "training/frames/window_features.h"

namespace velto {
namespace {

bool isVoteClass(int code) { return code == kCodingWindow || code == kNonCodingWindow; }

// Scratch of one thread.
struct Scratch {
  std::vector<FrameStep> steps;
  FrameTrellis trellis;
  std::vector<int> path;
  Call call;
};

Scratch& threadScratch() {
  thread_local Scratch scratch;
  return scratch;
}

}  // namespace

// ---- Matrix

double& TiedMatrix::number(std::size_t i) {
  double* const numbers[] = {&stay, &change, &empty, &opening, &crossing, &ending, &gate};
  constexpr std::size_t entries = kNumbers - kGcClasses;
  return i < entries ? *numbers[i] : shifts[i - entries];
}

void TiedMatrix::fill(double (&matrix)[16]) const {
  const double rows[16] = {stay,   change, opening, crossing,  // coding now
                           change, empty,  opening, crossing,  // non-coding now
                           0.0,    0.0,    0.0,     0.0,       // no state is a path's start now
                           ending, ending, gate,    crossing};
  std::transform(rows, rows + 16, matrix, roundedToFile);
}

// ---- Reads

// Tries each trial window once. A window is known by its end, the frame of its start and the shift.
class ScoredRead::KeptTrials : public TrialJudge {
 public:
  explicit KeptTrials(const ScoredRead& read) : read_(read) {}

  int bestTrial(const TrialWindow& window, int otherwise) override {
    std::vector<signed char>& trials = read_.trials_;
    const std::size_t key = static_cast<std::size_t>(window.end / 3) * 6 +
                            static_cast<std::size_t>(window.start % 3 * 2 + window.shift - 1);
    if (key >= trials.size()) trials.resize(key + 1, kNotTried);
    if (trials[key] == kNotTried) {
      const std::vector<short>& bases = read_.read_.bases;
      trials[key] = static_cast<signed char>(
          read_.vote_->bestTrial(bases.data(), read_.read_.length(), window, otherwise));
    }
    return trials[key];
  }

 private:
  const ScoredRead& read_;
};

ScoredRead::ScoredRead(SimulatedRead read, const BinnedVote& vote, int windowWidth)
    : read_(std::move(read)), vote_(&vote), windowWidth_(windowWidth) {
  const WindowScores scores = vote.score(windowWidth, read_.bases.data(), read_.length());
  const ModelTables unused;
  std::vector<double> frameScore[3];
  layout lay;
  layOutFrames({unused, windowWidth}, read_.bases.data(), read_.length(), scores, lay, frameScore);
  const auto half = static_cast<std::size_t>(halfWindow(windowWidth));
  steps_.resize(lay.cls[0].size());
  for (std::size_t k = 0; k < steps_.size(); ++k) {
    for (std::size_t f = 0; f < 3; ++f) {
      // The steps before the first full window take its class.
      const std::size_t source = lay.cls[f].size() > half ? std::max(k, half) : k;
      const int code = source < lay.cls[f].size() ? lay.cls[f][source] : kNoWindow;
      Step& step = steps_[k];
      step.laid.state[f] =
          isVoteClass(code) ? kVoted : static_cast<std::int8_t>(decodingState(code));
      step.laid.atg[f] = k < lay.met[f].size() && lay.met[f][k] == kAtgCodon;
      step.vote[f] =
          source < frameScore[f].size() ? static_cast<float>(frameScore[f][source]) : 0.0F;
    }
  }
}

EvaluationCounts ScoredRead::decode(const double (&matrix)[16], double shift) const {
  Scratch& scratch = threadScratch();
  const auto threshold = static_cast<float>(-shift);
  scratch.steps.clear();
  for (const Step& step : steps_) {
    FrameStep laid = step.laid;
    for (std::size_t f = 0; f < 3; ++f) {
      if (laid.state[f] != kVoted) continue;
      const int code = step.vote[f] > threshold ? kCodingWindow : kNonCodingWindow;
      laid.state[f] = static_cast<std::int8_t>(decodingState(code));
    }
    scratch.steps.push_back(laid);
  }
  KeptTrials trials(*this);
  const TracedPath traced =
      decodeSteps({matrix, windowWidth_}, scratch.steps, trials, scratch.trellis, scratch.path);
  Call& call = scratch.call;
  call.clear();
  callPath(scratch.path, traced.score, read_.length(), call);
  return countRegion({read_.frame, read_.start, read_.stop, read_.startInside, read_.stopInside},
                     call.frame, call.start, call.stop);
}

PresetCounts countReads(const SearchReads& reads, const double (&matrix)[16], double shift,
                        double fraction) {
  PresetCounts counts;
  for (std::size_t preset = 0; preset < kSearchPresets; ++preset) {
    const std::vector<ScoredRead>& list = reads.ofPreset[preset];
    const auto used =
        static_cast<std::size_t>(std::ceil(fraction * static_cast<double>(list.size())));
    counts[preset] = tbb::parallel_reduce(
        tbb::blocked_range<std::size_t>(0, used, 16), EvaluationCounts(),
        [&](const tbb::blocked_range<std::size_t>& part, EvaluationCounts sum) {
          for (std::size_t i = part.begin(); i < part.end(); ++i) {
            sum += list[i].decode(matrix, shift);
          }
          return sum;
        },
        [](EvaluationCounts a, const EvaluationCounts& b) { return a += b; });
  }
  return counts;
}

// ---- Search

namespace {

// 0 where there is nothing to be judged.
double orZero(const FigureValue& figure) { return figure.value.value_or(0.0); }

}  // namespace

double searchValue(const PresetCounts& counts, const SearchObjective& objective) {
  double value = 0.0;
  for (std::size_t preset = 0; preset < kNoncodingReads; ++preset) {
    const EvaluationCounts& of = counts[preset];
    value +=
        objective.presetWeights[preset] * (objective.frameF1 * orZero(frameF1Of(of)) +
                                           objective.frameRecall * orZero(frameSensitivityOf(of)) +
                                           objective.correlation * orZero(correlationOf(of)));
  }
  // By the fraction of reads that hold a whole region: a few such reads among short ones tell
  // little.
  const EvaluationCounts& clean = counts[kCleanReads];
  if (clean.reads > 0) {
    value += objective.exactBonus * static_cast<double>(clean.bothExact) /
             static_cast<double>(clean.reads);
  }
  const double excess = orZero(noncodingCalledOf(counts[kNoncodingReads])) - objective.freeCalls;
  return value - objective.callCost * std::max(0.0, excess);
}

namespace {

// Ranges of the first candidates, and sizes of a step.
struct NumberRange {
  double low;
  double high;
  double step;
};
constexpr NumberRange kShiftRange{-1.0, 0.4, 0.1};
constexpr NumberRange kRanges[TiedMatrix::kNumbers] = {
    {1.0, 3.0, 0.2},       {-1.0, 2.0, 0.3},    {-0.6, 0.1, 0.05},  {-5.0, 55.0, 3.0},
    {-200.0, -20.0, 10.0}, {-95.0, -45.0, 3.0}, {-60.0, 60.0, 5.0}, kShiftRange,
    kShiftRange,           kShiftRange,         kShiftRange};

double between(const NumberRange& range, Random& random) {
  return range.low + (range.high - range.low) * random.real();
}

// Roughly normal, with mean 0 and variance 1, by sums and products only.
double bell(Random& random) {
  double sum = -6.0;
  for (int i = 0; i < 12; ++i) sum += random.real();
  return sum;
}

class Search {
 public:
  Search(const GroupReads& reads, const SearchObjective& objective, std::uint64_t seed)
      : reads_(reads), objective_(objective), random_(seed) {}

  // Differential evolution: a candidate gives way to a mixture of itself with another one moved by
  // the difference of two more, if that is no worse.
  TiedMatrix evolve(const SearchPlan& plan) {
    std::vector<Candidate> candidates(kPopulation);
    for (std::size_t g = 1; g < kPopulation; ++g) {
      for (std::size_t i = 0; i < TiedMatrix::kNumbers; ++i) {
        candidates[g].numbers.number(i) = between(kRanges[i], random_);
      }
    }
    renew(candidates, plan.generations, plan.earlyFraction);
    renew(candidates, plan.lateGenerations, 1.0);
    return std::max_element(
               candidates.begin(), candidates.end(),
               [](const Candidate& a, const Candidate& b) { return a.value < b.value; })
        ->numbers;
  }

  // Changes one to three numbers at a time, and goes there unless the value falls behind the best
  // by more than the tolerance.
  TiedMatrix meanOfWalk(TiedMatrix numbers, int steps) {
    constexpr double kTolerance = 0.002;
    const std::vector<std::size_t> movable = movableNumbers();
    double best = valueOf(numbers, 1.0);
    TiedMatrix mean;
    for (std::size_t i = 0; i < TiedMatrix::kNumbers; ++i) mean.number(i) = 0.0;
    for (int step = 0; step < steps; ++step) {
      TiedMatrix changed = numbers;
      for (std::uint32_t k = random_.below(3) + 1; k > 0; --k) {
        const std::size_t i = movable[random_.below(static_cast<std::uint32_t>(movable.size()))];
        changed.number(i) += kRanges[i].step * bell(random_);
      }
      const double value = valueOf(changed, 1.0);
      if (value >= best - kTolerance) numbers = changed;
      best = std::max(best, value);
      for (std::size_t i = 0; i < TiedMatrix::kNumbers; ++i) {
        mean.number(i) += numbers.number(i) / steps;
      }
    }
    return mean;
  }

 private:
  struct Candidate {
    TiedMatrix numbers;
    double value = 0.0;
  };
  static constexpr std::uint32_t kPopulation = 28;

  void renew(std::vector<Candidate>& candidates, int generations, double fraction) {
    for (Candidate& candidate : candidates) candidate.value = valueOf(candidate.numbers, fraction);
    for (int generation = 0; generation < generations; ++generation) {
      for (Candidate& candidate : candidates) {
        Candidate mixed{mixture(candidates, candidate), 0.0};
        mixed.value = valueOf(mixed.numbers, fraction);
        if (mixed.value >= candidate.value) candidate = mixed;
      }
    }
  }

  TiedMatrix mixture(std::vector<Candidate>& candidates, Candidate& old) {
    constexpr double kScale = 0.6;
    constexpr double kTaken = 0.8;  // fraction of the numbers taken from the moved candidate
    TiedMatrix& base = candidates[random_.below(kPopulation)].numbers;
    TiedMatrix& to = candidates[random_.below(kPopulation)].numbers;
    TiedMatrix& from = candidates[random_.below(kPopulation)].numbers;
    TiedMatrix mixed = old.numbers;
    for (std::size_t i = 0; i < TiedMatrix::kNumbers; ++i) {
      if (random_.real() >= kTaken) continue;
      mixed.number(i) = base.number(i) + kScale * (to.number(i) - from.number(i));
    }
    return mixed;
  }

  // All numbers but the shifts of classes with too few reads to tell where a walk should not go.
  std::vector<std::size_t> movableNumbers() const {
    constexpr std::size_t kMinReads = 100;
    constexpr std::size_t kEntries = TiedMatrix::kNumbers - kGcClasses;
    std::vector<std::size_t> movable;
    for (std::size_t i = 0; i < TiedMatrix::kNumbers; ++i) {
      if (i < kEntries || codingReads(i - kEntries) >= kMinReads) movable.push_back(i);
    }
    return movable;
  }

  std::size_t codingReads(std::size_t gc) const {
    std::size_t count = 0;
    for (std::size_t p = 0; p < kNoncodingReads; ++p) count += reads_[gc].ofPreset[p].size();
    return count;
  }

  double valueOf(const TiedMatrix& numbers, double fraction) const {
    double matrix[16];
    numbers.fill(matrix);
    PresetCounts sum;
    for (std::size_t gc = 0; gc < kGcClasses; ++gc) {
      const PresetCounts ofClass = countReads(reads_[gc], matrix, numbers.shifts[gc], fraction);
      for (std::size_t preset = 0; preset < kSearchPresets; ++preset) {
        sum[preset] += ofClass[preset];
      }
    }
    return searchValue(sum, objective_) - kSpreadPenalty * spread(numbers.shifts);
  }

  // Settles the shift of a class that has hardly any reads.
  static constexpr double kSpreadPenalty = 0.002;
  static double spread(const std::array<double, kGcClasses>& shifts) {
    const double mean = std::accumulate(shifts.begin(), shifts.end(), 0.0) / kGcClasses;
    return std::accumulate(shifts.begin(), shifts.end(), 0.0, [mean](double sum, double shift) {
      return sum + (shift - mean) * (shift - mean);
    });
  }

  const GroupReads& reads_;
  const SearchObjective& objective_;
  Random random_;
};

}  // namespace

TiedMatrix searchMatrix(const GroupReads& reads, const SearchPlan& plan, std::uint64_t seed) {
  Search search(reads, plan.objective, seed);
  TiedMatrix found = search.meanOfWalk(search.evolve(plan), plan.steps);
  for (double& shift : found.shifts) shift = roundedToFile(shift);
  return found;
}

}  // namespace velto
