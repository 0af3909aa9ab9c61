#include "batch/formats/score_rows.h"

#include <vector>

#include "batch/formats/read_name.h"
#include "core/letter_codes.h"
#include "core/score_rows.h"

namespace velto {

void appendScoreRows(const ScannedRead& read, Letters letters, std::string& text) {
  if (!read.isPredicted()) return;
  std::vector<short> codes;
  codeLetters(read.record.bases, letters, codes);
  if (read.prediction.strand == Strand::kMinus) reverseComplement(codes);
  text += '>' + fastaName(read) + ' ' + symbolOf(read.prediction.strand) + '\n';
  appendScoreRows(codes.data(), read.prediction.length, read.prediction.scores, text);
}

}  // namespace velto
