#include "core/letter_codes.h"

#include <gtest/gtest.h>

#include <string>

#include "core/base_code.h"

namespace velto {
namespace {

using Codes = std::vector<short>;

Codes coded(std::string_view bases, Letters letters) {
  Codes codes = {9};
  codeLetters(bases, letters, codes);
  return codes;
}

TEST(LetterCodes, FoldCaseAndUracilUnlessExact) {
  EXPECT_EQ(coded("ATGCatgcUuN-", Letters::kFolded),
            (Codes{0, 1, 2, 3, 0, 1, 2, 3, 1, 1, kUnknownBase, kUnknownBase}));
  EXPECT_EQ(coded("ATGCaU", Letters::kExact), (Codes{0, 1, 2, 3, kUnknownBase, kUnknownBase}));
}

TEST(LetterCodes, CountWhatIsNoBase) {
  EXPECT_EQ(countUnknown("ACGTacgtUN*", Letters::kFolded), 2);
  EXPECT_EQ(countUnknown("ACGTacgtUN*", Letters::kExact), 7);
  EXPECT_EQ(countUnknown("", Letters::kExact), 0);
}

TEST(LetterCodes, LettersWithoutACodeAreUnknown) {
  for (const Letters letters : {Letters::kExact, Letters::kFolded}) {
    for (int byte = 0; byte < 256; ++byte) {
      const std::string letter(1, static_cast<char>(byte));
      const int unknown = coded(letter, letters).front() == kUnknownBase ? 1 : 0;
      EXPECT_EQ(countUnknown(letter, letters), unknown) << byte;
      EXPECT_EQ(countUnknown(std::string(100, letter[0]), letters), 100 * unknown) << byte;
    }
  }
}

TEST(LetterCodes, TurnToTheOtherStrand) {
  Codes codes = coded("AACGN", Letters::kExact);
  reverseComplement(codes);
  EXPECT_EQ(codes, coded("NCGTT", Letters::kExact));
}

TEST(LetterCodes, GcCountsUnknownBasesAsOthers) {
  EXPECT_EQ(gcPercent(coded("ACGN", Letters::kExact)), 50.0);
  EXPECT_EQ(gcPercent(Codes{}), 0.0);
}

}  // namespace
}  // namespace velto
