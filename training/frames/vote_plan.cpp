#include "training/frames/vote_plan.h"

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

// Reads of a whole transcript: nearly all are called, so that the ends of the region decide.
SearchObjective wholeReadObjective(const ReadClass& readClass) {
  const bool isLongest = readClass.lengthId == 2;
  return {
      .presetWeights = {isLongest ? 0.36 : 0.33, isLongest ? 0.29 : 0.31, isLongest ? 0.35 : 0.36},
      .frameF1 = 0.3,
      .frameRecall = 0.2,
      .correlation = 0.5,
      .exactBonus = isLongest ? 0.15 : 0.2,
      .freeCalls = 0.25,
      .callCost = 2.0};
}

SamplingPlan samplingPlan() {
  return {.windows = 240000,
          .maxDraws = 600000,
          .windowsPerRead = 4,
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
    return {.generations = 60,
            .earlyFraction = 0.25,
            .lateGenerations = 15,
            .steps = 400,
            .objective = fragmentObjective(readClass)};
  }
  return {.generations = 60,
          .earlyFraction = readClass.lengthId == 1 ? 0.25 : 0.2,
          .lateGenerations = 12,
          .steps = 200,
          .objective = wholeReadObjective(readClass)};
}

}  // namespace

GroupPlan standardPlan(const ReadClass& readClass) {
  constexpr std::size_t kReads[] = {3200, 2400, 1600};  // [length class]
  return {
      .sampling = samplingPlan(),
      .boosting = {.stumps = kModelHypotheses - 1, .batch = 20, .finalSweeps = 5, .ridge = 400.0},
      .search = searchPlan(readClass),
      .reads = kReads[readClass.lengthId]};
}

}  // namespace velto
