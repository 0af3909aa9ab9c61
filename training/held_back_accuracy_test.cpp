#include "training/held_back_accuracy.h"

#include <gtest/gtest.h>

#include "simulation/synthetic_species.h"
#include "tests/support/model_directory.h"
#include "tests/support/models.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

// A model whose windows are all coding, or none.
Predictor predictorOf(const test::TempDir& directory, double vote) {
  ModelTables tables;
  test::addConstant(tables, vote);
  test::setCodingMatrix(tables);
  test::writeModelDirectory(directory.path(), tables);
  return Predictor(directory.path());
}

class HeldBackAccuracyTest : public testing::Test {
 protected:
  void SetUp() override {
    species_.add(25, 900, 50);
    for (const Transcript& t : species_.coding) pool_.coding.push_back(&t);
    for (const Transcript& t : species_.noncoding) pool_.noncoding.push_back(&t);
  }

  SyntheticSpecies species_;
  TranscriptPool pool_;
};

TEST_F(HeldBackAccuracyTest, NamesTheClassesWhereTheNewModelIsWorse) {
  const test::TempDir one, two;
  const HeldBackReads reads = heldBackReads(pool_, 1);
  const HeldBackAccuracy calling = accuracyOn(reads, predictorOf(one, 1.0));
  const HeldBackAccuracy silent = accuracyOn(reads, predictorOf(two, -1.0));
  const auto lost = comparison(silent, calling, "other");
  ASSERT_GE(lost.size(), 4U);
  EXPECT_EQ(lost[0].rfind("decoder vote, est reads of held-back transcripts: frame F1 0.000, ", 0),
            0U)
      << lost[0];
  EXPECT_NE(lost[2].find("clean reads"), std::string::npos) << lost[2];
  EXPECT_EQ(lost[3].rfind("WORSE with decoder vote in class ", 0), 0U) << lost[3];
  EXPECT_NE(lost[3].find("; other: "), std::string::npos);
  EXPECT_EQ(comparison(calling, silent, "other").size(), 3U);
}

TEST_F(HeldBackAccuracyTest, EveryTranscriptGivesAWholeReadAndAFragmentPerPreset) {
  for (const ReadSet& set : heldBackReads(pool_, 1)) {
    ASSERT_EQ(set.reads.size(), 100U);
    EXPECT_EQ(set.reads[0].truth.fragment.length, 900);
    EXPECT_LE(set.reads[50].truth.fragment.length, 800);
  }
}

}  // namespace
}  // namespace velto
