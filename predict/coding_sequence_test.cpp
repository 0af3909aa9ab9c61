// Coding sequences of predictions made by hand, their parts and proteins.
#include "predict/coding_sequence.h"

#include <gtest/gtest.h>

#include <utility>

namespace velto {
namespace {

// GTG ATA TGA: code 2 starts proteins with the first two and reads the last as tryptophan, where
// code 1 starts with neither and stops.
constexpr const char* kLetters = "CGTGATATGAC";

// A read of `length` bases that codes from `start` to `stop`.
Prediction region(int start, int stop, int length, std::vector<Frameshift> shifts = {}) {
  Prediction prediction;
  prediction.status = Prediction::Status::kCoding;
  prediction.length = length;
  prediction.start = start;
  prediction.stop = stop;
  prediction.frameshifts = std::move(shifts);
  return prediction;
}

Prediction nineCodingBases() { return region(1, 9, 11); }

// A whole read that is one region without errors.
CodingSequence ofRegion(const std::string& letters, int code = 1) {
  const int length = static_cast<int>(letters.size());
  return codingSequence(region(0, length - 1, length), letters, *geneticCode(code));
}

std::vector<std::vector<int>> numbers(const std::vector<CodingPart>& parts) {
  std::vector<std::vector<int>> list;
  for (const CodingPart& part : parts) list.push_back({part.begin, part.end, part.phase});
  return list;
}

using Kind = Frameshift::Kind;
using Parts = std::vector<std::vector<int>>;

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

TEST(CodingSequence, LeavesOutTheInsertedBaseAndMarksTheLostOne) {
  // ATG AAA (T) CCC GG. TAA: an inserted T at 8, a base lost before 14.
  const CodingSequence coding =
      codingSequence(region(2, 16, 19, {{Kind::kInsertion, 8}, {Kind::kDeletion, 14}}),
                     "GGATGAAATCCCGGTAAGG", *geneticCode(1));
  EXPECT_EQ(coding.bases, "ATGAAACCCGGNTAA");
  EXPECT_EQ(numbers(coding.kept), (Parts{{2, 8, 0}, {9, 17, 0}}));
  EXPECT_EQ(numbers(coding.intact), (Parts{{2, 8, 0}, {9, 12, 0}, {14, 17, 0}}));
  EXPECT_EQ(coding.type, CodingType::kComplete);
}

TEST(CodingSequence, ErrorsMayFollowEachOtherAndStandAtTheFirstBase) {
  const Prediction twoInserted = region(0, 7, 8, {{Kind::kInsertion, 3}, {Kind::kInsertion, 4}});
  EXPECT_EQ(codingSequence(twoInserted, "ATGTTCCC", *geneticCode(1)).bases, "ATGCCC");
  const Prediction firstLost = region(0, 4, 5, {{Kind::kDeletion, 0}});
  EXPECT_EQ(codingSequence(firstLost, "TGCCC", *geneticCode(1)).bases, "NTGCCC");
}

TEST(CodingSequence, CodonsThatLostTheirFirstOrMiddleBaseAreInNoPart) {
  // A T G, then (N) C C, then G (N) G, then TAA.
  const Prediction prediction = region(0, 9, 10, {{Kind::kDeletion, 3}, {Kind::kDeletion, 6}});
  const CodingSequence coding = codingSequence(prediction, "ATGCCGGTAA", *geneticCode(1));
  EXPECT_EQ(coding.bases, "ATGNCCGNGTAA");
  EXPECT_EQ(numbers(coding.kept), (Parts{{0, 10, 0}}));
  EXPECT_EQ(numbers(coding.intact), (Parts{{0, 3, 0}, {7, 10, 0}}));
}

TEST(CodingSequence, ABaseInsertedInsideACodonGivesTheNextPartItsPhase) {
  const Prediction prediction = region(0, 6, 7, {{Kind::kInsertion, 4}});
  EXPECT_EQ(numbers(codingSequence(prediction, "ATGCACC", *geneticCode(1)).intact),
            (Parts{{0, 4, 0}, {5, 7, 2}}));
}

TEST(CodingSequence, EndsWithTheLastWholeCodonOfTheRead) {
  const Prediction prediction = region(0, 8, 7);  // two bases behind the read
  const CodingSequence coding = codingSequence(prediction, "ATGCCCG", *geneticCode(1));
  EXPECT_EQ(coding.bases, "ATGCCC");
  EXPECT_EQ(numbers(coding.kept), (Parts{{0, 6, 0}}));
  EXPECT_EQ(coding.type, CodingType::kNoStop);
}

TEST(CodingSequence, TellsWhichEndsAreThere) {
  const Prediction prediction = region(0, 5, 6);
  EXPECT_EQ(codingSequence(prediction, "ATGTGA", *geneticCode(1)).type, CodingType::kComplete);
  EXPECT_EQ(codingSequence(prediction, "CTGTGA", *geneticCode(1)).type, CodingType::kNoStart);
  EXPECT_EQ(codingSequence(prediction, "ATGTGG", *geneticCode(1)).type, CodingType::kNoStop);
  EXPECT_EQ(codingSequence(prediction, "CTGTGG", *geneticCode(1)).type, CodingType::kNeither);
}

TEST(CodingSequence, CountsStopCodonsButTheLastOneOfTheRegion) {
  EXPECT_EQ(ofRegion("ATGTAA").innerStops, 0);
  EXPECT_EQ(ofRegion("ATGTAAATGTGATAG").innerStops, 2);
  EXPECT_EQ(ofRegion("TAAATG").innerStops, 1);
  EXPECT_EQ(ofRegion("ATGCTAACT").innerStops, 0);
}

TEST(CodingSequence, WithInnerStopsIsNeverComplete) {
  EXPECT_EQ(ofRegion("ATGTGATAA").type, CodingType::kInterrupted);
  EXPECT_EQ(ofRegion("CTGTGATAA").type, CodingType::kNoStart);
  EXPECT_EQ(ofRegion("ATGTGATTA").type, CodingType::kNoStop);
  EXPECT_EQ(ofRegion("CTGTGATTA").type, CodingType::kNeither);
}

TEST(CodingSequence, HasTheProteinOfItsCodons) {
  EXPECT_EQ(ofRegion("ATGGCTTGGTAANCCGGN").protein, "MAW*XX");
  EXPECT_EQ(codingSequence(Prediction{}, "ATGTAA", *geneticCode(1)).protein, "");
}

TEST(CodingSequence, FollowsTheGeneticCode) {
  // Vertebrate mitochondria: TGA is W, AGA stops, GTG may begin a protein.
  EXPECT_EQ(ofRegion("GTGTGAAGAGTGAGA", 2).protein, "MW*V*");
  EXPECT_EQ(ofRegion("GTGTGAAGAGTGAGA", 2).type, CodingType::kInterrupted);
  EXPECT_EQ(ofRegion("GTGTGAGTGAGA", 2).type, CodingType::kComplete);
  EXPECT_EQ(ofRegion("GTGTGAGTGAGA", 1).type, CodingType::kNeither);
  EXPECT_EQ(ofRegion("GTGTGAGTGAGA", 1).protein, "V*VR");
  // Condylostoma: TGA is W, but may stop where the region ends.
  EXPECT_EQ(ofRegion("ATGTGATGA", 28).protein, "MW*");
  EXPECT_EQ(ofRegion("ATGTGATGA", 28).innerStops, 0);
  EXPECT_EQ(ofRegion("ATGTGATGA", 28).type, CodingType::kComplete);
}

TEST(Proteins, ShowInnerStopsAsAskedFor) {
  const CodingSequence sequence = ofRegion("ATGTGATAGGCTTAAAAATAA");
  using Texts = std::vector<std::string>;
  EXPECT_EQ(proteins(sequence, InnerStops::kKeep), Texts{"M**A*K*"});
  EXPECT_EQ(proteins(sequence, InnerStops::kX), Texts{"MXXAXK*"});
  EXPECT_EQ(proteins(sequence, InnerStops::kSplit), (Texts{"M", "A", "K*"}));
}

TEST(Proteins, OfASplitSequenceHaveAminoAcids) {
  const auto split = [](const std::string& letters) {
    return proteins(ofRegion(letters), InnerStops::kSplit);
  };
  EXPECT_EQ(split("TAAATG"), std::vector<std::string>{"M"});
  EXPECT_EQ(split("ATGTAATAA"), std::vector<std::string>{"M"});
  EXPECT_EQ(split("TAATAA"), std::vector<std::string>{});
  EXPECT_EQ(split("TAA"), std::vector<std::string>{"*"});
}

TEST(Names, OfStatusesAndTypes) {
  using Status = Prediction::Status;
  EXPECT_STREQ(nameOf(Status::kCoding), "coding");
  EXPECT_STREQ(nameOf(Status::kNoncoding), "noncoding");
  EXPECT_STREQ(nameOf(Status::kShort), "short");
  EXPECT_STREQ(nameOf(Status::kEmpty), "empty");
  EXPECT_STREQ(nameOf(CodingType::kComplete), "complete");
  EXPECT_STREQ(nameOf(CodingType::kInterrupted), "interrupted");
  EXPECT_STREQ(nameOf(CodingType::kNoStart), "5prime_partial");
  EXPECT_STREQ(nameOf(CodingType::kNoStop), "3prime_partial");
  EXPECT_STREQ(nameOf(CodingType::kNeither), "internal");
}

}  // namespace
}  // namespace velto
