// How the votes and matrices of a model are trained: sizes, weights and objectives.
#pragma once

#include <cstddef>
#include <functional>

#include "training/frames/boosting.h"
#include "training/frames/matrix_search.h"
#include "training/frames/window_sampling.h"

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

using PlanOfGroup = std::function<GroupPlan(const ReadClass&)>;

}  // namespace velto
