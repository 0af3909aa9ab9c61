// Trains the votes and matrices of all classes from transcripts.
#pragma once

#include <array>
#include <cstddef>
#include <functional>

#include "training/frames/boosting.h"
#include "training/frames/matrix_search.h"
#include "training/frames/window_samples.h"
#include "training/trainer.h"

namespace velto {

// How one length group (the four GC classes of one window width and length class) is trained.
struct GroupPlan {
  SamplingPlan sampling;
  BoostingPlan boosting;
  SearchPlan search;
  std::size_t reads;  // of the matrix search, per preset; and as many to judge the group by
};

// The plan that `velto train` follows for the group of a class.
GroupPlan standardPlan(const ReadClass& readClass);

struct TrainedClass {
  ModelTables tables;
  SampleCounts sample;
  PresetTallies heldBack{};  // accuracy on reads of the held-back part
};

using TrainedVotes = std::array<TrainedClass, kReadClasses>;

using PlanOfGroup = std::function<GroupPlan(const ReadClass&)>;

// Boosts votes that leave out one training fold each, searches the matrices on the reads of all
// folds, each scored by the votes that did not see it, and boosts the model's votes on all folds.
// Throws TooLittleData when a class lacks reads even after borrowing.
TrainedVotes trainVotes(const TrainingJob& job, const PlanOfGroup& plan = standardPlan);

}  // namespace velto
