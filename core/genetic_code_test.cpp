#include "core/genetic_code.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velto {
namespace {

const GeneticCode& code(int number) { return *geneticCode(number); }

// All codons in the order of the list.
std::vector<std::string> codons() {
  std::vector<std::string> list;
  for (const char a : {'T', 'C', 'A', 'G'}) {
    for (const char b : {'T', 'C', 'A', 'G'}) {
      for (const char c : {'T', 'C', 'A', 'G'}) list.push_back({a, b, c});
    }
  }
  return list;
}

// The codons that differ from the standard code, with their amino acids, as the list describes it.
std::string differences(int number) {
  std::string text;
  for (const std::string& codon : codons()) {
    const char acid = code(number).acidOf(codon);
    if (acid != code(1).acidOf(codon)) text += codon + acid + ' ';
  }
  return text;
}

std::string starts(int number) {
  std::string text;
  for (const std::string& codon : codons()) {
    if (code(number).mayStart(codon)) text += codon + ' ';
  }
  return text;
}

std::string stops(int number) {
  std::string text;
  for (const std::string& codon : codons()) {
    if (code(number).mayStop(codon)) text += codon + ' ';
  }
  return text;
}

TEST(GeneticCode, StandardHasTwentyAminoAcidsAndThreeStopCodons) {
  EXPECT_EQ(code(1).acidOf("ATG"), 'M');
  EXPECT_EQ(code(1).acidOf("TGG"), 'W');
  EXPECT_EQ(code(1).acidOf("GCT"), 'A');
  EXPECT_EQ(code(1).acidOf("CAG"), 'Q');
  EXPECT_EQ(code(1).acidOf("AGC"), 'S');
  EXPECT_EQ(starts(1), "ATG ");
  EXPECT_EQ(stops(1), "TAA TAG TGA ");
}

TEST(GeneticCode, OthersDifferFromTheStandardCodeAsTheListSays) {
  EXPECT_EQ(differences(2), "TGAW ATAM AGA* AGG* ");
  EXPECT_EQ(stops(2), "TAA TAG AGA AGG ");
  EXPECT_EQ(starts(2), "ATT ATC ATA ATG GTG ");
  EXPECT_EQ(differences(3), "TGAW CTTT CTCT CTAT CTGT ATAM ");
  EXPECT_EQ(differences(4), "TGAW ");
  EXPECT_EQ(differences(5), "TGAW ATAM AGAS AGGS ");
  EXPECT_EQ(differences(6), "TAAQ TAGQ ");
  EXPECT_EQ(differences(9), "TGAW AAAN AGAS AGGS ");
  EXPECT_EQ(differences(10), "TGAC ");
  EXPECT_EQ(differences(11), "");
  EXPECT_EQ(starts(11), "TTG CTG ATT ATC ATA ATG GTG ");
  EXPECT_EQ(differences(12), "CTGS ");
  EXPECT_EQ(differences(13), "TGAW ATAM AGAG AGGG ");
  EXPECT_EQ(differences(22), "TCA* TAGL ");
  EXPECT_EQ(differences(25), "TGAG ");
  EXPECT_EQ(differences(26), "CTGA ");
  EXPECT_EQ(differences(33), "TAAY TGAW AGAS AGGK ");
}

TEST(GeneticCode, SomeHaveStopCodonsThatAreAminoAcidsElsewhereInAProtein) {
  EXPECT_EQ(differences(28), "TAAQ TAGQ TGAW ");
  EXPECT_EQ(stops(28), "TAA TAG TGA ");
  EXPECT_EQ(differences(31), "TAAE TAGE TGAW ");
  EXPECT_EQ(stops(31), "TAA TAG ");
}

TEST(GeneticCode, AllHaveALetterForEachCodonAndATGAsStart) {
  EXPECT_EQ(geneticCodes().size(), 27U);
  int before = 0;
  for (const GeneticCode& each : geneticCodes()) {
    SCOPED_TRACE(each.number);
    EXPECT_GT(each.number, before);
    before = each.number;
    EXPECT_EQ(each.acids.size(), 64U);
    EXPECT_EQ(each.signals.size(), 64U);
    EXPECT_TRUE(each.mayStart("ATG"));
    for (const std::string& codon : codons()) {
      EXPECT_TRUE(each.acidOf(codon) != '*' || each.mayStop(codon)) << codon;
    }
  }
}

TEST(GeneticCode, OfAnUnknownCodonIsX) {
  EXPECT_EQ(code(1).acidOf("GCN"), 'X');
  EXPECT_EQ(code(1).acidOf("atg"), 'X');
  EXPECT_FALSE(code(1).mayStart("NTG"));
  EXPECT_FALSE(code(1).mayStop("TAN"));
}

TEST(GeneticCode, WithoutANumberInTheListIsNone) {
  for (const int number : {-1, 0, 7, 8, 17, 20, 34}) EXPECT_EQ(geneticCode(number), nullptr);
}

TEST(GeneticCode, StopsAreTheCodonsThatMayEndAProtein) {
  using Codons = std::vector<std::string>;
  EXPECT_EQ(standardCode().stops(), (Codons{"TAA", "TAG", "TGA"}));
  EXPECT_EQ(geneticCode(2)->stops(), (Codons{"TAA", "TAG", "AGA", "AGG"}));
  EXPECT_EQ(geneticCode(6)->stops(), Codons{"TGA"});
  EXPECT_EQ(geneticCode(27)->stops(), Codons{"TGA"});
}

}  // namespace
}  // namespace velto
