#include "training/model_comparison.h"

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

TEST(ModelComparison, NamesTheClassesWhereTheNewModelIsWorse) {
  SyntheticSpecies species;
  species.add(25, 900, 50);
  TranscriptPool pool;
  for (const Transcript& t : species.coding) pool.coding.push_back(&t);
  for (const Transcript& t : species.noncoding) pool.noncoding.push_back(&t);
  const test::TempDir one, two;
  const Predictor calling = predictorOf(one, 1.0), silent = predictorOf(two, -1.0);
  const auto lost = comparison(silent, calling, "other", pool, 1);
  ASSERT_GE(lost.size(), 2U);
  EXPECT_EQ(lost[0].rfind("est reads of held-back transcripts: frame F1 0.000, ", 0), 0U)
      << lost[0];
  EXPECT_EQ(lost[1].rfind("WORSE in class ", 0), 0U) << lost[1];
  EXPECT_NE(lost[1].find("; other: "), std::string::npos);
  EXPECT_EQ(comparison(calling, silent, "other", pool, 1).size(), 1U);
}

}  // namespace
}  // namespace velto
