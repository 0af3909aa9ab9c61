// A transcript with its coding region, made from one FASTA record, or the reason for refusing it.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/genetic_code.h"

namespace velto {

struct Transcript {
  std::string name;   // first word of the header; of a GENCODE header the transcript's id
  std::string group;  // unit of held-back splits, see parseTranscript
  std::string_view
      groupWord;             // word of the header that gave the group; empty: none, it is the name
  std::vector<short> bases;  // base codes A 0, T 1, G 2, C 3, unknown -1
  int cdsStart = -1;         // 0-based first base of the start codon; -1 without coding region
  int cdsStop = -1;          // 0-based last base of the stop codon; -1 without coding region

  int length() const { return static_cast<int>(bases.size()); }
  bool isCoding() const { return cdsStart >= 0; }
};

// What a record is expected to be.
enum class TranscriptKind { kCoding, kNoncoding };

// Why a record is refused. A coding region is checked in this order; the first reason counts.
enum class Refusal {
  kNone,              // accepted
  kNoBases,           // the record is empty
  kNoRegion,          // kCoding: the header names no coding region
  kUnexpectedRegion,  // kNoncoding: the header names a coding region
  kUnreadableRegion,  // what follows CDS= or CDS: is not two numbers a-b
  kOutOfRange,        // not 1 <= a <= b <= length
  kBrokenCodon,       // its length is not a multiple of three
  kNoStartCodon,      // does not begin with ATG: other starts cannot be told from a cut region
  kStopInside,        // a stop codon in frame before the last codon
  kNoStopCodon,       // does not end with a stop codon
};
constexpr int kRefusals = 10;

// One sentence part in words, for example "stop codon inside the coding region".
const char* refusalText(Refusal refusal);

// Base codes of letters: lower case counts as upper case, U as T, every other letter is unknown.
std::vector<short> baseCodes(std::string_view letters);

// Letters of base codes: A, T, G, C, or N for an unknown base.
std::string baseLetters(const std::vector<short>& bases);

struct ParsedTranscript {
  Transcript transcript;  // meaningful when accepted
  Refusal refusal = Refusal::kNone;
};

// Reads a transcript from the name (header up to the first blank), description (the rest) and
// letters of a FASTA record. Lower case counts as upper case, U as T, every other letter as an
// unknown base, which a coding region may hold. The coding region, through the stop codon and
// 1-based inclusive, is the word `CDS=a-b` of the description or the field `|CDS:a-b|` of the name.
// The group is the first of: the gene id of a GENCODE name (`ENST..|ENSG..|...`), a word of the
// description that begins with "chr" (but not Ensembl's `chromosome:...`, which ends in a place),
// the gene of a word `gene=`, `geneID=`, `gene_id=`, `gene:` or `gene_name=`, the sequence of a
// word `loc:SEQUENCE|...` as gffread writes it, the name. The code says what a stop codon is; one
// that stands for an amino acid too is none inside the region.
ParsedTranscript parseTranscript(std::string_view name, std::string_view description,
                                 std::string_view letters, TranscriptKind kind,
                                 const GeneticCode& code = standardCode());

// Records counted by what became of them.
class RefusalCounts {
 public:
  void add(Refusal refusal) { ++counts_[static_cast<std::size_t>(refusal)]; }
  long of(Refusal refusal) const { return counts_[static_cast<std::size_t>(refusal)]; }
  long accepted() const { return of(Refusal::kNone); }
  long refused() const;

  // One line "  N reason" for each reason that occurred; empty when nothing was refused.
  std::string text() const;

 private:
  std::array<long, kRefusals> counts_{};
};

}  // namespace velto
