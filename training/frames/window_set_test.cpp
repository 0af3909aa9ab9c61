#include "training/frames/window_set.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

using Windows = std::vector<WindowSet::Index>;

// Three windows of codons AAA (Lys, 8): four, none, and two with one AAG.
WindowSet lysineWindows() {
  WindowSet set;
  const std::vector<std::vector<short>> reads = {
      {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, {2, 2, 2, 2, 2, 2}, {0, 0, 0, 0, 0, 2, 0, 0, 0}};
  for (const std::vector<short>& bases : reads) {
    smplTestData counts;
    const int length = static_cast<int>(bases.size());
    for (int p = 0; p < length; p += 3) countCodon(counts, bases.data(), length, p);
    set.add(counts, length == 12, static_cast<float>(length));
  }
  set.finish();
  return set;
}

TEST(WindowSet, KeepsLabelsAndWeights) {
  WindowSet set = lysineWindows();
  ASSERT_EQ(set.size(), 3U);
  EXPECT_TRUE(set.coding(0));
  EXPECT_FALSE(set.coding(1));
  EXPECT_EQ(set.weight(2), 9.0F);
  set.scaleWeight(2, 2.0F);
  EXPECT_EQ(set.weight(2), 18.0F);
}

TEST(WindowSet, AnswersYesAboveTheCutOnly) {
  const WindowSet set = lysineWindows();
  EXPECT_EQ(set.yes({8, 0}), (Windows{0, 2}));
  EXPECT_EQ(set.yes({8, 2}), (Windows{0, 2}));
  EXPECT_EQ(set.yes({8, 3}), (Windows{0}));
  // Usage of AAA: all, half where there is no lysine, two thirds.
  EXPECT_EQ(set.yes({kFirstCodonFeature, 0}), (Windows{0, 1, 2}));
  EXPECT_EQ(set.yes({kFirstCodonFeature, 18}), (Windows{0, 2}));
  EXPECT_EQ(set.yes({kFirstCodonFeature, 24}), (Windows{0}));
}

TEST(WindowSet, PairListsAreNestedByCount) {
  const WindowSet set = lysineWindows();
  const int neighbours = pairFeatureIndex(0, 8, 8);  // 3, none and 2 pairs of Lys and Lys
  EXPECT_EQ(set.yes({neighbours, 0}), (Windows{0, 2}));
  EXPECT_EQ(set.yes({neighbours, 1}), (Windows{0, 2}));
  EXPECT_EQ(set.yes({neighbours, 2}), (Windows{0}));
  EXPECT_EQ(set.pairWindows(neighbours - kFirstPairFeature, 2).size(), 1U);
  EXPECT_EQ(set.yes({pairFeatureIndex(0, 5, 5), 0}), (Windows{1}));  // GGG GGG
}

}  // namespace
}  // namespace velto
