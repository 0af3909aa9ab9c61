#include "training/frames/vote_plan.h"

#include <algorithm>
#include <cmath>

namespace velto {
namespace {

// What the search gains on est reads it loses on reads with few errors, which are most of those of
// today.
SearchObjective fragmentObjective(const ReadClass& readClass) {
  const bool isShort = readClass.windowWidth == 96;
  return {.presetWeights = {isShort ? 0.06 : 0.08, 0.3, isShort ? 0.64 : 0.62},
          .frameF1 = 0.0,
          .frameRecall = 0.55,
          .correlation = 0.45,
          .exactBonus = 0.05,
          .freeCalls = 0.0,
          .callCost = isShort ? 0.03 : 0.05};
}

// Reads of a whole transcript: nearly all are called, so that the ends of the region decide. Calls
// of non-coding reads cost less than what they are worth where those can hardly be told from coding
// ones: at a cost of 2 the search gave up whole GC classes of zebrafish to keep to the free share.
SearchObjective wholeReadObjective(const ReadClass& readClass) {
  const bool isLongest = readClass.lengthId == 2;
  return {
      .presetWeights = {isLongest ? 0.36 : 0.33, isLongest ? 0.29 : 0.31, isLongest ? 0.35 : 0.36},
      .frameF1 = 0.3,
      .frameRecall = 0.2,
      .correlation = 0.5,
      .exactBonus = isLongest ? 0.15 : 0.2,
      .freeCalls = 0.25,
      .callCost = 0.25};
}

std::size_t scaled(double size, double effort) {
  return static_cast<std::size_t>(std::llround(size * effort));
}

// Long reads give more windows, as each takes longer to draw.
SamplingPlan samplingPlan(const ReadClass& readClass, double effort) {
  constexpr int kWindowsPerRead[] = {4, 8, 16};  // [length class]
  constexpr double kWindows = 240000.0;
  constexpr double kDrawsPerRead = 10.0;
  const int perRead = kWindowsPerRead[readClass.lengthId];
  return {.windows = scaled(kWindows, effort),
          .maxDraws = scaled(kDrawsPerRead * kWindows / perRead, effort),
          .windowsPerRead = perRead,
          .noncodingFraction = 0.12,
          .maxBorrowed = 2.0,
          .borrowedWeight = 0.5,
          .lossFractions = {0.35, 0.35, 0.3},
          .mixture = {{presetErrors("est")->rates, 0.4},
                      {presetErrors("mild")->rates, 0.25},
                      {presetErrors("clean")->rates, 0.35}}};
}

// Long reads have more bases to judge by, and take longer.
SearchPlan searchPlan(const ReadClass& readClass) {
  if (readClass.lengthId == 0) {
    return {.generations = 40,
            .earlyFraction = 0.25,
            .lateGenerations = 10,
            .steps = 200,
            .objective = fragmentObjective(readClass)};
  }
  return {.generations = 40,
          .earlyFraction = readClass.lengthId == 1 ? 0.25 : 0.2,
          .lateGenerations = 8,
          .steps = 120,
          .objective = wholeReadObjective(readClass)};
}

}  // namespace

GroupPlan standardPlan(const ReadClass& readClass, double effort) {
  constexpr double kReads[] = {3200, 2400, 1600};  // [length class]
  return {.sampling = samplingPlan(readClass, effort),
          .boosting = {.stumps = kModelHypotheses - 1,
                       .batch = 20,
                       .batchesPerSweep = 2,
                       .finalSweeps = 5,
                       .ridge = 400.0},
          .search = searchPlan(readClass),
          .reads = scaled(kReads[readClass.lengthId], effort)};
}

double effortFor(std::size_t transcripts, bool quick) {
  constexpr double kFullEffort = 2700.0;  // transcripts
  const double effort = std::clamp(static_cast<double>(transcripts) / kFullEffort, 0.1, 1.0);
  return quick ? 0.3 * effort : effort;
}

PlanOfGroup planFor(const TrainingJob& job) {
  const double effort = effortFor(job.coding.size(), job.quick);
  return [effort](const ReadClass& readClass) { return standardPlan(readClass, effort); };
}

}  // namespace velto
