#include "draw/label_rows.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

TEST(LabelRows, LabelsApartShareTheLowestRow) {
  std::vector<Label> labels = {{100, 20, false, 2}, {50, 50, false, 2}};
  EXPECT_EQ(placeLabels(labels), 1);
  EXPECT_EQ(labels[0].row, 0);
  EXPECT_EQ(labels[1].row, 0);
}

TEST(LabelRows, ALabelOverAPoleGoesAboveIt) {
  std::vector<Label> labels = {{100, 20, false, 2}, {90, 20, false, 2}};
  EXPECT_EQ(placeLabels(labels), 2);
  EXPECT_EQ(labels[0].row, 0);
  EXPECT_EQ(labels[1].row, 1);
}

TEST(LabelRows, NoPoleReachesThroughALabelPlacedBefore) {
  // The second pole would cross the first label in every row.
  std::vector<Label> labels = {{90, 20, false, 3}, {100, 20, false, 3}};
  EXPECT_EQ(placeLabels(labels), 1);
  EXPECT_EQ(labels[1].row, -1);
}

TEST(LabelRows, ALeftwardLabelLiesLeftOfItsPole) {
  std::vector<Label> labels = {{100, 20, true, 2}, {85, 10, true, 2}, {70, 9, false, 2}};
  EXPECT_DOUBLE_EQ(labels[0].left(), 80);
  EXPECT_DOUBLE_EQ(labels[0].right(), 100);
  placeLabels(labels);
  EXPECT_EQ(labels[1].row, -1);  // its pole would cross the first label
  EXPECT_EQ(labels[2].row, 0);
}

TEST(LabelRows, ALabelWithoutARowLeftIsNotPlaced) {
  std::vector<Label> labels = {{100, 20, false, 1}, {90, 20, false, 1}, {10, 20, false, 1}};
  EXPECT_EQ(placeLabels(labels), 1);
  EXPECT_EQ(labels[1].row, -1);
  EXPECT_EQ(labels[2].row, 0);
}

}  // namespace
}  // namespace velto
