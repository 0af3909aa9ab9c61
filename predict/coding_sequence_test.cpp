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

// GTG, then ATA with an inserted base before its last one, or before its second one.
TEST(CodingSequenceOfTheHeader, LeavesOutAnInsertedBaseWithinACodon) {
  for (const int inserted : {6, 5}) {
    Prediction prediction = nineCodingBases();
    prediction.frameshifts = {{Frameshift::Kind::kInsertion, inserted}};
    const CodingSequence coding =
        codingSequence(prediction, inserted == 6 ? "CGTGATCATGA" : "CGTGACTATGA");
    EXPECT_EQ(coding.bases, "GTGATA");
    ASSERT_EQ(coding.kept.size(), 2U);
    EXPECT_EQ(coding.kept[0].begin, 1);
    EXPECT_EQ(coding.kept[0].end, inserted);
    EXPECT_EQ(coding.kept[1].begin, inserted + 1);
    EXPECT_EQ(coding.kept[1].end, 8);
    EXPECT_EQ(coding.kept[1].phase, 7 - inserted);
    EXPECT_EQ(coding.intact.size(), 2U);
  }
}

// GTG, A-A without its lost base, TGA.
TEST(CodingSequenceOfTheHeader, HasNoCodonThatLostABaseAmongTheIntactOnes) {
  Prediction prediction = nineCodingBases();
  prediction.stop = 8;
  prediction.frameshifts = {{Frameshift::Kind::kDeletion, 5}};
  const CodingSequence coding = codingSequence(prediction, "CGTGAATGAC");
  EXPECT_EQ(coding.bases, "GTGANATGA");
  EXPECT_EQ(coding.kept.size(), 1U);
  ASSERT_EQ(coding.intact.size(), 2U);
  EXPECT_EQ(coding.intact[0].end, 4);
  EXPECT_EQ(coding.intact[1].begin, 6);
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
