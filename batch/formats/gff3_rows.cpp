#include "batch/formats/gff3_rows.h"

#include "batch/formats/read_name.h"

namespace velto {
namespace {

std::string attributeIf(const char* name, const std::string& value) {
  return value.empty() ? "" : std::string(";") + name + '=' + value;
}

std::string callAttributes(const ScannedRead& read) {
  const Prediction& p = read.prediction;
  using Kind = Frameshift::Kind;
  return attributeIf("type", nameOf(read.coding.type)) +
         attributeIf("inner_stops", std::to_string(read.coding.innerStops)) +
         attributeIf("insertions", positionList(p, Kind::kInsertion)) +
         attributeIf("deletions", positionList(p, Kind::kDeletion)) +
         attributeIf("probability", probabilityText(p.probability)) +
         attributeIf("insertion_confidences", confidenceList(p, Kind::kInsertion)) +
         attributeIf("deletion_confidences", confidenceList(p, Kind::kDeletion));
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
