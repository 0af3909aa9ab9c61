#include "batch/formats/gff3_rows.h"

#include "batch/formats/read_name.h"

namespace velto {
namespace {

std::string attributes(const ScannedRead& read) {
  const Prediction& p = read.prediction;
  std::string text = "ID=cds" + std::to_string(read.ordinal);
  text += std::string(";type=") + nameOf(read.coding.ends);
  const std::string insertions = positionList(p, Frameshift::Kind::kInsertion);
  const std::string deletions = positionList(p, Frameshift::Kind::kDeletion);
  if (!insertions.empty()) text += ";insertions=" + insertions;
  if (!deletions.empty()) text += ";deletions=" + deletions;
  return text;
}

}  // namespace

std::string gff3Header() { return "##gff-version 3\n"; }

void appendGff3Rows(const ScannedRead& read, std::string& text) {
  const bool minus = read.prediction.strand == Strand::kMinus;
  const std::string before = gff3Name(read) + "\tvelto\tCDS\t";
  const std::string score =
      '\t' + scoreText(read.prediction.score) + '\t' + symbolOf(read.prediction.strand) + '\t';
  const std::string after = '\t' + attributes(read) + '\n';
  const std::vector<CodingPart>& parts = read.coding.intact;
  for (size_t i = 0; i < parts.size(); ++i) {
    const CodingPart& part = parts[minus ? parts.size() - 1 - i : i];
    const int first = minus ? read.prediction.length - part.end : part.begin;
    const int last = first + part.end - part.begin - 1;
    text += before + std::to_string(first + 1) + '\t' + std::to_string(last + 1) + score +
            std::to_string(part.phase) + after;
  }
}

}  // namespace velto
