#include "training/frames/vote_trainer.h"

#include <gtest/gtest.h>
#include <tbb/global_control.h>

#include <sstream>

#include "evaluation/evaluation_figures.h"
#include "model/model_file.h"
#include "simulation/synthetic_species.h"
#include "training/frames/vote_files.h"

namespace velto {
namespace {

GroupPlan tinyPlan(const ReadClass& readClass) {
  GroupPlan plan = standardPlan(readClass);
  plan.sampling.windows = 3000;
  plan.sampling.maxDraws = 2500;
  plan.sampling.windowsPerRead = 4;
  plan.boosting.stumps = 20;
  plan.boosting.finalSweeps = 2;
  plan.search = {.generations = 1, .earlyFraction = 0.5, .lateGenerations = 1, .steps = 5};
  plan.reads = 24;
  return plan;
}

// Transcripts of every GC class, long enough for every length class.
const SyntheticSpecies& species() {
  static const SyntheticSpecies made = [] {
    SyntheticSpecies s;
    for (const int gc : {36, 47, 54, 63}) s.add(15, 3150, gc);
    return s;
  }();
  return made;
}

TrainedVotes trained(const SyntheticSpecies& s, std::uint64_t seed) {
  TrainingJob job{s.coding, s.noncoding};
  job.seed = seed;
  return trainVotes(job, tinyPlan);
}

const TrainedVotes& example() {
  static const TrainedVotes model = trained(species(), 1);
  return model;
}

std::string textOf(const TrainedVotes& model) {
  const TrainedDecoder made = voteFiles(model);
  std::string text = made.card;
  for (const ModelFile& file : made.files) text += file.path + "\n" + file.bytes;
  return text;
}

TEST(VoteTrainer, FilesAreTheSameAtAnyNumberOfThreadsAndDifferBySeed) {
  const std::string many = textOf(example());
  const tbb::global_control one(tbb::global_control::max_allowed_parallelism, 1);
  EXPECT_TRUE(textOf(trained(species(), 1)) == many);
  EXPECT_FALSE(textOf(trained(species(), 2)) == many);
}

TEST(VoteTrainer, FilesReadBackRegularAndUnchanged) {
  for (const TrainedClass& c : example()) {
    const std::string text = parameterFileText(c.tables);
    std::istringstream parameters(text), matrix(matrixFileText(c.tables.malkovChain));
    ModelTables read;
    EXPECT_TRUE(readParameterFile(parameters, kModelHypotheses, read).regular());
    EXPECT_TRUE(readMatrixFile(matrix, read.malkovChain).regular());
    EXPECT_EQ(parameterFileText(read), text);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(read.malkovChain[i], c.tables.malkovChain[i]);
  }
}

TEST(VoteTrainer, CodingReadsOfAnEasySpeciesAreFound) {
  EvaluationCounts clean;
  for (const TrainedClass& c : example()) clean += c.heldBack[kCleanReads];
  EXPECT_GT(clean.reads, 50);
  EXPECT_GT(frameSensitivityOf(clean).value.value_or(0.0), 0.7);
}

TEST(VoteTrainer, ClassWithoutReadsBorrowsFromTheOthers) {
  SyntheticSpecies twoClasses;
  twoClasses.add(20, 3300, 36);
  twoClasses.add(20, 3300, 54);
  twoClasses.add(20, 3300, 63);
  const TrainedVotes model = trained(twoClasses, 1);
  const ReadClass lacking{1, 2, 196};
  const SampleCounts& n = model[static_cast<std::size_t>(readClassIndex(lacking))].sample;
  EXPECT_TRUE(n.lackedReads);
  EXPECT_LT(5 * n.reads, n.borrowedReads);
}

TEST(VoteTrainer, TranscriptsThatAreAllShortAreRefusedAtOnceWithTheReason) {
  SyntheticSpecies withoutLongTranscripts;
  for (const int gc : {36, 47, 54, 63}) withoutLongTranscripts.add(15, 2500, gc);
  try {
    trained(withoutLongTranscripts, 1);
    FAIL() << "trained a model";
  } catch (const TooLittleData& error) {
    const std::string message = error.what();
    EXPECT_EQ(message,
              "too little data for the longest reads: 0 of 60 coding transcripts have more than "
              "3000 bases, at least 10 are needed");
  }
}

TEST(VoteTrainer, FewerThanFiftyTranscriptsAreRefused) {
  SyntheticSpecies few;
  few.add(49, 3300, 50);
  try {
    trained(few, 1);
    FAIL() << "trained a model";
  } catch (const TooLittleData& error) {
    EXPECT_EQ(std::string(error.what()).rfind("too little data: 49 coding transcripts", 0), 0U);
  }
}

TEST(VotePlan, EffortFollowsTheNumberOfTranscripts) {
  EXPECT_DOUBLE_EQ(effortFor(540, false), 0.2);
  EXPECT_DOUBLE_EQ(effortFor(60, false), 0.1);
  EXPECT_DOUBLE_EQ(effortFor(2967, false), 1.0);
  EXPECT_DOUBLE_EQ(effortFor(2967, true), 0.3);
  const ReadClass readClass{0, 0, 96};
  EXPECT_EQ(standardPlan(readClass).sampling.windows, 240000U);
  EXPECT_EQ(standardPlan(readClass, 0.15).sampling.windows, 36000U);
  EXPECT_EQ(standardPlan(readClass, 0.15).sampling.maxDraws, 90000U);
  EXPECT_EQ(standardPlan(readClass, 0.15).reads, 480U);
}

}  // namespace
}  // namespace velto
