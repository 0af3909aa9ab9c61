#include "batch/formats/json_rows.h"

#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

namespace velto {
namespace {

using Json = nlohmann::ordered_json;

std::vector<int> positions(const Prediction& prediction, Frameshift::Kind kind) {
  std::vector<int> list;
  for (const Frameshift& shift : prediction.frameshifts) {
    if (shift.kind == kind) list.push_back(shift.position + 1);
  }
  return list;
}

// NaN becomes null.
std::vector<double> confidences(const Prediction& prediction, Frameshift::Kind kind) {
  std::vector<double> list;
  for (const Frameshift& shift : prediction.frameshifts) {
    if (shift.kind == kind) list.push_back(shift.confidence);
  }
  return list;
}

Json valueIf(bool given, Json value) { return given ? std::move(value) : Json(nullptr); }

}  // namespace

void appendJsonRow(const ScannedRead& read, std::string& text) {
  const Prediction& p = read.prediction;
  const bool predicted = read.isPredicted();
  const bool coding = read.isCoding();
  Json row;
  row["read"] = read.record.name;
  row["description"] = read.record.description;
  row["length"] = p.length;
  row["gc"] = valueIf(p.length > 0, p.gcPercent);
  row["model"] = valueIf(!p.model.empty(), p.model);
  row["strand"] = valueIf(predicted, std::string(1, symbolOf(p.strand)));
  row["score"] = valueIf(predicted, p.score);
  row["start"] = valueIf(coding, p.start + 1);
  row["stop"] = valueIf(coding, p.stop + 1);
  row["insertions"] = valueIf(coding, positions(p, Frameshift::Kind::kInsertion));
  row["deletions"] = valueIf(coding, positions(p, Frameshift::Kind::kDeletion));
  row["type"] = valueIf(coding, nameOf(read.coding.type));
  row["cds_length"] = valueIf(coding, read.coding.bases.size());
  row["status"] = nameOf(p.status);
  row["inner_stops"] = valueIf(coding, read.coding.innerStops);
  row["probability"] = p.probability;
  row["insertion_confidences"] = valueIf(coding, confidences(p, Frameshift::Kind::kInsertion));
  row["deletion_confidences"] = valueIf(coding, confidences(p, Frameshift::Kind::kDeletion));
  text += row.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace velto
