// Boosting of a vote: chooses stumps and weighs them together.
#pragma once

#include <algorithm>
#include <bit>
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
  std::size_t stumps;   // of the vote, if as many promise anything
  std::size_t batch;    // stumps, of different features, chosen from one look at the gains
  int batchesPerSweep;  // batches after which all weights are refined
  int finalSweeps;      // refinements at the end
  double ridge;         // penalty on a weight: ridge / 2 x weight squared
};

// Minimises the weighted logistic loss by Newton steps: batch by batch the stumps that promise
// most are added; after some batches all weights are refined one after another. The first batch
// is chosen from all stumps, each later one from those of every fourth amino-acid pair, in turn,
// and all others. The result depends on its arguments alone. Pure; any thread may call it.
Vote boostVote(const WindowSet& windows, const BoostingPlan& plan);

// 1 / (1 + e^-x) for any finite x, within 1e-6, by the four basic operations alone so that every
// machine gets the same bits.
inline float logistic(float x) {
  constexpr float kLog2e = 1.44269504F;
  constexpr float kLn2High = 0.693145752F;
  constexpr float kLn2Low = 1.42860677e-6F;
  const float y = std::min(std::max(x, -60.0F), 60.0F);
  // e^y = 2^n e^r, |r| <= ln 2 / 2
  const float scaled = y * kLog2e;
  const int n = static_cast<int>(scaled + (scaled < 0.0F ? -0.5F : 0.5F));
  const float r = (y - static_cast<float>(n) * kLn2High) - static_cast<float>(n) * kLn2Low;
  const float e =
      1.0F +
      r * (1.0F + r * (0.5F + r * (0.166666667F + r * (0.0416666667F + r * 0.00833333333F))));
  const float exponential = e * std::bit_cast<float>((n + 127) << 23);
  return exponential / (1.0F + exponential);
}

}  // namespace velto
