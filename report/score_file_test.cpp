#include "report/score_file.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

// Series of whole numbers: 100 x frame + step, as many as a read of this length has codons.
void fillSeries(WebPredict& result, int length) {
  for (int f = 0; f < 3; ++f) {
    for (int j = 0; 3 * j + f + 2 < length; ++j) result.frameScore[f].push_back(100 * f + j);
  }
}

std::vector<std::string> rowsOf(int length) {
  WebPredict result;
  result.setRead(test::baseCodes(test::repeated("A", length)));
  fillSeries(result, length);
  std::ostringstream out;
  writeScoreFile(out, result);
  std::istringstream in(out.str());
  std::vector<std::string> rows;
  for (std::string row; std::getline(in, row);) rows.push_back(row);
  return rows;
}

TEST(ScoreFile, Of31BasesIsAsInTheGoldenFile) {
  WebPredict result;
  result.setRead(test::baseCodes(test::repeated("ATGCN", 7).substr(0, 31)));
  fillSeries(result, 31);
  result.frameScore[0][0] = -0.000012;
  std::ostringstream out;
  writeScoreFile(out, result);
  EXPECT_EQ(out.str(), test::readFile("tests/golden/scores.csv"));
}

TEST(ScoreFile, Of30BasesRepeatsTheLastValuesInItsLastCodon) {
  const std::vector<std::string> rows = rowsOf(30);
  ASSERT_EQ(rows.size(), 30U);
  EXPECT_EQ(rows[0], "A,0,0,0");
  EXPECT_EQ(rows[1], "A,0,100,0");
  EXPECT_EQ(rows[2], "A,0,100,200");
  EXPECT_EQ(rows[26], "A,8,108,208");
  for (const size_t row : {27U, 28U, 29U}) EXPECT_EQ(rows[row], "A,8,108,207") << row;
}

TEST(ScoreFile, Of32BasesRepeatsThemInItsTwoTrailingBasesToo) {
  const std::vector<std::string> rows = rowsOf(32);
  for (const size_t row : {30U, 31U}) EXPECT_EQ(rows[row], "A,9,109,208") << row;
}

TEST(ScoreFile, ValuesHaveSixSignificantDigits) {
  WebPredict result;
  result.setRead(test::baseCodes(test::repeated("A", 30)));
  result.frameScore[0] = {12.34567891};
  result.frameScore[1] = {1234567.0};
  result.frameScore[2] = {-0.00001234567};
  std::ostringstream out;
  writeScoreFile(out, result);
  EXPECT_NE(out.str().find("\nA,12.3457,1.23457e+06,-1.23457e-05\n"), std::string::npos);
}

TEST(ScoreFile, ValueThatASeriesLacksIsZero) {
  WebPredict result;
  result.setRead(test::baseCodes(test::repeated("A", 30)));
  std::ostringstream out;
  writeScoreFile(out, result);
  EXPECT_EQ(out.str(), test::repeated("A,0,0,0\n", 30));
}

TEST(ScoreFile, ExistingFileIsOverwritten) {
  const test::TempDir directory;
  std::string path = directory.file("s.csv");
  test::writeFile(path, std::string(5000, 'x'));
  WebPredict result;
  result.setRead(test::baseCodes(test::repeated("A", 30)));
  EXPECT_EQ(result.OutValLayout(60, path.data()), 0);
  EXPECT_EQ(test::readFile(path), test::repeated("A,0,0,0\n", 30));
}

TEST(ScoreFile, FileThatCannotBeOpenedIsPassedOver) {
  const test::TempDir directory;
  std::string path = directory.file("no/where.csv");
  WebPredict result;
  result.setRead(test::baseCodes(test::repeated("A", 30)));
  EXPECT_EQ(result.OutValLayout(60, path.data()), 0);
  EXPECT_FALSE(test::fileExists(path));
}

}  // namespace
}  // namespace velto
