#include "training/hmm/network_trainer.h"

#include <gtest/gtest.h>
#include <tbb/global_control.h>

#include "simulation/synthetic_species.h"
#include "training/hmm/count_tables.h"

namespace velto {
namespace {

// All transcripts as one fold, with even tables: what there is to learn, the network learns.
struct Task {
  Task() {
    species.add(20, 700, 45);
    for (const Transcript& t : species.coding) pool.coding.push_back(&t);
    for (const Transcript& t : species.noncoding) pool.noncoding.push_back(&t);
    tables.emplace_back();
    TranscriptCounts().fillTables(tables[0]);
  }

  Parameters train(int steps, std::uint64_t seed) const {
    NetworkPlan plan;
    plan.shape = {2, 16, {-1, 0, 2}};
    plan.steps = steps;
    plan.readsPerBatch = 16;
    plan.learningRate = 0.02;
    return trainNetwork(plan, ReadDrawer({&pool}, standardMixture()), tables, seed, nullptr);
  }

  double judge(const Parameters& parameters) const {
    return judgeNetwork({2, 16, {-1, 0, 2}}, parameters, ReadDrawer({&pool}, standardMixture()),
                        tables, 99, 60);
  }

  SyntheticSpecies species;
  TranscriptPool pool;
  std::vector<HmmModel> tables;
};

TEST(NetworkTrainer, LikelihoodRises) {
  const Task task;
  EXPECT_GT(task.judge(task.train(60, 1)), task.judge(task.train(1, 1)) + 10.0);
}

TEST(NetworkTrainer, ParametersAreTheSameAtAnyNumberOfThreadsAndDifferBySeed) {
  const Task task;
  const Parameters many = task.train(3, 1);
  const tbb::global_control one(tbb::global_control::max_allowed_parallelism, 1);
  EXPECT_EQ(task.train(3, 1), many);
  EXPECT_NE(task.train(3, 2), many);
}

}  // namespace
}  // namespace velto
