#include "core/bounded_text.h"

#include <gtest/gtest.h>

#include <sstream>

namespace velto {
namespace {

std::optional<std::string> readUpTo(const std::string& text, std::size_t most) {
  std::istringstream in(text);
  return textUpTo(in, most);
}

TEST(BoundedText, IsWholeUpToTheBound) {
  EXPECT_EQ(readUpTo("", 3), "");
  EXPECT_EQ(readUpTo("a\nb", 3), "a\nb");
  EXPECT_EQ(readUpTo("abcd", 3), std::nullopt);
}

TEST(BoundedText, MayBeLongerThanOneBlock) {
  const std::string text(200'000, 'x');
  EXPECT_EQ(readUpTo(text, text.size()), text);
  EXPECT_EQ(readUpTo(text, text.size() - 1), std::nullopt);
}

TEST(BoundedText, LeavesWhatIsBeyondTheBoundInTheStream) {
  std::istringstream in("abcdef");
  EXPECT_EQ(textUpTo(in, 3), std::nullopt);
  EXPECT_EQ(in.get(), 'e');  // one byte beyond the bound told that there is more
}

}  // namespace
}  // namespace velto
