#include "report/html_page.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

using test::repeated;

std::string pageOf(const test::HandMade& values, int width) {
  WebPredict result;
  test::fill(result, values);
  std::ostringstream out;
  writeHtmlPage(out, result, width);
  return out.str();
}

// The blocks of the frame layout.
std::string blocksOf(const test::HandMade& values, int width) {
  const std::string page = pageOf(values, width);
  return page.substr(page.rfind("<HR>") + 4);
}

TEST(HtmlPage, InsertionAndDeletionAreShownAsInTheGoldenFile) {
  const test::HandMade values{
      repeated("ACGT", 9), "hand", {-1, 0, 0, 0, 1, 1, 1, 0, 0, -1, -1, -1}, 3, 26, 123.456789};
  EXPECT_EQ(pageOf(values, 20), test::readFile("tests/golden/page.html"));
}

TEST(HtmlPage, WithoutACodingRegionHasNoFrameLayout) {
  const test::HandMade values{repeated("ATG", 10), "", {-1}, -1, -1, -10.0};
  EXPECT_EQ(pageOf(values, 60), test::readFile("tests/golden/page_nothing_found.html"));
}

const test::HandMade kThirtyBases{repeated("A", 30), "", std::vector<int>(10, 0), 0, 29, 1.0};

TEST(HtmlPage, LengthOfWholeBlocksEndsWithAnEmptyBlock) {
  EXPECT_EQ(blocksOf(kThirtyBases, 30), "1<BR>\n" + repeated("A", 30) + "<BR>\n" +
                                            repeated("*", 30) + "<BR>\n" + repeated("-", 30) +
                                            "<BR>\n" + repeated("-", 30) +
                                            "<BR>\n31<BR>\n<BR>\n<BR>\n<BR>\n<BR>\n<BR>\n");
}

TEST(HtmlPage, ReadOf95BasesHasBlocksAt1And61) {
  const test::HandMade values{repeated("A", 95), "", std::vector<int>(31, 0), 0, 92, 1.0};
  const std::string blocks = blocksOf(values, 60);
  EXPECT_EQ(blocks.substr(0, 6), "1<BR>\n");
  EXPECT_NE(blocks.find("<BR>\n61<BR>\n" + repeated("A", 35) + "<BR>\n"), std::string::npos);
  EXPECT_EQ(blocks.find("121<BR>"), std::string::npos);
}

TEST(HtmlPage, WidthBelowOneMeansSixty) {
  EXPECT_EQ(pageOf(kThirtyBases, 0), pageOf(kThirtyBases, 60));
  EXPECT_EQ(pageOf(kThirtyBases, -5), pageOf(kThirtyBases, 60));
}

TEST(HtmlPage, StartAtBaseZeroColoursRightBehindTheFirstBreak) {
  EXPECT_NE(pageOf(kThirtyBases, 60).find("<BR>\n<BR>\n<BR><font color=\"red\">AAA"),
            std::string::npos);
}

TEST(HtmlPage, LineBreakThatFallsOnADeletionMarkIsPassedOver) {
  // The deletion stands before base 21: with blocks of 21 the break comes before the mark at
  // display character 21, and the next one at 42. With blocks of 22 the mark is character 21 and
  // base 21 is character 22, at which no position is tested: the break is passed over.
  const test::HandMade values{
      repeated("ACGT", 12), "", {-1, 0, 0, 0, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 3, 47, 1.0};
  const std::string at21 = pageOf(values, 21);
  EXPECT_NE(at21.find("A<BR></font><font color=blue>X</font><font color=red>C"), std::string::npos);
  const std::string at22 = pageOf(values, 22);
  EXPECT_NE(at22.find("A</font><font color=blue>X</font><font color=red>CG"), std::string::npos);
}

TEST(HtmlPage, FrameTwoCodonsAreCarriedIntoTheStepBehindThePath) {
  // 32 bases in frame 2: the last codon, of step 9, covers the bases 29 to 31.
  const test::HandMade values{repeated("A", 32), "", std::vector<int>(10, 2), 2, 31, 1.0};
  EXPECT_NE(blocksOf(values, 60).find("<BR>\n--" + repeated("*", 30) + "<BR>\n"),
            std::string::npos);
}

TEST(HtmlPage, FrameOneCodonsAreCarriedByOneBase) {
  const test::HandMade values{repeated("A", 33), "", {1, 1, 1, 1, 1, -1}, 1, 15, 1.0};
  EXPECT_NE(blocksOf(values, 60).find("<BR>\n-" + repeated("*", 15) + repeated("-", 17) + "<BR>\n"),
            std::string::npos);
}

TEST(HtmlPage, OldFrameShowsInsideTheLastTwoBasesOnly) {
  // Frame 2 to step 9, frame 0 at step 10 of a read of 33 bases: of the bases 30 to 32 only base
  // 31 lies behind base 30 and has a residue of at most 1.
  std::vector<int> path(10, 2);
  path.push_back(0);
  const test::HandMade values{repeated("A", 33), "", path, 2, 32, 1.0};
  EXPECT_NE(blocksOf(values, 60).find("<BR>\n--" + repeated("*", 28) + "-*-<BR>\n"),
            std::string::npos)
      << blocksOf(values, 60);
}

TEST(HtmlPage, NumbersHaveSixDigitsAndTheConsoleKeepsThree) {
  const test::TempDir directory;
  WebPredict result;
  test::fill(result, kThirtyBases);
  result.gcPressure = 41.2345;
  std::string path = directory.file("o.html");
  const auto precision = std::cout.precision(6);
  EXPECT_EQ(result.OutHtmlLayout(60, path.data()), 0);
  EXPECT_EQ(std::cout.precision(), 3);
  std::cout.precision(precision);
  EXPECT_NE(test::readFile(path).find("GC PRESSURE: 41.2345%<BR>\n"), std::string::npos);
}

TEST(HtmlPage, InsertedBaseThatEndsTheRegionIsClosedBeforeIt) {
  const test::HandMade values{repeated("A", 30), "", {0, 0, 1, 1, -1}, 0, 6, 1.0};
  EXPECT_NE(
      pageOf(values, 60).find("<S>A</S></font><font color=red></font><font color=\"black\">A"),
      std::string::npos);
}

TEST(HtmlPage, ExistingFileIsOverwritten) {
  const test::TempDir directory;
  std::string path = directory.file("o.html");
  test::writeFile(path, std::string(5000, 'x'));
  WebPredict result;
  test::fill(result, kThirtyBases);
  EXPECT_EQ(result.OutHtmlLayout(60, path.data()), 0);
  EXPECT_EQ(test::readFile(path), pageOf(kThirtyBases, 60));
}

TEST(HtmlPage, FileThatCannotBeOpenedIsPassedOver) {
  const test::TempDir directory;
  WebPredict result;
  test::fill(result, kThirtyBases);
  std::string path = directory.file("no/where.html");
  EXPECT_EQ(result.OutHtmlLayout(60, path.data()), 0);
  EXPECT_FALSE(test::fileExists(path));
}

}  // namespace
}  // namespace velto
