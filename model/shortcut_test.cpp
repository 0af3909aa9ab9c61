#include "model/shortcut.h"

#include <gtest/gtest.h>

#include "model/model_file.h"
#include "model/window_vote.h"
#include "tests/support/models.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

class ShortcutTest : public testing::Test {
 protected:
  void SetUp() override {
    processModel = ModelTables();
    READ_ROUND = 500;
  }

  test::TempDir directory_;
  Shortcut shortcut_;
};

TEST_F(ShortcutTest, LoadsTheParameterFileIntoTheProcessWideTables) {
  ModelTables tables;
  test::addPair(tables, 2, 9, 15, 0.412, 1, 1.25);
  test::writeFile(directory_.file("p.txt"), parameterFileText(tables));
  EXPECT_EQ(shortcut_.GetParamater(directory_.file("p.txt")), 0);
  ASSERT_EQ(fh.size(), 500U);
  EXPECT_EQ(fh[0].elem2, 15);
  EXPECT_EQ(pairAcidTrsld[0].trsld, 1.25);
}

TEST_F(ShortcutTest, SecondLoadInOneProcessVotesByTheSecondFile) {
  ModelTables first;
  test::addConstant(first, 1.0);
  test::writeFile(directory_.file("1.txt"), parameterFileText(first));
  ModelTables second;
  test::addConstant(second, 0.25);
  test::writeFile(directory_.file("2.txt"), parameterFileText(second));
  shortcut_.GetParamater(directory_.file("1.txt"));
  EXPECT_EQ(voteSum(processModel, smplTestData()), 1.0);
  shortcut_.GetParamater(directory_.file("2.txt"));
  EXPECT_EQ(fh.size(), 1000U);
  EXPECT_EQ(voteSum(processModel, smplTestData()), 0.25);
}

TEST_F(ShortcutTest, LoadsTheMatrixFileIntoMalkovChain) {
  test::writeFile(directory_.file("m.txt"),
                  "0,-1,-2,-3\n-4,-5,-6,-7\n-8,-9,-10,-11\n-12,-13,-14,-15\n");
  EXPECT_EQ(shortcut_.GetDPMatrix(directory_.file("m.txt")), 0);
  EXPECT_EQ(malkovChain[9], -9.0);  // path start now, after non-coding
}

TEST_F(ShortcutTest, MissingFilesAreReportedOnStandardOutputAndEndTheProcess) {
  const std::string path = directory_.file("missing.txt");
  // The message is on standard output, so the death test's pattern for standard error is empty.
  EXPECT_EXIT(shortcut_.GetParamater(path), testing::ExitedWithCode(1), "^$");
  EXPECT_EXIT(shortcut_.GetDPMatrix(path), testing::ExitedWithCode(1), "^$");
}

TEST_F(ShortcutTest, WritesWhatItLoads) {
  test::Random random(test::testSeed());
  processModel = test::usualRandomModel(random);
  const std::string first = parameterFileText(processModel);
  EXPECT_EQ(shortcut_.OutputParamater(directory_.file("p.txt")), 0);
  EXPECT_EQ(test::readFile(directory_.file("p.txt")), first);
  processModel = ModelTables();
  shortcut_.GetParamater(directory_.file("p.txt"));
  EXPECT_EQ(parameterFileText(processModel), first);
}

TEST_F(ShortcutTest, WriterThatCannotCreateItsFileReportsItAndGoesOn) {
  const std::string path = directory_.file("no/such/place.txt");
  testing::internal::CaptureStdout();
  EXPECT_EQ(shortcut_.OutputParamater(path), 1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "ioerr:can not open " + path + "\n");
}

// Recorded parameter files and what the writer made of the tables loaded from them: a whole file, a
// file of 1200 lines, and one with lines of too few fields.
TEST_F(ShortcutTest, RecordedFilesAreWrittenAsRecorded) {
  for (const char* name : {"whole_file", "cut_file", "short_lines"}) {
    const std::string stem = std::string("tests/data/parameter_files/") + name;
    processModel = ModelTables();
    shortcut_.GetParamater(stem + "_read.txt");
    shortcut_.OutputParamater(directory_.file("p.txt"));
    EXPECT_EQ(test::readFile(directory_.file("p.txt")), test::readFile(stem + "_written.txt"))
        << name;
  }
}

}  // namespace
}  // namespace velto
