// The predictor object: its states, and whole predictions with models made for the purpose.
#include "driver/web_predict.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "model/read_class.h"
#include "tests/support/model_directory.h"
#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

using test::repeated;

TEST(WebPredict, FreshObjectIsEmpty) {
  const WebPredict predictor;
  EXPECT_EQ(predictor.seqLength, 0);
  EXPECT_EQ(predictor.gcPressure, 0.0);
  EXPECT_EQ(predictor.fastaHeader, "");
  EXPECT_TRUE(predictor.smplList->empty());
  EXPECT_TRUE(predictor.layoutList->empty());
  EXPECT_TRUE(predictor.seqList->empty());
  EXPECT_EQ(predictor.frameAt(0), -1);
}

// Ala is coding, everything else is not: more than eight of the window's codons are GCC.
ModelTables alaModel() {
  ModelTables tables;
  test::addAcid(tables, 0, 1.0, 1, 8);
  test::setCodingMatrix(tables);
  return tables;
}

void predict(WebPredict& predictor, const std::string& letters, const ModelTables& tables) {
  test::useAsProcessModel(tables, classifyRead(static_cast<int>(letters.size()), 50.0).windowWidth);
  predictor.setRead(test::baseCodes(letters));
  predictor.predictRead();
}

TEST(Prediction, FindsARegionFromItsAtgToItsStop) {
  // ATG and 79 GCC in frame 0 from base 0, then a stop, then 33 codons without Ala.
  const std::string letters = "ATG" + repeated("GCC", 79) + "TAA" + repeated("AAC", 33);
  WebPredict predictor;
  predict(predictor, letters, alaModel());
  // 2 for the ATG start, 40 into coding, 1 for each of 78 further steps, 40 into the stop.
  EXPECT_EQ(predictor.dpScore, 2.0 + 40.0 + 78.0 + 40.0);
  EXPECT_EQ(predictor.lay.start, 0);
  EXPECT_EQ(predictor.lay.stop, 3 * 80 + 2);
  EXPECT_EQ(predictor.frameAt(0), 0);
  EXPECT_EQ(predictor.frameAt(80), 0);
  EXPECT_EQ(predictor.frameAt(81), -1);
  EXPECT_EQ(predictor.arrayLen, predictor.seqLength);
}

TEST(Prediction, WithoutACodingPathNothingIsFound) {
  WebPredict predictor;
  predict(predictor, repeated("AAC", 120), alaModel());
  EXPECT_LE(predictor.dpScore, -9.0);
  EXPECT_EQ(predictor.lay.start, -1);
  EXPECT_EQ(predictor.lay.stop, -1);
  for (int k = 0; k < 120; ++k) EXPECT_EQ(predictor.frameAt(k), -1);
}

TEST(Prediction, ReadsTooShortForAnyWindowFindNothing) {
  for (const int length : {30, 48, 53, 54, 60, 96, 97, 98, 99}) {
    WebPredict predictor;
    predict(predictor, repeated("GCC", 40).substr(0, static_cast<size_t>(length)), alaModel());
    EXPECT_EQ(predictor.lay.start, -1) << length;
    EXPECT_EQ(predictor.frameAt(length / 3), -1) << length;
  }
}

TEST(Prediction, FrameArrayCoversEveryStepThatTheReportsRead) {
  WebPredict predictor;
  predictor.setRead(test::baseCodes(repeated("A", 31)));
  predictor.dpScore = 1.0;
  predictor.setPath({0, 1});
  EXPECT_EQ(predictor.frameAt(1), 1);
  EXPECT_EQ(predictor.frameAt(2), -1);
  EXPECT_EQ(predictor.frameAt(10), -1);
  EXPECT_EQ(predictor.frameAt(-1), -1);
  EXPECT_EQ(predictor.frameAt(1000), -1);
}

TEST(Prediction, ScoreOfMinusNineTakesThePathAway) {
  WebPredict predictor;
  predictor.setRead(test::baseCodes(repeated("A", 30)));
  predictor.dpScore = -9.0;
  predictor.setPath({0, 0, 0});
  EXPECT_EQ(predictor.frameAt(0), -1);
  predictor.dpScore = -8.9;
  predictor.setPath({0, 0, 0});
  EXPECT_EQ(predictor.frameAt(0), 0);
}

TEST(GetResult, LoadsTheModelOfTheReadsClassAndSetsTheRunGlobals) {
  const test::TempDir directory;
  test::writeModelDirectory(directory.file("m"), alaModel());
  std::string input = directory.file("in.fa");
  std::string model = directory.file("m");
  test::writeFile(input, ">read\nATG" + repeated("GCC", 250) + "TAA" + repeated("AAC", 100) + "\n");
  processModel = ModelTables();
  WebPredict predictor;
  predictor.inputFile = input.data();
  predictor.paramDir = model.data();
  testing::internal::CaptureStderr();
  EXPECT_EQ(predictor.GetResult(), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Now Calculating...\n\n");
  EXPECT_EQ(GCID, 3);      // 1 + 750 + 100 of 1056 bases are G or C
  EXPECT_EQ(LENGTHID, 1);  // 1056 bases
  EXPECT_EQ(WINDOW_WIDTH, 196);
  EXPECT_EQ(READ_ROUND, 500);
  EXPECT_EQ(fh.size(), 500U);
  EXPECT_EQ(predictor.lay.start, 0);
  EXPECT_EQ(predictor.lay.stop, 3 * 251 + 2);
}

TEST(GetResult, MissingModelFileEndsTheProcess) {
  const test::TempDir directory;
  std::string input = directory.file("in.fa");
  std::string model = directory.file("none");
  test::writeFile(input, repeated("GCC", 20));
  WebPredict predictor;
  predictor.inputFile = input.data();
  predictor.paramDir = model.data();
  EXPECT_EXIT(predictor.GetResult(), testing::ExitedWithCode(1), "^Now Calculating...\n\n$");
}

}  // namespace
}  // namespace velto
