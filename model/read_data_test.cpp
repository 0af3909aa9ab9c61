#include "model/read_data.h"

#include <gtest/gtest.h>

#include <map>

#include "core/base_code.h"

namespace velto {
namespace {

// The amino-acid numbers in the order of the base codes A, T, G, C, written out by hand.
constexpr int kLys = 8, kIle = 7, kMet = 10, kTrp = 18, kStp = 20;

TEST(BaseCode, KnowsTheFourUpperCaseLettersOnly) {
  EXPECT_EQ(baseCode('A'), 0);
  EXPECT_EQ(baseCode('T'), 1);
  EXPECT_EQ(baseCode('G'), 2);
  EXPECT_EQ(baseCode('C'), 3);
  for (const char letter : std::string("atgcUNn>1 -")) EXPECT_EQ(baseCode(letter), -1) << letter;
}

TEST(CodonTable, NamesTheStopTryptophanAndStartCodons) {
  EXPECT_EQ(ReadData::CodonTable(1, 2, 0), kStp);  // TGA
  EXPECT_EQ(ReadData::CodonTable(1, 2, 2), kTrp);  // TGG
  EXPECT_EQ(ReadData::CodonTable(0, 1, 2), kMet);  // ATG
  EXPECT_EQ(ReadData::CodonTable(1, 0, 0), kStp);  // TAA
  EXPECT_EQ(ReadData::CodonTable(1, 0, 2), kStp);  // TAG
  EXPECT_EQ(ReadData::CodonTable(0, 0, 0), kLys);  // AAA
  EXPECT_EQ(ReadData::CodonTable(0, 1, 3), kIle);  // ATC
}

TEST(CodonTable, IsTheStandardGeneticCode) {
  // The table as it is usually printed: bases in the order T, C, A, G, third base fastest.
  const std::string letters = "FFLLSSSSYY**CC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG";
  const std::string acids = "ACDEFGHIKLMNPQRSTVWY*";
  const short order[4] = {baseCode('T'), baseCode('C'), baseCode('A'), baseCode('G')};
  for (size_t i = 0; i < 64; ++i) {
    const int acid = ReadData::CodonTable(order[i / 16], order[i / 4 % 4], order[i % 4]);
    ASSERT_GE(acid, 0);
    EXPECT_EQ(acids[static_cast<size_t>(acid)], letters[i]) << i;
  }
}

TEST(CodonTable, ReturnsMinusOneForAnyCodeOutsideTheFourBases) {
  EXPECT_EQ(ReadData::CodonTable(4, 0, 0), -1);
  EXPECT_EQ(ReadData::CodonTable(-1, 0, 0), -1);
  EXPECT_EQ(ReadData::CodonTable(0, 4, 0), -1);
  EXPECT_EQ(ReadData::CodonTable(0, -1, 0), -1);
  EXPECT_EQ(ReadData::CodonTable(0, 0, 4), -1);
  EXPECT_EQ(ReadData::CodonTable(0, 0, -1), -1);
}

TEST(BasicCodonRate, IsOneOverTheNumberOfSynonymousCodons) {
  EXPECT_EQ(ReadData::BasicCodonRate(0, 1, 2), 1.0);                  // ATG, Met
  EXPECT_EQ(ReadData::BasicCodonRate(1, 2, 2), 1.0);                  // TGG, Trp
  EXPECT_EQ(ReadData::BasicCodonRate(0, 0, 0), 0.5);                  // AAA, Lys
  EXPECT_EQ(ReadData::BasicCodonRate(0, 1, 0), 0.3333333333333333);   // ATA, Ile
  EXPECT_EQ(ReadData::BasicCodonRate(1, 2, 0), 0.3333333333333333);   // TGA, stop
  EXPECT_EQ(ReadData::BasicCodonRate(2, 3, 1), 0.25);                 // GCT, Ala
  EXPECT_EQ(ReadData::BasicCodonRate(3, 1, 0), 0.16666666666666666);  // CTA, Leu
}

TEST(BasicCodonRate, OfTheCodonsOfOneAminoAcidAddUpToOne) {
  std::map<int, double> sums;
  for (int i = 0; i < 64; ++i) {
    sums[ReadData::CodonTable(i / 16, i / 4 % 4, i % 4)] +=
        ReadData::BasicCodonRate(i / 16, i / 4 % 4, i % 4);
  }
  EXPECT_EQ(sums.size(), 21U);
  for (const auto& sum : sums) EXPECT_DOUBLE_EQ(sum.second, 1.0) << sum.first;
}

TEST(BasicCodonRate, ReturnsMinusOneForAnyCodeOutsideTheFourBases) {
  EXPECT_EQ(ReadData::BasicCodonRate(4, 0, 0), -1.0);
  EXPECT_EQ(ReadData::BasicCodonRate(-1, 0, 0), -1.0);
  EXPECT_EQ(ReadData::BasicCodonRate(0, 0, 4), -1.0);
}

TEST(OutPutBase, ShowsUnknownCodesAsLowerCaseN) {
  EXPECT_EQ(ReadData::outPutBase(0), 'A');
  EXPECT_EQ(ReadData::outPutBase(1), 'T');
  EXPECT_EQ(ReadData::outPutBase(2), 'G');
  EXPECT_EQ(ReadData::outPutBase(3), 'C');
  EXPECT_EQ(ReadData::outPutBase(-1), 'n');
  EXPECT_EQ(ReadData::outPutBase(4), 'n');
}

TEST(OutPutAcid, NamesTwentyAcidsAndTheStop) {
  EXPECT_EQ(ReadData::outPutAcid(0), "Ala");
  EXPECT_EQ(ReadData::outPutAcid(19), "Tyr");
  EXPECT_EQ(ReadData::outPutAcid(20), "Stp");
}

TEST(OutPutAcid, IsEmptyOutsideTheAlphabet) {
  EXPECT_EQ(ReadData::outPutAcid(21), "");
  EXPECT_EQ(ReadData::outPutAcid(-1), "");
}

}  // namespace
}  // namespace velto
