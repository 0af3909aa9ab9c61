// Trains all classes of a model directory from transcripts.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "training/frames/boosting.h"
#include "training/frames/matrix_search.h"
#include "training/frames/window_samples.h"

namespace velto {

// A class lacks reads even after borrowing; the message names the class and the counts.
class TooLittleData : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

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

using TrainedModel = std::array<TrainedClass, kReadClasses>;

struct TrainingJob {
  const std::vector<Transcript>& coding;
  const std::vector<Transcript>& noncoding;
  std::uint64_t seed = 1;
  std::function<GroupPlan(const ReadClass&)> plan = standardPlan;
  std::function<void(const std::string&)> progress = nullptr;  // a line of what was done;
                                                               // one thread at a time
};

// Boosts votes that leave out one training fold each, searches the matrices on the reads of all
// folds, each scored by the votes that did not see it, and boosts the model's votes on all folds.
// Trains with all threads of the calling arena; the result does not depend on their number. Throws
// TooLittleData.
TrainedModel trainModel(const TrainingJob& job);

}  // namespace velto
