#include "batch/formats/sequence_rows.h"

#include "batch/formats/read_name.h"

namespace velto {
namespace {

std::string header(const ScannedRead& read, const std::string& part = "") {
  const Prediction& p = read.prediction;
  return '>' + fastaName(read) + part + " strand=" + symbolOf(p.strand) +
         " start=" + std::to_string(p.start + 1) + " stop=" + std::to_string(p.stop + 1) +
         " type=" + nameOf(read.coding.type) + " score=" + scoreText(p.score) +
         " inner_stops=" + std::to_string(read.coding.innerStops) + '\n';
}

}  // namespace

void appendCodingFasta(const ScannedRead& read, std::string& text) {
  if (!read.isCoding()) return;
  text += header(read) + read.coding.bases + '\n';
}

void appendProteinFasta(const ScannedRead& read, InnerStops innerStops, std::string& text) {
  if (!read.isCoding()) return;
  const bool isSplit = innerStops == InnerStops::kSplit && read.coding.innerStops > 0;
  int part = 0;
  for (const std::string& protein : proteins(read.coding, innerStops)) {
    ++part;
    text += header(read, isSplit ? ".part" + std::to_string(part) : "") + protein + '\n';
  }
}

}  // namespace velto
