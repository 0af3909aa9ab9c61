// How the votes and matrices of a model are trained: sizes, weights and objectives.
#pragma once

#include <cstddef>
#include <functional>

#include "training/frames/boosting.h"
#include "training/frames/matrix_search.h"
#include "training/frames/window_sampling.h"
#include "training/trainer.h"

namespace velto {

// How one length group (the four GC classes of one window width and length class) is trained.
struct GroupPlan {
  SamplingPlan sampling;
  BoostingPlan boosting;
  SearchPlan search;
  std::size_t reads;  // of the matrix search, per preset; and as many to judge the group by
};

// The plan for the group of a class; `effort`, above 0 to 1, scales windows and reads.
GroupPlan standardPlan(const ReadClass& readClass, double effort = 1.0);

// Effort for so many coding transcripts: a few hundred are drawn from so often, at full effort,
// that further windows tell nothing new.
double effortFor(std::size_t transcripts, bool quick);

using PlanOfGroup = std::function<GroupPlan(const ReadClass&)>;

// The plan that `velto train` follows.
PlanOfGroup planFor(const TrainingJob& job);

}  // namespace velto
