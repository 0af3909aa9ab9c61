#include "training/layout_smoothing.h"

#include <gtest/gtest.h>

#include <string>

namespace velto {
namespace {

// Classes written as their symbols: '*' coding, '-' non-coding, 'S' stop, '=' no window.
std::vector<int> classes(const std::string& symbols) {
  std::vector<int> codes;
  for (const char symbol : symbols) {
    codes.push_back(symbol == '*'   ? kCodingWindow
                    : symbol == '-' ? kNonCodingWindow
                    : symbol == 'S' ? kStopCodon
                                    : kNoWindow);
  }
  return codes;
}

std::string smoothed(const std::string& frame0, const std::string& frame1 = "") {
  layout lay;
  lay.cls[0] = classes(frame0);
  lay.cls[1] = classes(frame1);
  smoothLayout(lay);
  std::string symbols;
  for (const int code : lay.cls[0]) symbols += layoutSymbol(code);
  return symbols;
}

TEST(LayoutSmoothing, DropsLonelyRunsOfOneToThreeSteps) {
  EXPECT_EQ(smoothed("------*-----------"), "------------------");
  EXPECT_EQ(smoothed("------***---------"), "------------------");
  EXPECT_EQ(smoothed("------****--------"), "------****--------");
}

TEST(LayoutSmoothing, KeepsRunsWithCodingStepsAround) {
  // The first is dropped, for it sees only the five steps behind the one after it.
  EXPECT_EQ(smoothed("*----------*-----------"), "*----------------------");
  EXPECT_EQ(smoothed("-----*-***************-"), "-----*-***************-");
}

TEST(LayoutSmoothing, FillsGapsOfUpToSixStepsWithSevenCodingStepsAround) {
  EXPECT_EQ(smoothed("**********------***********"), "***************************");
  EXPECT_EQ(smoothed("**********-------***********"), "**********-------***********");
  EXPECT_EQ(smoothed("**********--**-***----------"), "******************----------");
}

TEST(LayoutSmoothing, FillsGapsOfUpToNineStepsBeforeAStopAfterTwelveCodingSteps) {
  EXPECT_EQ(smoothed("************---------S-------"), "*********************S-------");
  EXPECT_EQ(smoothed("************----------S------"), "************----------S------");
  EXPECT_EQ(smoothed("-***********---------S-------"), "-***********---------S-------");
}

TEST(LayoutSmoothing, LeavesAGapBeforeAStopInWhichAnotherFrameCodes) {
  EXPECT_EQ(smoothed("************---------S-------", "------------****-------------"),
            "************---------S-------");
}

TEST(LayoutSmoothing, SecondPassSeesTheOtherFramesAsTheFirstLeftThem) {
  // The lonely step in frame 1 is dropped by the first pass, then the gap is filled.
  EXPECT_EQ(smoothed("************---------S-------", "-------------*---------------"),
            "*********************S-------");
}

TEST(LayoutSmoothing, RunThatBeganBeforeTheFirstStepExaminedCountsFromThere) {
  // Steps 5 and 6 count as a run of two with nothing coding around it.
  EXPECT_EQ(smoothed("*******------------"), "*****--------------");
}

TEST(LayoutSmoothing, SecondPassReachesStopsNearTheEnd) {
  EXPECT_EQ(smoothed("************---S"), "***************S");
}

TEST(LayoutSmoothing, StopAmongTheTwelveStepsBeforeAGapKeepsIt) {
  EXPECT_EQ(smoothed("*****S******---S-------"), "*****S******---S-------");
}

TEST(LayoutSmoothing, StepsBeforeTheVectorAreNeitherCodingNorStop) {
  EXPECT_EQ(smoothed("*****S------"), "*****S------");
  EXPECT_EQ(smoothed("-----S------------"), "-----S------------");
}

TEST(LayoutSmoothing, SkipsVectorsOfFewerThanSixSteps) {
  for (const char* frame : {"", "*", "*-*-*", "--S--"}) EXPECT_EQ(smoothed(frame), frame);
}

}  // namespace
}  // namespace velto
