#include "core/score_rows.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

// Long enough that rows are handed over several times; the longest texts that there are.
TEST(ScoreRows, OfManyBasesAreAllThere) {
  constexpr int kBases = 1000;
  const std::vector<short> codes(kBases, 3);
  const std::vector<double> scores[3] = {std::vector<double>(kBases, -1.23456e-105),
                                         std::vector<double>(kBases, -10.0),
                                         std::vector<double>(kBases, 0.5)};
  std::string rows = "before\n";
  appendScoreRows(codes.data(), kBases, scores, rows);
  std::string wanted = "before\n";
  for (int i = 0; i < kBases; ++i) wanted += "C,-1.23456e-105,-10,0.5\n";
  EXPECT_EQ(rows, wanted);
}

TEST(ScoreRows, ChangeWithTheScoreBaseByBase) {
  const std::vector<short> codes = {0, 1, 2, -1};
  const std::vector<double> scores[3] = {{0.0, -0.0, -0.0, 1.0}, {1, 2, 2, 1}, {0, 0, 0, 0}};
  std::string rows;
  appendScoreRows(codes.data(), 4, scores, rows);
  EXPECT_EQ(rows, "A,0,1,0\nT,-0,2,0\nG,-0,2,0\nn,1,1,0\n");
}

}  // namespace
}  // namespace velto
