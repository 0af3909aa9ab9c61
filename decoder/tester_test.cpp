#include "decoder/tester.h"

#include <gtest/gtest.h>

#include "tests/support/reads.h"

namespace velto {
namespace {

class TesterTest : public testing::Test {
 protected:
  velto::Test tester_;
};

TEST_F(TesterTest, FreshOneOwnsThreeEmptyLists) {
  EXPECT_TRUE(tester_.smplList->empty());
  EXPECT_TRUE(tester_.layoutList->empty());
  EXPECT_TRUE(tester_.seqList->empty());
}

TEST_F(TesterTest, ClassifiesASampleByTheProcessWideModel) {
  ModelTables tables;
  test::addConstant(tables, 0.5);
  test::useAsProcessModel(tables, 96);
  double score = 0.0;
  EXPECT_EQ(tester_.CHKSmpl(smplTestData(), score), -10);
  EXPECT_EQ(score, 0.5);
  EXPECT_EQ(tester_.CHKSmpl(smplTestData()), -10);
  EXPECT_EQ(tester_.CHKSmpl(smplData(), score), -10);
  test::useAsProcessModel(ModelTables(), 96);
  EXPECT_EQ(tester_.CHKSmpl(smplTestData(), score), -1);
  EXPECT_EQ(score, 0.0);
}

TEST_F(TesterTest, MatrixRewritesTheLeadingClassesAndTraceBackKeepsTheEndStep) {
  test::useAsProcessModel(ModelTables(), 96);
  layout lay;
  for (int f = 0; f < 3; ++f) {
    lay.cls[f] = std::vector<int>(16, kLeadingFiller);
    lay.cls[f].resize(20, kCodingWindow);
    lay.met[f] = std::vector<int>(20, kOtherCodon);
  }
  lay.cls[1][18] = kStopCodon;
  std::vector<dpNode> nodes(60);
  tester_.MakeDPMatrix(nodes.data(), lay);
  EXPECT_EQ(lay.cls[0][0], kCodingWindow);
  std::vector<int> path;
  EXPECT_EQ(tester_.TraceBack(nodes.data(), 20, path), -10.0);
  EXPECT_EQ(tester_.endStep, 18);
  EXPECT_EQ(path.size(), 20U);
}

TEST_F(TesterTest, PlacesShiftsUpToItsEndStep) {
  test::useAsProcessModel(ModelTables(), 96);
  std::vector<short> codes = test::baseCodes(test::repeated("GCC", 80));
  std::vector<int> path(44, 0);
  path.resize(74, 1);
  path.resize(80, -1);
  tester_.endStep = 73;
  tester_.FocusErrPlace(codes.data(), 240, path);
  EXPECT_EQ(path[28], 0);
  EXPECT_EQ(path[29], 1);
}

TEST_F(TesterTest, ShowsCodesAndStates) {
  EXPECT_EQ(tester_.ConvertLayout(-21), 'M');
  EXPECT_EQ(tester_.ConvertLayout(7), '?');
  EXPECT_EQ(tester_.ChkState(-100), 3);
  EXPECT_EQ(tester_.ChkState(0), -1);
}

TEST(ErrorOrder, LooksAtPositionsOnly) {
  EXPECT_TRUE(errComp({3, 1}, {4, 0}));
  EXPECT_FALSE(errComp({4, 0}, {3, 1}));
  EXPECT_FALSE(errComp({4, 0}, {4, 1}));
  EXPECT_FALSE(errComp({4, 1}, {4, 0}));
}

}  // namespace
}  // namespace velto
