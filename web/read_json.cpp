#include "web/read_json.h"

#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "draw/markup.h"
#include "draw/read_page.h"
#include "draw/read_sentence.h"

namespace velto {
namespace {

using Json = nlohmann::ordered_json;

std::string textOf(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json valueIf(bool given, Json value) { return given ? value : Json(nullptr); }

Json shiftsOf(const Prediction& prediction) {
  Json shifts = Json::array();
  for (const Frameshift& shift : prediction.frameshifts) {
    const bool extra = shift.kind == Frameshift::Kind::kInsertion;
    const bool given = !std::isnan(shift.confidence);
    shifts.push_back({{"position", shift.position + 1},
                      {"kind", extra ? "extra" : "missing"},
                      {"confidence", given ? percentText(shift.confidence) : ""}});
  }
  return shifts;
}

Json factsJson(const Record& record, const DrawableRead& read) {
  Json facts = Json::array();
  for (const auto& [name, value] : factsOf(record, read)) {
    facts.push_back({printable(name), printable(value)});
  }
  return facts;
}

constexpr char kPhredZero = '!';

std::string recordText(const Record& record) {
  const bool isFastq = !record.qualities.empty();
  std::string text = (isFastq ? '@' : '>') + printable(record.name) + '\n' + record.bases + '\n';
  if (!isFastq) return text;
  text += "+\n";
  for (const std::uint8_t phred : record.qualities) text += static_cast<char>(phred + kPhredZero);
  return text + '\n';
}

}  // namespace

std::string listEntryJson(const ScannedRead& read) {
  const Prediction& p = read.prediction;
  const bool coding = p.isCoding();
  Json entry;
  entry["name"] = printable(read.record.name);
  entry["length"] = p.length;
  entry["status"] = nameOf(p.status);
  entry["strand"] = valueIf(p.isPredicted(), std::string(1, symbolOf(p.strand)));
  entry["start"] = valueIf(coding, p.start + 1);
  entry["stop"] = valueIf(coding, p.stop + 1);
  entry["insertions"] = positionList(p, Frameshift::Kind::kInsertion);
  entry["deletions"] = positionList(p, Frameshift::Kind::kDeletion);
  entry["acids"] = valueIf(coding, aminoAcids(read.coding.protein));
  entry["probability"] = p.probability;  // NaN becomes null
  entry["score"] = valueIf(p.isPredicted(), p.score);
  return textOf(entry);
}

std::string drawingJson(const Record& record, const DrawableRead& read) {
  const DrawnRead drawn = read.drawn();
  Json json;
  json["name"] = printable(read.name);
  json["lead"] = callSentence(drawn);
  json["sentences"] = furtherSentences(drawn);
  json["figure"] = readFigure(drawn, "read-", true);
  json["shifts"] = shiftsOf(read.prediction);
  json["facts"] = factsJson(record, read);
  json["protein"] = read.coding.protein;
  json["cds"] = read.coding.bases;
  json["record"] = recordText(record);
  return textOf(json);
}

}  // namespace velto
