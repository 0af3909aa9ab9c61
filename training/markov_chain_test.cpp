#include "training/markov_chain.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "decoder/tester.h"
#include "model/model_tables.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

constexpr int kC = kCodingWindow, kN = kNonCodingWindow, kX = kNoWindow;

// Three steps in frame 0, coding coding non-coding; nothing is known of the other frames.
layout threeSteps() {
  layout lay;
  lay.cls[0] = {kC, kC, kN};
  lay.cls[1] = lay.cls[2] = {kX, kX, kX};
  lay.rfm = {0, 0, 0};
  return lay;
}

TEST(TransitionRatios, CountThePathFromItsSecondStepOn) {
  // Path: start to coding, coding to non-coding. All steps: coding to coding, coding to non-coding.
  // Off the path: coding to coding 1, coding to non-coding 0; off-path total 2 - 2 = 0.
  const TransitionRatios ratios = transitionRatios({threeSteps()});
  for (int k = 0; k < 16; ++k) {
    const bool seen = k == 4 * 2 + 0 || k == 4 * 0 + 1;
    if (seen) {
      EXPECT_TRUE(std::isnan(ratios.value[k])) << k;  // shares of an off-path total of zero
    } else {
      EXPECT_EQ(ratios.value[k], -1000.0) << k;
    }
  }
}

TEST(TransitionRatios, AreLogRatiosOfTheTwoShares) {
  layout lay = threeSteps();
  lay.cls[1] = {kC, kC, kN};
  // Path as above, total 2. All steps: each of the two steps has four frame pairs, coding to coding
  // 4 and coding to non-coding 4, total 8. Off the path: 4 and 3 of 6.
  const TransitionRatios ratios = transitionRatios({lay});
  EXPECT_EQ(ratios.value[4 * 0 + 1], std::log10(1.0 / 2) - std::log10(3.0 / 6));
  EXPECT_EQ(ratios.value[4 * 2 + 0], std::log10(1.0 / 2) - std::log10(1e-13));
  EXPECT_EQ(ratios.value[4 * 0 + 0], -1000.0);  // seen off the path only
}

TEST(TransitionRatios, StepsOffThePathKeepTheClassBefore) {
  layout lay;
  for (int f = 0; f < 3; ++f) lay.cls[f] = {kC, kC, kN, kN, kN};
  lay.rfm = {-1, 0, 0, -1, 2};
  // Start to non-coding (step 2), non-coding to non-coding (step 4, over the step off the path).
  // All steps: CC 9, CN 9, NN 18, total 36; off the path 34.
  const TransitionRatios ratios = transitionRatios({lay});
  EXPECT_EQ(ratios.value[4 * 2 + 1], std::log10(0.5) - std::log10(1e-13));
  EXPECT_EQ(ratios.value[4 * 1 + 1], std::log10(0.5) - std::log10(17.0 / 34));
}

TEST(TransitionRatios, OfNoLayoutsAreNotNumbers) {
  for (const double value : transitionRatios({}).value) EXPECT_TRUE(std::isnan(value));
}

TEST(TransitionRatios, StepsThatAFrameLacksHaveNoState) {
  layout lay = threeSteps();
  lay.cls[0].pop_back();
  lay.cls[1].clear();
  const TransitionRatios ratios = transitionRatios({lay});
  EXPECT_EQ(ratios.value[4 * 0 + 1], -1000.0);
}

TEST(WriteTransitionRatios, EveryLineIsAPreviousStateAndEndsInAComma) {
  TransitionRatios ratios;
  for (int k = 0; k < 16; ++k) ratios.value[k] = k + 0.123456789;
  std::ostringstream out;
  writeTransitionRatios(out, ratios);
  EXPECT_EQ(out.str(),
            "0.123457,1.12346,2.12346,3.12346,\n4.12346,5.12346,6.12346,7.12346,\n"
            "8.12346,9.12346,10.1235,11.1235,\n12.1235,13.1235,14.1235,15.1235,\n");
}

TEST(MakeMalkovChain, LeavesTheDecodersOrderInMemoryAndTheOtherInTheFile) {
  const test::TempDir directory;
  velto::Test tester;
  layout lay = threeSteps();
  lay.cls[1] = {kC, kC, kN};
  tester.layoutList->push_back(lay);
  tester.MakeMalkovChain(directory.file("m.txt"));
  EXPECT_EQ(malkovChain[4 * 1 + 0], std::log10(1.0 / 2) - std::log10(3.0 / 6));
  EXPECT_EQ(malkovChain[4 * 0 + 1], -1000.0);
  EXPECT_EQ(test::readFile(directory.file("m.txt")).substr(0, 23), "-1000,0,-1000,-1000,\n-1");
}

TEST(MakeMalkovChain, FileThatCannotBeOpenedEndsTheProcess) {
  velto::Test tester;
  const test::TempDir directory;
  EXPECT_EXIT(tester.MakeMalkovChain(directory.file("no/where")), testing::ExitedWithCode(1),
              "can't open .*/no/where\n");
}

}  // namespace
}  // namespace velto
