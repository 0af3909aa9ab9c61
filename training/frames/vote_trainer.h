// Trains the votes and matrices of all classes from transcripts.
#pragma once

#include <array>

#include "training/frames/vote_plan.h"
#include "training/trainer.h"

namespace velto {

struct TrainedClass {
  ModelTables tables;
  SampleCounts sample;
  PresetCounts heldBack{};  // accuracy on reads of the held-back part
};

using TrainedVotes = std::array<TrainedClass, kReadClasses>;

// Throws TooLittleData for fewer transcripts, or fewer long coding ones, than a vote can be trained
// on.
void checkVoteData(const TrainingJob& job);

// Boosts votes that leave out one training fold each, searches the matrices on the reads of all
// folds, each scored by the votes that did not see it, and boosts the model's votes on all folds.
// Throws TooLittleData, before any work where there are too few transcripts, or when a class lacks
// reads even after borrowing.
TrainedVotes trainVotes(const TrainingJob& job, const PlanOfGroup& plan);

}  // namespace velto
