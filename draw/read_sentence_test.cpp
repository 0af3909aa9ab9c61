#include "draw/read_sentence.h"

#include <gtest/gtest.h>

#include "draw/test_read.h"

namespace velto {
namespace {

using Kind = Frameshift::Kind;
using Status = Prediction::Status;
using test::KnownRead;

std::string sentenceWith(const std::vector<Frameshift>& shifts) {
  KnownRead read = test::codingRead();
  read.prediction.frameshifts = shifts;
  const std::string sentence = callSentence(read.drawn());
  return sentence.substr(sentence.find("; ") + 2);
}

TEST(ReadSentence, TellsRegionProteinAndFrameshifts) {
  EXPECT_EQ(callSentence(test::codingRead().drawn()),
            "Bases 7 to 51 code for a protein of 14 amino acids; one base is missing before 21 and "
            "one is extra at 36.");
}

TEST(ReadSentence, ARegionThatReachesBeyondTheReadEndsWithIt) {
  KnownRead read = test::codingRead();
  read.prediction.stop = 61;
  EXPECT_EQ(callSentence(read.drawn()).substr(0, 14), "Bases 7 to 60 ");
}

TEST(ReadSentence, FrameshiftsAreListedByKind) {
  EXPECT_EQ(sentenceWith({}), "no base is missing or extra.");
  EXPECT_EQ(sentenceWith({{Kind::kDeletion, 9}}), "one base is missing before 10.");
  EXPECT_EQ(sentenceWith({{Kind::kInsertion, 9}}), "one base is extra at 10.");
  EXPECT_EQ(sentenceWith({{Kind::kInsertion, 9}, {Kind::kInsertion, 11}, {Kind::kInsertion, 12}}),
            "three bases are extra at 10, 12 and 13.");
  EXPECT_EQ(sentenceWith({{Kind::kDeletion, 9}, {Kind::kDeletion, 11}, {Kind::kInsertion, 12}}),
            "two bases are missing before 10 and 12, and one is extra at 13.");
}

TEST(ReadSentence, ManyFrameshiftsAreCountedOnly) {
  const std::vector<Frameshift> seven(7, {Kind::kDeletion, 9});
  EXPECT_EQ(sentenceWith(seven), "7 bases are missing.");
}

TEST(ReadSentence, ReadsWithoutARegionHaveASentenceToo) {
  EXPECT_EQ(callSentence(test::otherRead(Status::kNoncoding, 60).drawn()),
            "No coding region was found in the read's 60 bases.");
  EXPECT_EQ(callSentence(test::otherRead(Status::kShort, 1).drawn()),
            "The read has 1 base; reads of fewer than 30 are not predicted.");
  EXPECT_EQ(callSentence(test::otherRead(Status::kEmpty, 0).drawn()), "The read has no bases.");
}

TEST(ReadSentence, FurtherSentencesTellStrandProbabilityAndInnerStops) {
  KnownRead read = test::codingRead();
  EXPECT_TRUE(furtherSentences(read.drawn()).empty());
  read.prediction.strand = Strand::kMinus;
  read.prediction.probability = 0.98;
  read.protein = "M*PP*PPPPPPPPP*";
  const std::vector<std::string> wanted = {
      "It lies on the reverse strand, along which all positions count.",
      "The probability that the read codes is 98\u00A0%.", "The protein has 2 stop codons inside."};
  EXPECT_EQ(furtherSentences(read.drawn()), wanted);
}

TEST(ReadSentence, NoPercentageIsRoundedToCertainty) {
  EXPECT_EQ(percentText(0.0), "under 1\u00A0%");
  EXPECT_EQ(percentText(0.014), "1\u00A0%");
  EXPECT_EQ(percentText(0.99), "99\u00A0%");
  EXPECT_EQ(percentText(0.9901), "over 99\u00A0%");
}

TEST(ReadSentence, AFrameshiftIsTold) {
  EXPECT_EQ(shiftSentence({Kind::kInsertion, 35, 0.2}),
            "One base is extra at 36, confidence 20\u00A0%.");
  EXPECT_EQ(shiftSentence({Kind::kDeletion, 20}), "One base is missing before 21.");
}

}  // namespace
}  // namespace velto
