#include "decoder/layout.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

TEST(Layout, DefaultOneCopiedIntoAListHasElevenEmptyVectors) {
  std::vector<layout> list;
  list.push_back(layout());
  const layout lay = list[0];
  for (int f = 0; f < 3; ++f) {
    EXPECT_TRUE(lay.met[f].empty());
    EXPECT_TRUE(lay.crr[f].empty());
    EXPECT_TRUE(lay.cls[f].empty());
  }
  EXPECT_TRUE(lay.errMark.empty());
  EXPECT_TRUE(lay.rfm.empty());
  EXPECT_EQ(lay.start, 0);
  EXPECT_EQ(lay.stop, 0);
}

TEST(Layout, CopiesAreDeep) {
  layout lay;
  lay.cls[1] = {-10, -1};
  lay.stop = 7;
  layout copy = lay;
  copy.cls[1][0] = 5;
  EXPECT_EQ(lay.cls[1][0], -10);
  lay = copy;
  EXPECT_EQ(lay.cls[1][0], 5);
  EXPECT_EQ(lay.stop, 7);
}

TEST(LayoutSymbol, ShowsEveryCodeUnderItsCharacter) {
  EXPECT_EQ(layoutSymbol(-21), 'M');
  EXPECT_EQ(layoutSymbol(-14), '.');
  EXPECT_EQ(layoutSymbol(-10), '*');
  EXPECT_EQ(layoutSymbol(-1), '-');
  EXPECT_EQ(layoutSymbol(-22), '<');
  EXPECT_EQ(layoutSymbol(-100), 'S');
  EXPECT_EQ(layoutSymbol(-1000), '=');
  EXPECT_EQ(layoutSymbol(-20), 'F');
  EXPECT_EQ(layoutSymbol(-15), '!');
  EXPECT_EQ(layoutSymbol(-23), '>');
  EXPECT_EQ(layoutSymbol(0), '0');
  EXPECT_EQ(layoutSymbol(1), '1');
  EXPECT_EQ(layoutSymbol(2), '2');
}

TEST(LayoutSymbol, ShowsAQuestionMarkForWhatIsNoCode) {
  for (const int code : {7, -2, 3, 100, -999}) EXPECT_EQ(layoutSymbol(code), '?') << code;
}

TEST(DecodingState, ExistsForFourClassesOnly) {
  EXPECT_EQ(decodingState(-10), 0);
  EXPECT_EQ(decodingState(-1), 1);
  EXPECT_EQ(decodingState(-22), 2);
  EXPECT_EQ(decodingState(-100), 3);
  for (const int code : {0, 1, -1000, -20, -21, -14}) EXPECT_EQ(decodingState(code), -1) << code;
}

}  // namespace
}  // namespace velto
