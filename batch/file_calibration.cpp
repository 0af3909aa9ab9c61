#include "batch/file_calibration.h"

#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace velto {
namespace {

using Json = nlohmann::ordered_json;

std::string percent(double share) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f %%", 100.0 * share);
  return text;
}

Json jsonOf(const BaseErrorRates& rates) {
  return {{"insertion", rates.insertion},
          {"deletion", rates.deletion},
          {"substitution", rates.substitution}};
}

Json jsonOf(const std::optional<double>& share) { return share ? Json(*share) : Json(nullptr); }

// A finite number from 0 to `most`.
double numberOf(const Json& json, const char* name, double most) {
  const double number = json.at(name).get<double>();
  if (!(number >= 0.0 && number <= most)) throw Error(std::string(name) + " is out of range");
  return number;
}

BaseErrorRates ratesOf(const Json& json, double most) {
  return {numberOf(json, "insertion", most), numberOf(json, "deletion", most),
          numberOf(json, "substitution", most)};
}

std::optional<double> shareOf(const Json& json, const char* name) {
  if (json.at(name).is_null()) return std::nullopt;
  return numberOf(json, name, 1.0);
}

constexpr double kMostFactor = 1e6;  // of an error rate

std::vector<QualityBin> qualitiesOf(const Json& json) {
  std::vector<QualityBin> bins;
  for (const Json& entry : json) {
    const auto most = static_cast<std::uint8_t>(numberOf(entry, "most", 255.0));
    if (!bins.empty() && most <= bins.back().most) throw Error("the qualities do not ascend");
    bins.push_back({most, ratesOf(entry, kMostFactor)});
  }
  return bins;
}

Calibration calibrationOf(const Json& json) {
  Calibration calibration;
  calibration.reads = static_cast<int>(numberOf(json, "reads", 1e9));
  const Json& rates = json.at("error_rates");
  if (!rates.is_null()) calibration.errorRates = ratesOf(rates, 1.0);
  calibration.codingShare = shareOf(json, "coding_share");
  calibration.truncatedShare = shareOf(json, "truncated_share");
  calibration.qualities = qualitiesOf(json.at("qualities"));
  return calibration;
}

}  // namespace

std::vector<Read> readsOf(std::span<const Record> records, bool useQualities) {
  std::vector<Read> reads;
  for (const Record& record : records) {
    reads.push_back({record.bases, {}});
    if (useQualities) reads.back().qualities = record.qualities;
  }
  return reads;
}

std::string calibrationText(const Calibration& calibration) {
  std::string text;
  if (calibration.errorRates) {
    const BaseErrorRates& rates = *calibration.errorRates;
    text = percent(rates.insertion) + " insertions, " + percent(rates.deletion) + " deletions, " +
           percent(rates.substitution) + " substitutions";
  }
  if (calibration.codingShare) {
    if (!text.empty()) text += "; ";
    text += percent(*calibration.codingShare) + " of the reads code";
  }
  if (calibration.truncatedShare) {
    if (!text.empty()) text += calibration.codingShare ? ", " : "; ";
    text += percent(*calibration.truncatedShare) +
            (calibration.codingShare ? " of these" : " of the coding reads") +
            " begin inside their coding region";
  }
  if (text.empty() || calibration.reads == 0) return text;
  return text + "; learnt from " + std::to_string(calibration.reads) + " reads" +
         (calibration.qualities.empty() ? "" : " and their qualities");
}

std::string calibrationJson(const Calibration& calibration) {
  Json json;
  json["reads"] = calibration.reads;
  json["error_rates"] = calibration.errorRates ? jsonOf(*calibration.errorRates) : Json(nullptr);
  json["coding_share"] = jsonOf(calibration.codingShare);
  json["truncated_share"] = jsonOf(calibration.truncatedShare);
  json["qualities"] = Json::array();
  for (const QualityBin& bin : calibration.qualities) {
    Json entry = jsonOf(bin.factors);
    entry["most"] = bin.most;
    json["qualities"].push_back(entry);
  }
  return json.dump();
}

Calibration parseCalibration(const std::string& text, const std::string& file) {
  try {
    const Json json = Json::parse(text);
    return calibrationOf(json.contains("calibration") ? json.at("calibration") : json);
  } catch (const Json::exception&) {
    throw Error(file, 0, 0, "holds no calibration");
  } catch (const Error& error) {
    throw Error(file, 0, 0, error.what());
  }
}

}  // namespace velto
