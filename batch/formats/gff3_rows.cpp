#include "batch/formats/gff3_rows.h"

#include "batch/formats/read_name.h"

namespace velto {
namespace {

std::string callAttributes(const ScannedRead& read) {
  const Prediction& p = read.prediction;
  std::string text = std::string(";type=") + nameOf(read.coding.type);
  text += ";inner_stops=" + std::to_string(read.coding.innerStops);
  const std::string insertions = positionList(p, Frameshift::Kind::kInsertion);
  const std::string deletions = positionList(p, Frameshift::Kind::kDeletion);
  if (!insertions.empty()) text += ";insertions=" + insertions;
  if (!deletions.empty()) text += ";deletions=" + deletions;
  return text;
}

// The columns from the type to the last position, which both count from 1.
std::string extent(const char* type, int first, int last) {
  return std::string("\tvelto\t") + type + '\t' + std::to_string(first) + '\t' +
         std::to_string(last);
}

}  // namespace

std::string gff3Header() { return "##gff-version 3\n"; }

void appendGff3Rows(const ScannedRead& read, std::string& text) {
  const std::vector<CodingPart>& parts = read.coding.intact;
  if (parts.empty()) return;
  const int length = read.prediction.length;
  const bool minus = read.prediction.strand == Strand::kMinus;
  const std::string name = gff3Name(read);
  const std::string score =
      '\t' + scoreText(read.prediction.score) + '\t' + symbolOf(read.prediction.strand) + '\t';

  text += "##sequence-region " + name + " 1 " + std::to_string(length) + '\n';
  text += name + extent("mRNA", 1, length) + score + ".\tID=" + name + callAttributes(read) + '\n';
  // '/' is coded in names, so that no read has the ID of another one's CDS.
  const std::string attributes = "\tID=" + name + "/CDS;Parent=" + name + '\n';
  for (size_t i = 0; i < parts.size(); ++i) {
    const CodingPart& part = parts[minus ? parts.size() - 1 - i : i];
    const int begin = minus ? length - part.end : part.begin;
    text += name + extent("CDS", begin + 1, begin + part.end - part.begin) + score +
            std::to_string(part.phase) + attributes;
  }
}

}  // namespace velto
