#include "training/layout_accuracy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <sstream>

#include "decoder/tester.h"

namespace velto {
namespace {

constexpr int kC = kCodingWindow, kN = kNonCodingWindow, kS = kStopCodon;

std::string lineOf(const std::vector<layout>& layouts) {
  std::ostringstream out;
  writeAccuracy(out, layoutAccuracy(layouts));
  return out.str();
}

TEST(LayoutAccuracy, CountsOverAllFramesAndLayouts) {
  layout lay;
  lay.crr[0] = {kC, kC, kN, kN};
  lay.cls[0] = {kC, kN, kN, kN};
  lay.crr[2] = {kC, kN};
  lay.cls[2] = {kC, kC};
  const LayoutAccuracy a = layoutAccuracy({lay, lay});
  EXPECT_EQ(a.coding, 6);
  EXPECT_EQ(a.codingFound, 4);
  EXPECT_EQ(a.nonCoding, 6);
  EXPECT_EQ(a.nonCodingFound, 4);
  // TP 4, TN 4, FN 2, FP 2: (16 - 4) / sqrt(6 6 6 6) = 1/3.
  EXPECT_EQ(lineOf({lay, lay}), "sensitivity0.666667:specifisity0.666667:cc 0.333333\n");
}

TEST(LayoutAccuracy, KnownCodingBeyondThePredictionCountsAsMissed) {
  layout lay;
  lay.crr[0] = {kC, kC, kN, kN};
  lay.cls[0] = {kC};
  const LayoutAccuracy a = layoutAccuracy({lay});
  EXPECT_EQ(a.coding, 2);
  EXPECT_EQ(a.codingFound, 1);
  EXPECT_EQ(a.nonCoding, 0);  // the prediction does not reach the known non-coding steps
}

TEST(LayoutAccuracy, MissedTimesFalseIsAProductOfInts) {
  // FN = FP = 65536: their product, 2 to the 32, is 0 in an int.
  LayoutAccuracy a;
  a.coding = a.nonCoding = 65537;
  a.codingFound = a.nonCodingFound = 1;
  EXPECT_NEAR(a.correlation(), 1.0 / 65537 / 65537, 1e-20);
}

TEST(LayoutAccuracy, OtherCodesAreNeitherFoundNorKnown) {
  layout lay;
  lay.crr[0] = {kC, kN, kS};
  lay.cls[0] = {kS, kS, kC};
  const LayoutAccuracy a = layoutAccuracy({lay});
  EXPECT_EQ(a.codingFound + a.nonCodingFound, 0);
  EXPECT_EQ(a.coding + a.nonCoding, 2);
}

TEST(LayoutAccuracy, WithoutKnownMarksIsNotANumber) {
  layout lay;
  lay.cls[0] = {kC, kN};
  const LayoutAccuracy a = layoutAccuracy({lay});
  EXPECT_TRUE(std::isnan(a.sensitivity()));
  EXPECT_TRUE(std::isnan(a.specificity()));
  EXPECT_TRUE(std::isnan(a.correlation()));
  EXPECT_NE(lineOf({lay}).find("nan:cc"), std::string::npos);
}

TEST(ChkLayout, PrintsInTheConsolesPrecision) {
  velto::Test tester;
  layout lay;
  lay.crr[0] = {kC, kC, kC, kN};
  lay.cls[0] = {kC, kC, kN, kN};
  tester.layoutList->push_back(lay);
  testing::internal::CaptureStdout();
  const auto precision = std::cout.precision(3);
  tester.CHKLayout();
  std::cout.precision(precision);
  // TP 2, TN 1, FN 1, FP 0: 2 / sqrt(3 x 1 x 2 x 2) = 0.57735.
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "sensitivity0.667:specifisity1:cc 0.577\n");
}

}  // namespace
}  // namespace velto
