#include "batch/repeated_names.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

TEST(RepeatedNames, AreThoseGivenBefore) {
  RepeatedNames names;
  EXPECT_FALSE(names.isRepeat("a"));
  EXPECT_FALSE(names.isRepeat(""));
  EXPECT_FALSE(names.isRepeat("b"));
  EXPECT_TRUE(names.isRepeat("a"));
  EXPECT_TRUE(names.isRepeat("a"));
  EXPECT_FALSE(names.isRepeat("c"));
  EXPECT_TRUE(names.isRepeat("c"));
}

TEST(RepeatedNames, AreFoundAmongManyNames) {
  RepeatedNames names;
  for (int i = 0; i < 300000; ++i) ASSERT_FALSE(names.isRepeat("read/" + std::to_string(i)));
  EXPECT_TRUE(names.isRepeat("read/0"));
  EXPECT_TRUE(names.isRepeat("read/299999"));
}

TEST(RepeatedNames, BeyondTheFirstFourMillionAreComparedWithThoseOnly) {
  RepeatedNames names;
  for (int i = 0; i < (1 << 22); ++i) ASSERT_FALSE(names.isRepeat(std::to_string(i)));
  EXPECT_FALSE(names.isRepeat("late"));
  EXPECT_FALSE(names.isRepeat("late"));
  EXPECT_TRUE(names.isRepeat("4194303"));
}

}  // namespace
}  // namespace velto
