#include "report/text_report.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

using test::repeated;

std::string reportOf(const test::HandMade& values, unsigned width) {
  WebPredict result;
  test::fill(result, values);
  std::ostringstream out;
  writeTextReport(out, result, width);
  return out.str();
}

// What stands behind the header block and the error lines.
std::string displayOf(const test::HandMade& values, unsigned width) {
  const std::string report = reportOf(values, width);
  return report.substr(report.find("\n\n") + 2);
}

TEST(TextReport, InsertionAndDeletionAreShownAsInTheGoldenFile) {
  // Frame 0 from step 1, frame 1 from step 4, frame 0 again at the steps 7 and 8.
  const test::HandMade values{
      repeated("ACGT", 9), "hand", {-1, 0, 0, 0, 1, 1, 1, 0, 0, -1, -1, -1}, 3, 26, 123.456789};
  EXPECT_EQ(reportOf(values, 20), test::readFile("tests/golden/report.txt"));
}

TEST(TextReport, WithoutACodingRegionEndsWithTheMessage) {
  const test::HandMade values{repeated("ATG", 10), "", {-1}, -1, -1, -10.0};
  EXPECT_EQ(reportOf(values, 60), test::readFile("tests/golden/report_nothing_found.txt"));
}

// A region of all 30 bases in frame 0: the display has 32 characters.
const test::HandMade kWholeRead{repeated("A", 30), "", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 0, 29, 1.0};

TEST(TextReport, StartAtBaseZeroPutsABraceFirst) {
  EXPECT_EQ(displayOf(kWholeRead, 60), "{" + repeated("A", 30) + "}\n");
}

TEST(TextReport, DisplayOfExactlyTheWidthIsOneLine) {
  EXPECT_EQ(displayOf(kWholeRead, 32), "{" + repeated("A", 30) + "}\n");
}

TEST(TextReport, DisplayOfOneMoreThanTheWidthHasALineOfOneCharacter) {
  EXPECT_EQ(displayOf(kWholeRead, 31), "{" + repeated("A", 30) + "\n}\n");
}

TEST(TextReport, WidthOfOnePutsEveryMarkOnItsLine) {
  EXPECT_EQ(displayOf(kWholeRead, 1).substr(0, 6), "{\nA\nA\n");
}

TEST(TextReport, WidthZeroMeansSixty) {
  const test::HandMade values{repeated("C", 90), "", std::vector<int>(30, 0), 0, 89, 1.0};
  EXPECT_EQ(displayOf(values, 0), displayOf(values, 60));
  EXPECT_EQ(displayOf(values, 0), "{" + repeated("C", 59) + "\n" + repeated("C", 31) + "}\n");
}

TEST(TextReport, NegativeWidthTakenAsACountGivesOneLine) {
  WebPredict result;
  test::fill(result, {repeated("C", 300), "", std::vector<int>(100, 0), 0, 299, 1.0});
  testing::internal::CaptureStdout();
  const auto precision = std::cout.precision();
  EXPECT_EQ(result.OutNormLayout(-1), 0);
  const std::string report = testing::internal::GetCapturedStdout();
  EXPECT_NE(report.find("\n\n{" + repeated("C", 300) + "}\n"), std::string::npos);
  EXPECT_EQ(std::cout.precision(), 5);  // stays behind the report
  std::cout.precision(precision);
}

TEST(TextReport, FirstThreeBasesAreNeverErrors) {
  // A path that enters frame 0, 1 or 2 at step 0 and another one at step 1. The step before step 0
  // has no frame; the change at step 1 shows at one of the bases 4 to 6 and nowhere else.
  const std::pair<std::vector<int>, const char*> cases[] = {
      {{0, 1}, "INSERTION_ERR: A@4\n\n"}, {{1, 2}, "INSERTION_ERR: A@5\n\n"},
      {{2, 0}, "INSERTION_ERR: A@6\n\n"}, {{1, 0}, "DELETION_ERR: 4\n\n"},
      {{2, 1}, "DELETION_ERR: 5\n\n"},    {{0, 2}, "DELETION_ERR: 6\n\n"},
  };
  for (const auto& [path, line] : cases) {
    std::vector<int> whole(10, path[1]);
    whole[0] = path[0];
    const std::string report = reportOf({repeated("A", 30), "", whole, path[0], 29, 1.0}, 60);
    const std::string stop = " STOP: 30\n";
    EXPECT_EQ(report.find(stop + line), report.find(stop)) << report;
  }
}

TEST(TextReport, InsertedBaseThatEndsTheRegionKeepsItsBracketInside) {
  const test::HandMade values{repeated("A", 30), "", {0, 0, 1, 1, -1}, 0, 6, 1.0};
  EXPECT_EQ(displayOf(values, 60).substr(0, 12), "{AAAAAA(A)}A");
}

TEST(TextReport, EveryInsertionAndDeletionStandsAtItsResidue) {
  // Steps 0 to 9; each change at step 4, 5, 6, ...
  const test::HandMade values{
      repeated("ACGTA", 8), "", {0, 0, 1, 1, 2, 2, 0, 0, 2, 2, 1, 1, 0}, 0, 38, 1.0};
  const std::string report = reportOf(values, 60);
  EXPECT_NE(report.find("INSERTION_ERR: C@7\n"    // 0 to 1: base 6
                        "INSERTION_ERR: T@14\n"   // 1 to 2: base 13
                        "INSERTION_ERR: A@21\n"   // 2 to 0: base 20
                        "DELETION_ERR: 27\n"      // 0 to 2: base 26
                        "DELETION_ERR: 32\n"      // 2 to 1: base 31
                        "DELETION_ERR: 37\n\n"),  // 1 to 0: base 36
            std::string::npos)
      << report;
}

TEST(TextReport, NumbersHaveThreeAndFiveDigits) {
  WebPredict result;
  test::fill(result, {repeated("A", 30), "", {-1}, -1, -1, 123.456789});
  for (const auto& shown : {std::pair<double, const char*>{50.0, "50%"},
                            {33.333, "33.3%"},
                            {41.2345, "41.2%"},
                            {100.0, "100%"},
                            {0.0, "0%"}}) {
    result.gcPressure = shown.first;
    std::ostringstream out;
    writeTextReport(out, result, 60);
    EXPECT_NE(out.str().find(std::string("GC PRESSURE: ") + shown.second + "\nDP SCORE: 123.46\n"),
              std::string::npos);
  }
}

TEST(TextReport, UnknownBasesAreShownAsN) {
  const test::HandMade values{repeated("ANa", 10), "", std::vector<int>(10, 0), 0, 29, 1.0};
  EXPECT_EQ(displayOf(values, 60), "{" + repeated("Ann", 10) + "}\n");
}

}  // namespace
}  // namespace velto
