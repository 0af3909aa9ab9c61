#include "predict/coding_sequence.h"

#include <algorithm>
#include <span>
#include <stdexcept>

#include "core/corrected_positions.h"

namespace velto {
namespace {

// Appends this many adjoining bases, the first one in this place of its codon.
void appendBases(std::vector<CodingPart>& parts, int position, int bases, size_t placeInCodon) {
  if (parts.empty() || parts.back().end != position) {
    parts.push_back({position, position, static_cast<int>((3 - placeInCodon) % 3)});
  }
  parts.back().end += bases;
}

using CodonPositions = std::span<const int, 3>;

bool isIntact(CodonPositions codon) {
  return std::find(codon.begin(), codon.end(), kLostBase) == codon.end();
}

// How many positions of whole codons from the first one on are those of adjoining bases.
size_t adjoiningBases(std::span<const int> positions) {
  if (positions.front() == kLostBase) return 0;
  const auto last = std::adjacent_find(positions.begin(), positions.end(),
                                       [](int one, int next) { return next != one + 1; });
  const auto bases = static_cast<size_t>(last - positions.begin()) + (last != positions.end());
  return bases - bases % 3;
}

void appendCodon(CodonPositions codon, std::string_view letters, CodingSequence& sequence) {
  const bool intact = isIntact(codon);
  for (size_t place = 0; place < 3; ++place) {
    const int position = codon[place];
    sequence.bases += position == kLostBase ? 'N' : letters[static_cast<size_t>(position)];
    if (position == kLostBase) continue;
    appendBases(sequence.kept, position, 1, place);
    if (intact) appendBases(sequence.intact, position, 1, place);
  }
}

// Appends the first codons of positions of which there is one at least; returns how many positions.
size_t appendCodons(std::span<const int> positions, std::string_view letters,
                    CodingSequence& sequence) {
  const size_t bases = adjoiningBases(positions);
  if (bases == 0) {
    appendCodon(positions.first<3>(), letters, sequence);
    return 3;
  }
  sequence.bases.append(letters, static_cast<size_t>(positions.front()), bases);
  appendBases(sequence.kept, positions.front(), static_cast<int>(bases), 0);
  appendBases(sequence.intact, positions.front(), static_cast<int>(bases), 0);
  return bases;
}

std::string translate(std::string_view bases, const GeneticCode& code) {
  std::string protein;
  protein.reserve(bases.size() / 3);
  for (size_t i = 0; i < bases.size(); i += 3) protein += code.acidOf(bases.substr(i, 3));
  if (code.mayStart(bases.substr(0, 3))) protein.front() = 'M';
  if (code.mayStop(bases.substr(bases.size() - 3))) protein.back() = '*';
  return protein;
}

CodingType typeOf(const CodingSequence& sequence, const GeneticCode& code) {
  const bool hasStart = code.mayStart(std::string_view(sequence.bases).substr(0, 3));
  const bool hasStop = sequence.protein.back() == '*';
  if (!hasStart) return hasStop ? CodingType::kNoStart : CodingType::kNeither;
  if (!hasStop) return CodingType::kNoStop;
  return sequence.innerStops > 0 ? CodingType::kInterrupted : CodingType::kComplete;
}

// The stretches between stop signals, the last signal left to its stretch.
std::vector<std::string> splitAtInnerStops(const std::string& protein) {
  std::vector<std::string> stretches;
  size_t begin = 0;
  while (begin < protein.size()) {
    const size_t stop = std::min(protein.find('*', begin), protein.size() - 1);
    const bool isLast = stop + 1 == protein.size();
    const std::string stretch = protein.substr(begin, stop - begin + (isLast ? 1 : 0));
    if (!stretch.empty() && stretch != "*") stretches.push_back(stretch);
    begin = stop + 1;
  }
  return stretches;
}

}  // namespace

CodingSequence codingSequence(const Prediction& prediction, std::string_view letters,
                              const GeneticCode& code) {
  CodingSequence sequence;
  if (prediction.status != Prediction::Status::kCoding) return sequence;
  const std::vector<int> positions = correctedPositions(prediction);
  sequence.bases.reserve(positions.size());
  for (std::span<const int> rest = positions; !rest.empty();) {
    rest = rest.subspan(appendCodons(rest, letters, sequence));
  }
  if (sequence.bases.empty()) return sequence;
  sequence.protein = translate(sequence.bases, code);
  const auto end = sequence.protein.end() - 1;
  sequence.innerStops = static_cast<int>(std::count(sequence.protein.begin(), end, '*'));
  sequence.type = typeOf(sequence, code);
  return sequence;
}

CodingSequence codingSequence(const Prediction& prediction, std::string_view letters,
                              int geneticCode) {
  const GeneticCode* code = velto::geneticCode(geneticCode);
  if (code == nullptr) {
    throw std::invalid_argument("there is no genetic code " + std::to_string(geneticCode));
  }
  return codingSequence(prediction, letters, *code);
}

std::vector<std::string> proteins(const CodingSequence& sequence, InnerStops innerStops) {
  std::string protein = sequence.protein;
  if (innerStops == InnerStops::kSplit && sequence.innerStops > 0) {
    return splitAtInnerStops(protein);
  }
  if (innerStops == InnerStops::kX && !protein.empty()) {
    std::replace(protein.begin(), protein.end() - 1, '*', 'X');
  }
  return {protein};
}

const char* nameOf(CodingType type) {
  switch (type) {
    case CodingType::kComplete:
      return "complete";
    case CodingType::kInterrupted:
      return "interrupted";
    case CodingType::kNoStart:
      return "5prime_partial";
    case CodingType::kNoStop:
      return "3prime_partial";
    default:
      return "internal";
  }
}

const char* meaningOf(CodingType type) {
  switch (type) {
    case CodingType::kComplete:
      return "complete: from a start codon to a stop codon";
    case CodingType::kInterrupted:
      return "interrupted: start and stop codon, and stop codons between";
    case CodingType::kNoStart:
      return "no start codon at the beginning";
    case CodingType::kNoStop:
      return "no stop codon at the end";
    default:
      return "neither start nor stop codon at the ends";
  }
}

}  // namespace velto
