// Trains the window network by the conditional likelihood of true paths.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "training/hmm/network_parameters.h"
#include "training/hmm/training_reads.h"

namespace velto {

struct NetworkPlan {
  NetworkShape shape;
  int steps = 8000;             // steps of the weights
  int readsPerBatch = 64;       // a multiple of kGradientParts
  double learningRate = 0.005;  // falls linearly to a tenth
  double dropout = 0.15;        // of hidden units, drawn for each read
  double decay = 0.01;          // of weights other than biases and path factors, per step of rate 1
};

// Reads of a batch are summed up in so many parts, whatever the number of threads.
constexpr int kGradientParts = 8;

// Trains on reads of `reads`, each with the tables of the fold that its transcript belongs to:
// those of the other folds. Uses all threads of the calling arena; the result does not depend on
// their number. `progress` is called now and then, with the number of steps done and the mean
// log likelihood per 1000 bases since the last call; it may be empty.
Parameters trainNetwork(const NetworkPlan& plan, const ReadDrawer& reads,
                        const std::vector<HmmModel>& tablesOfFold, std::uint64_t seed,
                        const std::function<void(int, double)>& progress);

// Mean log likelihood per 1000 bases of `count` reads under the parameters.
double judgeNetwork(const NetworkShape& shape, const Parameters& parameters,
                    const ReadDrawer& reads, const std::vector<HmmModel>& tablesOfFold,
                    std::uint64_t seed, int count);

}  // namespace velto
