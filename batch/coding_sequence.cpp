#include "batch/coding_sequence.h"

#include <algorithm>

#include "core/base_code.h"
#include "model/read_data.h"

namespace velto {
namespace {

constexpr int kLostBase = -1;

// The read position of every base of the corrected sequence, kLostBase for a lost one.
std::vector<int> correctedPositions(const Prediction& prediction) {
  std::vector<int> positions;
  const int end = std::min(prediction.stop + 1, prediction.length);
  auto shift = prediction.frameshifts.begin();
  for (int p = prediction.start; p < end; ++p) {
    while (shift != prediction.frameshifts.end() && shift->position < p) ++shift;
    const bool isShift = shift != prediction.frameshifts.end() && shift->position == p;
    if (isShift && shift->kind == Frameshift::Kind::kInsertion) continue;
    if (isShift) positions.push_back(kLostBase);
    positions.push_back(p);
  }
  positions.resize(positions.size() - positions.size() % 3);
  return positions;
}

void appendBase(std::vector<CodingPart>& parts, int position, size_t placeInCodon) {
  if (parts.empty() || parts.back().end != position) {
    parts.push_back({position, position, static_cast<int>((3 - placeInCodon) % 3)});
  }
  ++parts.back().end;
}

bool isIntact(const std::vector<int>& positions, size_t codon) {
  const auto first = positions.begin() + static_cast<std::ptrdiff_t>(codon);
  return std::find(first, first + 3, kLostBase) == first + 3;
}

int acidOf(std::string_view codon) {
  return ReadData::CodonTable(baseCode(codon[0]), baseCode(codon[1]), baseCode(codon[2]));
}

int stopsBeforeTheEnd(std::string_view bases) {
  int stops = 0;
  for (size_t i = 0; i + 3 < bases.size(); i += 3) {
    stops += acidOf(bases.substr(i, 3)) == kStopSignal;
  }
  return stops;
}

CodingType typeOf(std::string_view bases, int innerStops) {
  const bool hasStart = acidOf(bases.substr(0, 3)) == kMethionine;
  const bool hasStop = acidOf(bases.substr(bases.size() - 3)) == kStopSignal;
  if (!hasStart) return hasStop ? CodingType::kNoStart : CodingType::kNeither;
  if (!hasStop) return CodingType::kNoStop;
  return innerStops > 0 ? CodingType::kInterrupted : CodingType::kComplete;
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

CodingSequence codingSequence(const Prediction& prediction, std::string_view letters) {
  CodingSequence sequence;
  if (prediction.status != Prediction::Status::kCoding) return sequence;
  const std::vector<int> positions = correctedPositions(prediction);
  for (size_t i = 0; i < positions.size(); ++i) {
    const int position = positions[i];
    sequence.bases += position == kLostBase ? 'N' : letters[static_cast<size_t>(position)];
    if (position == kLostBase) continue;
    appendBase(sequence.kept, position, i % 3);
    if (isIntact(positions, i - i % 3)) appendBase(sequence.intact, position, i % 3);
  }
  if (sequence.bases.empty()) return sequence;
  sequence.innerStops = stopsBeforeTheEnd(sequence.bases);
  sequence.type = typeOf(sequence.bases, sequence.innerStops);
  return sequence;
}

std::string translate(std::string_view codons) {
  constexpr char kAcidLetters[] = "ACDEFGHIKLMNPQRSTVWY*";  // by amino-acid number
  std::string protein;
  for (size_t i = 0; i + 2 < codons.size(); i += 3) {
    const int acid = acidOf(codons.substr(i, 3));
    protein += acid == kNoAminoAcid ? 'X' : kAcidLetters[acid];
  }
  return protein;
}

std::vector<std::string> proteins(const CodingSequence& sequence, InnerStops innerStops) {
  std::string protein = translate(sequence.bases);
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

}  // namespace velto
