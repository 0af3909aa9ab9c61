#include "evaluation/model_predictor.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/model_directory.h"
#include "tests/support/models.h"
#include "tests/support/process.h"
#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

// What the one-read program's report says: region, insertions, deletions.
std::string summary(const CalledRead& called, const std::string& letters) {
  std::ostringstream text;
  text << "START: " << called.start + 1 << " STOP: " << called.stop + 1 << "\n";
  for (const FrameShift& shift : called.shifts) {
    const auto p = static_cast<std::size_t>(shift.position);
    if (shift.insertion) text << "INSERTION_ERR: " << letters[p] << "@" << p + 1 << "\n";
    if (!shift.insertion) text << "DELETION_ERR: " << p + 1 << "\n";
  }
  return text.str();
}

std::string summaryOfReport(const std::string& report) {
  const std::size_t begin = report.find("START: ");
  return report.substr(begin, report.find("\n\n", begin) + 1 - begin);
}

TEST(ModelPredictor, CallsWhatTheOneReadProgramReports) {
  test::Random random(test::testSeed());
  SCOPED_TRACE("VELTO_TEST_SEED=" + std::to_string(test::testSeed()));
  const test::TempDir directory;
  int calledReads = 0;
  int shifts = 0;
  for (int round = 0; round < 12; ++round) {
    ModelTables tables = test::usualRandomModel(random);
    test::setCodingMatrix(tables);
    const std::string models = directory.file("model" + std::to_string(round));
    test::writeModelDirectory(models, tables);
    const ModelPredictor predictor(models);
    const std::string letters = test::randomLetters(random, 300 + 100 * round);
    const CalledRead called = predictor.predict(test::baseCodes(letters));
    test::writeFile(directory.file("r.fa"), ">r\n" + letters + "\n");
    const auto run =
        test::runProcess(VELTO_ONE_READ_PROGRAM, {"-i", "r.fa", "-d", models}, directory.path());
    ASSERT_EQ(run.status, 0);
    EXPECT_EQ(summary(called, letters), summaryOfReport(run.out)) << "round " << round;
    calledReads += called.isCoding();
    shifts += static_cast<int>(called.shifts.size());
  }
  EXPECT_GT(calledReads, 0);
  EXPECT_GT(shifts, 0);
}

TEST(ModelPredictor, ReadsOfFewerThanThirtyBasesAreNotCalled) {
  const test::TempDir directory;
  ModelTables tables;
  test::addConstant(tables, 1.0);
  test::setCodingMatrix(tables);
  test::writeModelDirectory(directory.path(), tables);
  const ModelPredictor predictor(directory.path());
  const CalledRead called = predictor.predict(std::vector<short>(29, 0));
  EXPECT_FALSE(called.isCoding());
  EXPECT_EQ(called.frame.size(), 29U);
  EXPECT_TRUE(predictor.predict({}).frame.empty());
}

TEST(ModelPredictor, MissingAndBrokenFilesAreNamed) {
  const test::TempDir directory;
  EXPECT_THROW(ModelPredictor(directory.path()), ModelError);
  test::Random random(1);
  test::writeModelDirectory(directory.path(), test::usualRandomModel(random));
  EXPECT_NO_THROW(ModelPredictor(directory.path()));
  const std::string matrix = directory.file("paramater/matrixL2G3-ex0.txt");
  test::writeFile(matrix, "1,2,3,4,\n");
  try {
    ModelPredictor predictor(directory.path());
    ADD_FAILURE() << "accepted";
  } catch (const ModelError& error) {
    EXPECT_EQ(std::string(error.what()).rfind(matrix + ": line 2: ", 0), 0U) << error.what();
  }
}

}  // namespace
}  // namespace velto
