#include "batch/repeated_names.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

TEST(RepeatedNames, TellsTheFirstRepeatOnly) {
  RepeatedNames names;
  EXPECT_FALSE(names.isFirstRepeat("a"));
  EXPECT_FALSE(names.isFirstRepeat(""));
  EXPECT_FALSE(names.isFirstRepeat("b"));
  EXPECT_TRUE(names.isFirstRepeat("a"));
  EXPECT_FALSE(names.isFirstRepeat("a"));
  EXPECT_FALSE(names.isFirstRepeat("b"));
}

TEST(RepeatedNames, FindsARepeatAmongManyNames) {
  RepeatedNames names;
  for (int i = 0; i < 300000; ++i) ASSERT_FALSE(names.isFirstRepeat("read/" + std::to_string(i)));
  EXPECT_TRUE(names.isFirstRepeat("read/123456"));
}

}  // namespace
}  // namespace velto
