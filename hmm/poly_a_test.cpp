#include "hmm/poly_a.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/base_code.h"

namespace velto {
namespace {

// 'n' for hidden bases.
std::string hidden(const std::string& read) {
  std::vector<short> codes;
  for (const char letter : read) codes.push_back(baseCode(letter));
  hidePolyA(codes);
  std::string letters;
  for (const short code : codes) letters += baseLetter(code);
  return letters;
}

std::string times(std::size_t count, char letter) { return std::string(count, letter); }

TEST(PolyA, OfATailAllButTenBasesAtEitherEndAreHidden) {
  const std::string transcript = times(30, 'G');
  EXPECT_EQ(hidden(transcript + times(100, 'A')),
            transcript + times(5, 'A') + times(85, 'n') + times(10, 'A'));
  EXPECT_EQ(hidden(times(100, 'T') + transcript),
            times(10, 'T') + times(85, 'n') + times(5, 'T') + transcript);
}

TEST(PolyA, ReadThatIsNothingElseKeepsTenBasesAtEitherEnd) {
  EXPECT_EQ(hidden(times(30, 'A')), times(10, 'A') + times(10, 'n') + times(10, 'A'));
  EXPECT_EQ(hidden(times(29, 'A')), times(29, 'A'));
  EXPECT_EQ(hidden(""), "");
}

TEST(PolyA, TwentyFiveLikeBasesOfThirtyAreEnough) {
  const std::string before = times(12, 'A') + "GC", behind = times(13, 'A');
  EXPECT_EQ(hidden(before + "GCG" + behind), times(10, 'A') + times(10, 'n') + times(10, 'A'));
  EXPECT_EQ(hidden(before + "GCGC" + times(12, 'A')), before + "GCGC" + times(12, 'A'));
}

TEST(PolyA, BothBasesTogetherAreNoTail) {
  const std::string read = times(20, 'A') + times(20, 'T');
  EXPECT_EQ(hidden(read), read);
}

TEST(PolyA, OtherBasesAreKept) {
  for (const char letter : {'G', 'C'}) EXPECT_EQ(hidden(times(90, letter)), times(90, letter));
  EXPECT_EQ(hidden(times(90, 'N')), times(90, 'n'));
}

}  // namespace
}  // namespace velto
