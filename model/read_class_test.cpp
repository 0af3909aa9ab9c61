#include "model/read_class.h"

#include <gtest/gtest.h>

#include <set>

namespace velto {
namespace {

TEST(ReadClass, ReadOf599BasesUsesTheShortWindow) {
  EXPECT_EQ(classifyRead(599, 50.0).windowWidth, 96);
  EXPECT_EQ(classifyRead(599, 50.0).parameterPath("m"), "m/paramater32/paramL0G1-ex0.txt");
}

TEST(ReadClass, ReadOf600BasesUsesTheLongWindow) {
  EXPECT_EQ(classifyRead(600, 50.0).windowWidth, 196);
  EXPECT_EQ(classifyRead(600, 50.0).parameterPath("m"), "m/paramater/paramL0G1-ex0.txt");
}

TEST(ReadClass, LengthClassesChangeAt1000And3001Bases) {
  EXPECT_EQ(classifyRead(30, 50.0).lengthId, 0);
  EXPECT_EQ(classifyRead(999, 50.0).lengthId, 0);
  EXPECT_EQ(classifyRead(1000, 50.0).lengthId, 1);
  EXPECT_EQ(classifyRead(3000, 50.0).lengthId, 1);
  EXPECT_EQ(classifyRead(3001, 50.0).lengthId, 2);
}

// Percentages as the reader computes them, from whole bases of a read of 100.
int gcIdOf(int gcBases) { return classifyRead(100, gcBases * 100.0 / 100).gcId; }

TEST(ReadClass, GcBounds43And51BelongToTheClassAboveAnd57ToTheClassBelow) {
  EXPECT_EQ(gcIdOf(42), 0);
  EXPECT_EQ(gcIdOf(43), 1);
  EXPECT_EQ(gcIdOf(50), 1);
  EXPECT_EQ(gcIdOf(51), 2);
  EXPECT_EQ(gcIdOf(57), 2);
  EXPECT_EQ(gcIdOf(58), 3);
}

TEST(ReadClass, ReadOf800BasesAnd45PercentNamesItsTwoFiles) {
  const ReadClass c = classifyRead(800, 45.0);
  EXPECT_EQ(c.parameterPath("./param-human"), "./param-human/paramater/paramL0G1-ex0.txt");
  EXPECT_EQ(c.matrixPath("./param-human"), "./param-human/paramater/matrixL0G1-ex0.txt");
}

TEST(ReadClass, DirectoryNameIsConcatenatedAsItIs) {
  EXPECT_EQ(classifyRead(5000, 60.0).matrixPath("m/"), "m//paramater/matrixL2G3-ex0.txt");
  EXPECT_EQ(classifyRead(5000, 60.0).matrixPath(""), "/paramater/matrixL2G3-ex0.txt");
}

TEST(ReadClass, ShortNameTellsWindowLengthAndGc) {
  EXPECT_EQ(classifyRead(400, 45.0).name(), "96L0G1");
  EXPECT_EQ(classifyRead(2000, 20.0).name(), "196L1G0");
}

TEST(ReadClass, IndexAndClassAreInverse) {
  std::set<std::string> names;
  for (int i = 0; i < kReadClasses; ++i) {
    EXPECT_EQ(readClassIndex(readClassAt(i)), i);
    names.insert(readClassAt(i).parameterPath("d"));
  }
  EXPECT_EQ(names.size(), 16U);
}

TEST(ReadClass, EveryReadHasOneOfTheSixteenClasses) {
  for (const int length : {1, 599, 600, 999, 1000, 3000, 3001}) {
    for (const double gc : {0.0, 43.0, 51.0, 57.0, 100.0}) {
      const ReadClass c = classifyRead(length, gc);
      EXPECT_EQ(readClassAt(readClassIndex(c)).parameterPath("d"), c.parameterPath("d"));
    }
  }
}

}  // namespace
}  // namespace velto
