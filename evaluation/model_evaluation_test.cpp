#include "evaluation/model_evaluation.h"

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
std::string summary(const Prediction& called, const std::string& letters) {
  std::ostringstream text;
  text << "START: " << called.start + 1 << " STOP: " << called.stop + 1 << "\n";
  for (const Frameshift& shift : called.frameshifts) {
    const auto p = static_cast<std::size_t>(shift.position);
    const bool insertion = shift.kind == Frameshift::Kind::kInsertion;
    if (insertion) text << "INSERTION_ERR: " << letters[p] << "@" << p + 1 << "\n";
    if (!insertion) text << "DELETION_ERR: " << p + 1 << "\n";
  }
  return text.str();
}

std::string summaryOfReport(const std::string& report) {
  const std::size_t begin = report.find("START: ");
  return report.substr(begin, report.find("\n\n", begin) + 1 - begin);
}

TEST(ModelEvaluation, JudgesWhatTheOneReadProgramReports) {
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
    const Predictor predictor(models);
    Workspace workspace;
    const std::string letters = test::randomLetters(random, 300 + 100 * round);
    const Prediction called = predictor.predict(letters, workspace);
    test::writeFile(directory.file("r.fa"), ">r\n" + letters + "\n");
    const auto run =
        test::runProcess(VELTO_ONE_READ_PROGRAM, {"-i", "r.fa", "-d", models}, directory.path());
    ASSERT_EQ(run.status, 0);
    EXPECT_EQ(summary(called, letters), summaryOfReport(run.out)) << "round " << round;
    calledReads += called.isCoding();
    shifts += static_cast<int>(called.frameshifts.size());
  }
  EXPECT_GT(calledReads, 0);
  EXPECT_GT(shifts, 0);
}

LabelledRead noncodingRead(const std::string& name, int length) {
  LabelledRead read;
  read.truth.read = read.truth.transcript = name;
  read.truth.length = length;
  read.bases.assign(static_cast<std::size_t>(length), 'A');
  return read;
}

TEST(ModelEvaluation, ReadsOfFewerThanThirtyBasesAreCountedAndNotCalled) {
  const test::TempDir directory;
  ModelTables tables;
  test::addConstant(tables, 1.0);
  test::setCodingMatrix(tables);
  test::writeModelDirectory(directory.path(), tables);
  const ReadSet set{{noncodingRead("a", 29), noncodingRead("b", 0)}, true};
  const JudgedModel judged = judgeModel(Predictor(directory.path()), {&set, 1});
  EXPECT_EQ(judged.evaluation.total.reads, 2);
  EXPECT_EQ(judged.evaluation.total.noncodingReads, 2);
  EXPECT_EQ(judged.evaluation.total.noncodingCalled, 0);
  EXPECT_EQ(judged.evaluation.total.bases, 29);
  EXPECT_EQ(judged.byTranscript.size(), 2U);
  EXPECT_TRUE(judged.evaluation.byRate.empty());
}

TEST(ModelEvaluation, OnlyTheWholeSetIsJudgedButEverySetGivesAPoint) {
  const test::TempDir directory;
  ModelTables tables;
  test::setCodingMatrix(tables);
  test::writeModelDirectory(directory.path(), tables);
  const ReadSet sets[] = {{{noncodingRead("a", 100)}, false},
                          {{noncodingRead("a", 100), noncodingRead("b", 60)}, true}};
  const JudgedModel judged = judgeModel(Predictor(directory.path()), sets, {RatePoints::kSets, 1});
  EXPECT_EQ(judged.evaluation.total.bases, 160);
  ASSERT_EQ(judged.evaluation.byRate.size(), 2U);
  EXPECT_EQ(judged.evaluation.byRate[0].counts.bases, 100);
}

}  // namespace
}  // namespace velto
