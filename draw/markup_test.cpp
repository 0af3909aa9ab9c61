#include "draw/markup.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velto {
namespace {

#define REPLACED "\xEF\xBF\xBD"

TEST(Markup, MarkupBecomesEntities) {
  EXPECT_EQ(escaped("<a href=\"x\" title='y'>&amp;"),
            "&lt;a href=&quot;x&quot; title=&#39;y&#39;&gt;&amp;amp;");
}

TEST(Markup, Utf8StaysAsItIs) {
  const std::string text = "\u00E4 \u20AC \U0001F9EC";  // of 2, 3 and 4 bytes
  EXPECT_EQ(escaped(text), text);
}

TEST(Markup, ControlCharactersAreReplaced) {
  EXPECT_EQ(printable(std::string("a\0b\n\t\x1b[31m\x7f", 11)),
            "a" REPLACED "b" REPLACED REPLACED REPLACED "[31m" REPLACED);
  EXPECT_EQ(printable("\xC2\x9B"), REPLACED);  // U+009B, which some terminals obey
}

TEST(Markup, BytesThatAreNotUtf8AreReplacedOneByOne) {
  EXPECT_EQ(printable("\xFF"), REPLACED);
  EXPECT_EQ(printable("a\xC3"), "a" REPLACED);                       // cut off
  EXPECT_EQ(printable("\xC3("), REPLACED "(");                       // no continuation
  EXPECT_EQ(printable("\xC0\xAF"), REPLACED REPLACED);               // overlong '/'
  EXPECT_EQ(printable("\xE0\x80\xBC"), REPLACED REPLACED REPLACED);  // overlong '<'
  EXPECT_EQ(printable("\xED\xA0\x80"), REPLACED REPLACED REPLACED);  // surrogate
  EXPECT_EQ(printable("\xF4\x90\x80\x80"), REPLACED REPLACED REPLACED REPLACED);
}

TEST(Markup, TurnedTextAndNoncharactersAreReplaced) {
  EXPECT_EQ(printable("a\u202Eb"), "a" REPLACED "b");  // right-to-left override
  EXPECT_EQ(printable("\u2066"), REPLACED);
  EXPECT_EQ(printable("\uFFFE"), REPLACED);
  EXPECT_EQ(printable("\u2028"), REPLACED);
}

TEST(Markup, DecimalsAreRoundedAndHaveNoTrailingZeros) {
  EXPECT_EQ(decimal(3.0), "3");
  EXPECT_EQ(decimal(3.25), "3.3");
  EXPECT_EQ(decimal(-0.05), "-0.1");
  EXPECT_EQ(decimal(-0.04), "0");
  EXPECT_EQ(decimal(0.0123, 4), "0.0123");
  EXPECT_EQ(decimal(1200.0, 0), "1200");
  EXPECT_EQ(decimal(std::nan("")), "0");
  EXPECT_EQ(decimal(1e300), "0");
}

TEST(Markup, CountsAreGroupedByThousands) {
  EXPECT_EQ(grouped(999), "999");
  EXPECT_EQ(grouped(1000), "1\u202F000");
  EXPECT_EQ(grouped(-1234567), "-1\u202F234\u202F567");
}

TEST(Markup, AttributesAreEscaped) {
  EXPECT_EQ(attribute("id", "\"><script>"), " id=\"&quot;&gt;&lt;script&gt;\"");
  EXPECT_EQ(attribute("x", 1.25), " x=\"1.3\"");
}

TEST(Markup, CharactersAreCountedNotBytes) { EXPECT_EQ(charactersOf("\u2212a\u20AC"), 3U); }

}  // namespace
}  // namespace velto
