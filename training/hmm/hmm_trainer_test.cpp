#include "training/hmm/hmm_trainer.h"

#include <gtest/gtest.h>
#include <tbb/global_control.h>

#include "hmm/hmm_decoder.h"
#include "hmm/hmm_model_file.h"
#include "simulation/read_simulator.h"
#include "simulation/synthetic_species.h"

namespace velto {
namespace {

SyntheticSpecies speciesOf(int transcripts) {
  SyntheticSpecies species;
  species.add(transcripts, 900, 45);
  return species;
}

HmmPlan tinyPlan() {
  HmmPlan plan = standardHmmPlan(0.0);
  plan.network.shape = {2, 16, {-2, 0, 2}};
  plan.network.steps = 10;
  plan.calibrationReads = 100;
  return plan;
}

std::string trainedText(const SyntheticSpecies& species, std::uint64_t seed) {
  TrainingJob job{species.coding, species.noncoding};
  job.seed = seed;
  return hmmModelText(trainHmm(job, tinyPlan()).model);
}

TEST(HmmTrainer, FileIsTheSameAtAnyNumberOfThreadsAndDiffersBySeed) {
  const SyntheticSpecies species = speciesOf(30);
  const std::string many = trainedText(species, 1);
  const tbb::global_control one(tbb::global_control::max_allowed_parallelism, 1);
  EXPECT_TRUE(trainedText(species, 1) == many);
  EXPECT_FALSE(trainedText(species, 2) == many);
}

TEST(HmmTrainer, ModelReadsTheSpecies) {
  const SyntheticSpecies species = speciesOf(40);
  const auto model = std::make_shared<HmmModel>();
  ASSERT_TRUE(readHmmModel(trainedText(species, 1), *model).regular());
  const HmmDecoder decoder(model);
  const auto scratch = decoder.scratch();
  int called = 0, inFrame = 0, noncodingCalled = 0;
  Call call;
  for (std::size_t i = 0; i < 40; ++i) {
    const Transcript& t = species.coding[i];
    decoder.decode({t.bases, {}}, {}, *scratch, call);
    called += call.coding;
    if (call.coding) inFrame += call.frame[450] == t.cdsStart % 3;
    decoder.decode({species.noncoding[i].bases, {}}, {}, *scratch, call);
    noncodingCalled += call.coding;
  }
  EXPECT_GE(called, 38);
  EXPECT_GE(inFrame, 37);
  EXPECT_LE(noncodingCalled, 4);
}

TEST(HmmTrainer, PartsWithoutTranscriptsAreTooLittle) {
  const SyntheticSpecies few = speciesOf(4);
  const TrainingJob job{few.coding, few.noncoding};
  EXPECT_THROW(trainHmm(job, tinyPlan()), TooLittleData);
}

TEST(HmmTrainer, MoreDataBearMoreSteps) {
  EXPECT_LT(standardHmmPlan(1e6).network.steps, standardHmmPlan(1e7).network.steps);
  EXPECT_EQ(standardHmmPlan(1e8).network.steps, standardHmmPlan(1e9).network.steps);
  EXPECT_GT(standardHmmPlan(0.0).network.steps, 0);
  EXPECT_LT(standardHmmPlan(1e8, true).network.steps, standardHmmPlan(1e8).network.steps);
}

}  // namespace
}  // namespace velto
