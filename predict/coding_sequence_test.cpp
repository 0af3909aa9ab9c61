// Coding sequences as the installed header gives them; their parts are tested with the formats.
#include <gtest/gtest.h>

#include "velto/velto.h"

namespace velto {
namespace {

// GTG ATA TGA: code 2 starts proteins with the first two and reads the last as tryptophan, where
// code 1 starts with neither and stops.
constexpr const char* kLetters = "CGTGATATGAC";

Prediction nineCodingBases() {
  Prediction prediction;
  prediction.status = Prediction::Status::kCoding;
  prediction.length = 11;
  prediction.start = 1;
  prediction.stop = 9;
  return prediction;
}

TEST(CodingSequenceOfTheHeader, IsByTheStandardCodeUnlessAskedOtherwise) {
  const CodingSequence coding = codingSequence(nineCodingBases(), kLetters);
  EXPECT_EQ(coding.bases, "GTGATATGA");
  EXPECT_EQ(coding.protein, "VI*");
  EXPECT_EQ(coding.type, CodingType::kNoStart);
}

TEST(CodingSequenceOfTheHeader, TakesTheNumberOfAGeneticCode) {
  const CodingSequence coding = codingSequence(nineCodingBases(), kLetters, 2);
  EXPECT_EQ(coding.protein, "MMW");
  EXPECT_EQ(coding.type, CodingType::kNoStop);
}

TEST(CodingSequenceOfTheHeader, RefusesANumberThatIsNotInTheList) {
  EXPECT_THROW(codingSequence(nineCodingBases(), kLetters, 7), std::invalid_argument);
}

TEST(CodingSequenceOfTheHeader, IsEmptyUnlessTheReadCodes) {
  EXPECT_EQ(codingSequence(Prediction{}, kLetters).bases, "");
}

TEST(Names, OfStatusesAndTypes) {
  EXPECT_STREQ(nameOf(Prediction::Status::kNoncoding), "noncoding");
  EXPECT_STREQ(nameOf(CodingType::kNoStart), "5prime_partial");
}

}  // namespace
}  // namespace velto
