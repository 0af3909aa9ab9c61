#include "core/genetic_code.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace velto {
namespace {

constexpr GeneticCode kCodes[] = {
    {1,  // standard
     "FFLLSSSSYY**CC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "----------**--*--------------------M----------------------------"},
    {2,  // vertebrate mitochondrial
     "FFLLSSSSYY**CCWWLLLLPPPPHHQQRRRRIIMMTTTTNNKKSS**VVVVAAAADDEEGGGG",
     "----------**--------------------MMMM----------**---M------------"},
    {3,  // yeast mitochondrial
     "FFLLSSSSYY**CCWWTTTTPPPPHHQQRRRRIIMMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "----------**----------------------MM---------------M------------"},
    {4,  // mold, protozoan and coelenterate mitochondrial, mycoplasma
     "FFLLSSSSYY**CCWWLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "--MM------**-------M------------MMMM---------------M------------"},
    {5,  // invertebrate mitochondrial
     "FFLLSSSSYY**CCWWLLLLPPPPHHQQRRRRIIMMTTTTNNKKSSSSVVVVAAAADDEEGGGG",
     "---M------**--------------------MMMM---------------M------------"},
    {6,  // ciliate, dasycladacean and hexamita nuclear
     "FFLLSSSSYYQQCC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "--------------*--------------------M----------------------------"},
    {9,  // echinoderm and flatworm mitochondrial
     "FFLLSSSSYY**CCWWLLLLPPPPHHQQRRRRIIIMTTTTNNNKSSSSVVVVAAAADDEEGGGG",
     "----------**-----------------------M---------------M------------"},
    {10,  // euplotid nuclear
     "FFLLSSSSYY**CCCWLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "----------**-----------------------M----------------------------"},
    {11,  // bacterial, archaeal and plant plastid
     "FFLLSSSSYY**CC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "---M------**--*----M------------MMMM---------------M------------"},
    {12,  // alternative yeast nuclear
     "FFLLSSSSYY**CC*WLLLSPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "----------**--*----M---------------M----------------------------"},
    {13,  // ascidian mitochondrial
     "FFLLSSSSYY**CCWWLLLLPPPPHHQQRRRRIIMMTTTTNNKKSSGGVVVVAAAADDEEGGGG",
     "---M------**----------------------MM---------------M------------"},
    {14,  // alternative flatworm mitochondrial
     "FFLLSSSSYYY*CCWWLLLLPPPPHHQQRRRRIIIMTTTTNNNKSSSSVVVVAAAADDEEGGGG",
     "-----------*-----------------------M----------------------------"},
    {15,  // blepharisma nuclear
     "FFLLSSSSYY*QCC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "----------*---*--------------------M----------------------------"},
    {16,  // chlorophycean mitochondrial
     "FFLLSSSSYY*LCC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "----------*---*--------------------M----------------------------"},
    {21,  // trematode mitochondrial
     "FFLLSSSSYY**CCWWLLLLPPPPHHQQRRRRIIMMTTTTNNNKSSSSVVVVAAAADDEEGGGG",
     "----------**-----------------------M---------------M------------"},
    {22,  // scenedesmus obliquus mitochondrial
     "FFLLSS*SYY*LCC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "------*---*---*--------------------M----------------------------"},
    {23,  // thraustochytrium mitochondrial
     "FF*LSSSSYY**CC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "--*-------**--*-----------------M--M---------------M------------"},
    {24,  // rhabdopleuridae mitochondrial
     "FFLLSSSSYY**CCWWLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSSKVVVVAAAADDEEGGGG",
     "---M------**-------M---------------M---------------M------------"},
    {25,  // candidate division SR1 and gracilibacteria
     "FFLLSSSSYY**CCGWLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "---M------**-----------------------M---------------M------------"},
    {26,  // pachysolen tannophilus nuclear
     "FFLLSSSSYY**CC*WLLLAPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "----------**--*----M---------------M----------------------------"},
    {27,  // karyorelict nuclear
     "FFLLSSSSYYQQCCWWLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "--------------*--------------------M----------------------------"},
    {28,  // condylostoma nuclear
     "FFLLSSSSYYQQCCWWLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "----------**--*--------------------M----------------------------"},
    {29,  // mesodinium nuclear
     "FFLLSSSSYYYYCC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "--------------*--------------------M----------------------------"},
    {30,  // peritrich nuclear
     "FFLLSSSSYYEECC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "--------------*--------------------M----------------------------"},
    {31,  // blastocrithidia nuclear
     "FFLLSSSSYYEECCWWLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "----------**-----------------------M----------------------------"},
    {32,  // balanophoraceae plastid
     "FFLLSSSSYY*WCC*WLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSRRVVVVAAAADDEEGGGG",
     "---M------*---*----M------------MMMM---------------M------------"},
    {33,  // cephalodiscidae mitochondrial
     "FFLLSSSSYYY*CCWWLLLLPPPPHHQQRRRRIIIMTTTTNNKKSSSKVVVVAAAADDEEGGGG",
     "---M-------*-------M---------------M---------------M------------"},
};

constexpr std::size_t kUnknownCodon = 64;

// Places of the bases in the order of the list; kUnknownCodon for other letters.
std::size_t baseIndex(char letter) {
  switch (letter) {
    case 'T':
      return 0;
    case 'C':
      return 1;
    case 'A':
      return 2;
    case 'G':
      return 3;
    default:
      return kUnknownCodon;
  }
}

// Place in the order of the list.
std::size_t codonIndex(std::string_view codon) {
  std::size_t index = 0;
  for (const char letter : codon) {
    const std::size_t base = baseIndex(letter);
    if (base == kUnknownCodon) return kUnknownCodon;
    index = 4 * index + base;
  }
  return index;
}

bool hasSignal(const GeneticCode& code, std::string_view codon, char signal) {
  const std::size_t index = codonIndex(codon);
  return index != kUnknownCodon && code.signals[index] == signal;
}

}  // namespace

char GeneticCode::acidOf(std::string_view codon) const {
  const std::size_t index = codonIndex(codon);
  return index == kUnknownCodon ? 'X' : acids[index];
}

bool GeneticCode::mayStart(std::string_view codon) const { return hasSignal(*this, codon, 'M'); }

bool GeneticCode::mayStop(std::string_view codon) const { return hasSignal(*this, codon, '*'); }

std::vector<std::string> GeneticCode::stops() const {
  constexpr std::string_view kOrder = "TCAG";
  std::vector<std::string> stops;
  for (std::size_t i = 0; i < kUnknownCodon; ++i) {
    if (signals[i] == '*') stops.push_back({kOrder[i / 16], kOrder[i / 4 % 4], kOrder[i % 4]});
  }
  return stops;
}

std::span<const GeneticCode> geneticCodes() { return kCodes; }

const GeneticCode& standardCode() { return kCodes[0]; }

const GeneticCode* geneticCode(int number) {
  const auto* const code = std::find_if(std::begin(kCodes), std::end(kCodes),
                                        [number](const auto& c) { return c.number == number; });
  return code == std::end(kCodes) ? nullptr : code;
}

}  // namespace velto
