// Boosting of a vote: chooses stumps and weighs them together.
#pragma once

#include <cstddef>
#include <vector>

#include "training/frames/window_set.h"

namespace velto {

struct WeightedStump {
  Stump stump;
  double weight;  // added to the log odds of coding when the stump says yes
};

// Log odds of coding = bias + the weights of the stumps that say yes.
struct Vote {
  double bias = 0.0;
  std::vector<WeightedStump> stumps;  // all different, in order of choice
};

struct BoostingPlan {
  std::size_t stumps;  // of the vote, if as many promise anything
  std::size_t batch;   // stumps, of different features, chosen from one look at the gains
  int finalSweeps;     // joint refinements of all weights at the end
  double ridge;        // penalty on a weight: ridge / 2 x weight squared
};

// Minimises the weighted logistic loss by Newton steps: batch by batch the stumps that promise
// most are added, and after each batch all weights are refined one after another. The first batch
// is chosen from all stumps, each later one from those of every fourth amino-acid pair, in turn,
// and all others. The result depends on its arguments alone. Pure; any thread may call it.
Vote boostVote(const WindowSet& windows, const BoostingPlan& plan);

// 1 / (1 + e^-x) for any finite x, within 1e-6, by the four basic operations alone so that every
// machine gets the same bits.
float logistic(float x);

}  // namespace velto
