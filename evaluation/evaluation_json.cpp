// The JSON of an evaluation.
#include <nlohmann/json.hpp>

#include "evaluation/evaluation_figures.h"
#include "evaluation/evaluation_report.h"
#include "model/read_class.h"

namespace velto {
namespace {

using Json = nlohmann::ordered_json;

Json numberOrNull(std::optional<double> value) { return value ? Json(*value) : Json(nullptr); }

// `intervals` may be empty.
Json figuresJson(const EvaluationCounts& counts, const FigureIntervals& intervals) {
  Json json = Json::object();
  const std::vector<Figure>& figures = evaluationFigures();
  for (std::size_t f = 0; f < figures.size(); ++f) {
    const FigureValue value = figures[f].of(counts);
    Json& figure = json[figures[f].id] = {{"value", numberOrNull(value.value)}};
    if (figures[f].isRatio) figure["part"] = value.part;
    figure["of"] = value.whole;
    if (intervals.empty() || !intervals[f]) continue;
    figure["low"] = intervals[f]->low;
    figure["high"] = intervals[f]->high;
  }
  return json;
}

Json countsJson(const EvaluationCounts& counts, const FigureIntervals& intervals = {}) {
  return {{"reads", counts.reads},
          {"noncoding_reads", counts.noncodingReads},
          {"bases", counts.bases},
          {"coding_bases", counts.coding},
          {"figures", figuresJson(counts, intervals)}};
}

Json classesJson(const ModelEvaluation& model) {
  Json json = Json::array();
  for (int i = 0; i < kReadClasses; ++i) {
    const auto k = static_cast<std::size_t>(i);
    if (model.byClass[k].reads == 0) continue;
    const ReadClass readClass = readClassAt(i);
    Json row = {{"class", readClass.name()},
                {"window_width", readClass.windowWidth},
                {"length_class", readClass.lengthId},
                {"gc_class", readClass.gcId}};
    row.update(countsJson(model.byClass[k], model.classIntervals.empty()
                                                ? FigureIntervals{}
                                                : model.classIntervals[k]));
    json.push_back(std::move(row));
  }
  return json;
}

Json modelJson(const ModelEvaluation& model) {
  Json json = {{"directory", model.directory}, {"decoder", model.decoder}};
  json.update(countsJson(model.total));
  json["classes"] = classesJson(model);
  json["shift_distances"] = model.shiftDistances;
  json["error_rates"] = Json::array();
  for (const RatePoint& point : model.byRate) {
    Json row = {{"shifts_per_100_coding_bases", point.shiftsPer100}};
    row.update(countsJson(point.counts, point.intervals));
    json["error_rates"].push_back(std::move(row));
  }
  return json;
}

Json differencesJson(const std::vector<FigureDifference>& differences) {
  Json json = Json::object();
  const std::vector<Figure>& figures = evaluationFigures();
  for (std::size_t f = 0; f < differences.size(); ++f) {
    const FigureDifference& d = differences[f];
    json[figures[f].id] = {{"difference", numberOrNull(d.difference)},
                           {"low", numberOrNull(d.low)},
                           {"high", numberOrNull(d.high)},
                           {"favouring_first", numberOrNull(d.favouringFirst)}};
  }
  return json;
}

}  // namespace

// Names of files and headers need not be UTF-8, hence the replacing of what is not.
std::string reportJson(const EvaluationReport& report) {
  Json json = {{"input", Json::object()}, {"transcripts", report.transcripts}};
  for (const auto& [name, value] : report.input) json["input"][name] = value;
  json["models"] = Json::array();
  for (const ModelEvaluation& model : report.models) json["models"].push_back(modelJson(model));
  if (!report.differences.empty()) json["differences"] = differencesJson(report.differences);
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace velto
