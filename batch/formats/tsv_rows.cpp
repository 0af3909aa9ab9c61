#include "batch/formats/tsv_rows.h"

#include "batch/formats/read_name.h"

namespace velto {
namespace {

void addField(std::string& text, const std::string& field) {
  text += '\t';
  text += field;
}

}  // namespace

std::string tsvHeader() {
  return "read\tlength\tgc\tmodel\tstrand\tscore\tstart\tstop\tinsertions\tdeletions\ttype\t"
         "cds_length\tstatus\tinner_stops\tprobability\tinsertion_confidences\tdeletion_"
         "confidences\n";
}

void appendTsvRow(const ScannedRead& read, std::string& text) {
  const Prediction& p = read.prediction;
  const bool predicted = read.isPredicted();
  const bool coding = read.isCoding();
  const auto fieldIf = [&text](bool given, const std::string& field) {
    addField(text, given ? field : "");
  };
  text += tsvName(read);
  addField(text, std::to_string(p.length));
  fieldIf(p.length > 0, numberText(p.gcPercent, 6));
  addField(text, p.model);
  fieldIf(predicted, std::string(1, symbolOf(p.strand)));
  fieldIf(predicted, scoreText(p.score));
  fieldIf(coding, std::to_string(p.start + 1));
  fieldIf(coding, std::to_string(p.stop + 1));
  fieldIf(coding, positionList(p, Frameshift::Kind::kInsertion));
  fieldIf(coding, positionList(p, Frameshift::Kind::kDeletion));
  fieldIf(coding, nameOf(read.coding.type));
  fieldIf(coding, std::to_string(read.coding.bases.size()));
  addField(text, nameOf(p.status));
  fieldIf(coding, std::to_string(read.coding.innerStops));
  addField(text, probabilityText(p.probability));
  addField(text, confidenceList(p, Frameshift::Kind::kInsertion));
  addField(text, confidenceList(p, Frameshift::Kind::kDeletion));
  text += '\n';
}

}  // namespace velto
