#include "simulation/transcript.h"

#include <charconv>

#include "core/base_code.h"
#include "model/read_data.h"

namespace velto {
namespace {

// ---- Header

// The word or field, among those of `text` between separators, that begins with `prefix`, without
// the prefix; a null view when there is none.
std::string_view fieldAfter(std::string_view text, std::string_view separators,
                            std::string_view prefix) {
  std::size_t begin = 0;
  while (begin < text.size()) {
    std::size_t end = text.find_first_of(separators, begin);
    if (end == std::string_view::npos) end = text.size();
    const std::string_view field = text.substr(begin, end - begin);
    if (field.substr(0, prefix.size()) == prefix) return field.substr(prefix.size());
    begin = end + 1;
  }
  return {};
}

constexpr std::string_view kBlanks = " \t";

bool isGencode(std::string_view name) {
  return name.substr(0, 3) == "ENS" && name.find('|') != std::string_view::npos;
}

std::string_view gencodeGene(std::string_view name) {
  const std::size_t begin = name.find('|') + 1;
  return name.substr(begin, name.find('|', begin) - begin);
}

struct Group {
  std::string_view name;
  std::string_view word;  // of static storage; empty: none
};

// The first word that begins with "chr"; a null view when there is none.
std::string_view chromosomeWord(std::string_view description) {
  while (!description.empty()) {
    const std::string_view rest = fieldAfter(description, kBlanks, "chr");
    if (rest.data() == nullptr) break;
    if (rest.substr(0, 7) != "omosome") return {rest.data() - 3, rest.size() + 3};
    description.remove_prefix(static_cast<std::size_t>(rest.data() - description.data()));
  }
  return {};
}

Group groupOf(std::string_view name, std::string_view description) {
  if (isGencode(name)) {
    const std::string_view gene = gencodeGene(name);
    return {gene.empty() ? name.substr(0, name.find('|')) : gene, "GENCODE gene"};
  }
  const std::string_view chromosome = chromosomeWord(description);
  if (!chromosome.empty()) return {chromosome, "chr"};
  for (const char* word : {"gene=", "geneID=", "gene_id=", "gene:", "gene_name="}) {
    const std::string_view gene = fieldAfter(description, kBlanks, word);
    if (!gene.empty()) return {gene, word};
  }
  const std::string_view place = fieldAfter(description, kBlanks, "loc:");
  const std::string_view sequence = place.substr(0, place.find_first_of("|("));
  return sequence.empty() ? Group{name, ""} : Group{sequence, "loc:"};
}

// Text of the coding region; a null view when the header has none.
std::string_view regionText(std::string_view name, std::string_view description) {
  const std::string_view gffread = fieldAfter(description, kBlanks, "CDS=");
  return gffread.data() != nullptr ? gffread : fieldAfter(name, "|", "CDS:");
}

// Reads "a-b" into 0-based inclusive positions; false when it is nothing of the kind.
bool readRegion(std::string_view text, int& start, int& stop) {
  const char* end = text.data() + text.size();
  const auto first = std::from_chars(text.data(), end, start);
  if (first.ec != std::errc() || first.ptr == end || *first.ptr != '-') return false;
  const auto second = std::from_chars(first.ptr + 1, end, stop);
  if (second.ec != std::errc() || second.ptr != end) return false;
  if (start < 0 || stop < 0) return false;
  --start;
  --stop;
  return true;
}

// ---- Bases

short tolerantBaseCode(char letter) {
  if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  return baseCode(letter == 'U' ? 'T' : letter);
}

}  // namespace

std::vector<short> baseCodes(std::string_view letters) {
  std::vector<short> bases;
  bases.reserve(letters.size());
  for (const char letter : letters) bases.push_back(tolerantBaseCode(letter));
  return bases;
}

std::string baseLetters(const std::vector<short>& bases) {
  std::string letters;
  letters.reserve(bases.size());
  for (const short base : bases) letters += isKnownBase(base) ? ReadData::outPutBase(base) : 'N';
  return letters;
}

namespace {

// ---- Coding region

std::string codonAt(const Transcript& t, int position) {
  const auto codon = t.bases.begin() + position;
  return baseLetters({codon, codon + 3});
}

Refusal checkRegion(const Transcript& t, const GeneticCode& code) {
  if (t.cdsStart < 0 || t.cdsStop < t.cdsStart || t.cdsStop >= t.length()) {
    return Refusal::kOutOfRange;
  }
  if ((t.cdsStop - t.cdsStart + 1) % 3 != 0) return Refusal::kBrokenCodon;
  if (codonAt(t, t.cdsStart) != "ATG") return Refusal::kNoStartCodon;
  const int lastCodon = t.cdsStop - 2;
  for (int p = t.cdsStart; p < lastCodon; p += 3) {
    if (code.acidOf(codonAt(t, p)) == '*') return Refusal::kStopInside;
  }
  return code.mayStop(codonAt(t, lastCodon)) ? Refusal::kNone : Refusal::kNoStopCodon;
}

Refusal placeRegion(std::string_view region, TranscriptKind kind, const GeneticCode& code,
                    Transcript& t) {
  if (t.bases.empty()) return Refusal::kNoBases;
  const bool named = region.data() != nullptr;
  if (kind == TranscriptKind::kNoncoding) {
    return named ? Refusal::kUnexpectedRegion : Refusal::kNone;
  }
  if (!named) return Refusal::kNoRegion;
  if (!readRegion(region, t.cdsStart, t.cdsStop)) return Refusal::kUnreadableRegion;
  return checkRegion(t, code);
}

}  // namespace

const char* refusalText(Refusal refusal) {
  switch (refusal) {
    case Refusal::kNone:
      return "accepted";
    case Refusal::kNoBases:
      return "no bases";
    case Refusal::kNoRegion:
      return "no coding region in the header";
    case Refusal::kUnexpectedRegion:
      return "coding region in the header of a non-coding record";
    case Refusal::kUnreadableRegion:
      return "unreadable coding region in the header";
    case Refusal::kOutOfRange:
      return "coding region out of range";
    case Refusal::kBrokenCodon:
      return "length of the coding region is not a multiple of three";
    case Refusal::kNoStartCodon:
      return "coding region does not begin with ATG";
    case Refusal::kStopInside:
      return "stop codon inside the coding region";
    case Refusal::kNoStopCodon:
      return "coding region does not end with a stop codon";
  }
  return "";
}

ParsedTranscript parseTranscript(std::string_view name, std::string_view description,
                                 std::string_view letters, TranscriptKind kind,
                                 const GeneticCode& code) {
  ParsedTranscript parsed;
  Transcript& t = parsed.transcript;
  t.name = isGencode(name) ? name.substr(0, name.find('|')) : name;
  const Group group = groupOf(name, description);
  t.group = group.name;
  t.groupWord = group.word;
  t.bases = baseCodes(letters);
  parsed.refusal = placeRegion(regionText(name, description), kind, code, t);
  return parsed;
}

long RefusalCounts::refused() const {
  long sum = 0;
  for (const long count : counts_) sum += count;
  return sum - accepted();
}

std::string RefusalCounts::text() const {
  std::string text;
  for (int i = 1; i < kRefusals; ++i) {
    const auto refusal = static_cast<Refusal>(i);
    if (of(refusal) == 0) continue;
    text += "  " + std::to_string(of(refusal)) + " " + refusalText(refusal) + "\n";
  }
  return text;
}

}  // namespace velto
