#include "batch/formats/row_formats.h"

#include "batch/formats/bed_rows.h"
#include "batch/formats/gff3_rows.h"
#include "batch/formats/json_rows.h"
#include "batch/formats/score_rows.h"
#include "batch/formats/sequence_rows.h"
#include "batch/formats/tsv_rows.h"

namespace velto {
namespace {

// A format without choices.
template <void (*kAppend)(const ScannedRead&, std::string&)>
void append(const ScannedRead& read, const FormatChoices&, std::string& text) {
  kAppend(read, text);
}

void appendProtein(const ScannedRead& read, const FormatChoices& choices, std::string& text) {
  appendProteinFasta(read, choices.innerStops, text);
}

void appendScores(const ScannedRead& read, const FormatChoices& choices, std::string& text) {
  appendScoreRows(read, choices.letters, text);
}

}  // namespace

std::span<const RowFormat> rowFormats() {
  static const RowFormat formats[] = {
      {"-o,--output", "Table of all reads (default: standard output)", tsvHeader(), false,
       append<appendTsvRow>},
      {"--gff3", "Coding regions as GFF3", gff3Header(), false, append<appendGff3Rows>},
      {"--bed", "Coding regions as BED12", "", false, append<appendBedRow>},
      {"--cds", "Corrected coding sequences as FASTA", "", false, append<appendCodingFasta>},
      {"--protein", "Proteins as FASTA", "", false, appendProtein},
      {"--json", "All reads as JSON Lines", "", false, append<appendJsonRow>},
      {"--scores", "Scores of each base in the three frames", "", true, appendScores},
  };
  return formats;
}

}  // namespace velto
