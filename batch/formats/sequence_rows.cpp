#include "batch/formats/sequence_rows.h"

#include "batch/formats/read_name.h"

namespace velto {
namespace {

std::string header(const ScannedRead& read) {
  const Prediction& p = read.prediction;
  return '>' + fastaName(read) + " strand=" + symbolOf(p.strand) +
         " start=" + std::to_string(p.start + 1) + " stop=" + std::to_string(p.stop + 1) +
         " type=" + nameOf(read.coding.ends) + " score=" + scoreText(p.score) + '\n';
}

}  // namespace

void appendCodingFasta(const ScannedRead& read, std::string& text) {
  if (!read.isCoding()) return;
  text += header(read) + read.coding.bases + '\n';
}

void appendProteinFasta(const ScannedRead& read, std::string& text) {
  if (!read.isCoding()) return;
  text += header(read) + translate(read.coding.bases) + '\n';
}

}  // namespace velto
