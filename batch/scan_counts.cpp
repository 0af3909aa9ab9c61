#include "batch/scan_counts.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "batch/file_calibration.h"

namespace velto {

void ScanCounts::add(const Prediction& prediction, long long unknownBasesOfRead) {
  ++reads;
  bases += prediction.length;
  unknownBases += unknownBasesOfRead;
  if (2 * unknownBasesOfRead > prediction.length) ++mostlyUnknown;
  switch (prediction.status) {
    case Prediction::Status::kCoding:
      ++coding;
      if (prediction.strand == Strand::kMinus) ++codingMinus;
      break;
    case Prediction::Status::kNoncoding:
      ++noncoding;
      break;
    case Prediction::Status::kShort:
      ++shortReads;
      break;
    case Prediction::Status::kEmpty:
      ++emptyReads;
  }
}

void ScanCounts::add(const ScanCounts& other) {
  reads += other.reads;
  coding += other.coding;
  codingMinus += other.codingMinus;
  noncoding += other.noncoding;
  shortReads += other.shortReads;
  emptyReads += other.emptyReads;
  bases += other.bases;
  unknownBases += other.unknownBases;
  mostlyUnknown += other.mostlyUnknown;
}

std::string countsText(const ScanCounts& counts, double seconds) {
  char time[32];
  std::snprintf(time, sizeof time, "%.2f", seconds);
  return std::to_string(counts.reads) + " reads: " + std::to_string(counts.coding) + " coding (" +
         std::to_string(counts.coding - counts.codingMinus) + " on the plus strand, " +
         std::to_string(counts.codingMinus) + " on the minus strand), " +
         std::to_string(counts.noncoding) + " non-coding, " +
         std::to_string(counts.shortReads + counts.emptyReads) + " refused (" +
         std::to_string(counts.shortReads) + " short, " + std::to_string(counts.emptyReads) +
         " empty); " + std::to_string(counts.bases) + " bases; " + time + " s";
}

std::string unknownBasesWarning(const ScanCounts& counts) {
  if (counts.mostlyUnknown == 0) return "";
  char share[32];
  std::snprintf(
      share, sizeof share, "%.1f",
      100.0 * static_cast<double>(counts.unknownBases) / static_cast<double>(counts.bases));
  return std::to_string(counts.mostlyUnknown) + " of " + std::to_string(counts.reads) +
         " reads have more unknown than known bases (" + share +
         " % of all bases are unknown): masked sequence, or protein?";
}

std::string summaryJson(const ScanRun& run, const ScanCounts& counts, const RunFigures& figures) {
  nlohmann::ordered_json json;
  json["version"] = run.version;
  json["model"] = run.modelDirectory;
  json["decoder"] = run.decoder;
  json["inputs"] = run.inputs;
  json["genetic_code"] = run.geneticCode;
  json["calibration"] = nlohmann::ordered_json::parse(calibrationJson(run.calibration));
  json["threads"] = run.threads;
  json["reads"] = counts.reads;
  json["coding"] = counts.coding;
  json["coding_by_strand"] = {{"plus", counts.coding - counts.codingMinus},
                              {"minus", counts.codingMinus}};
  json["noncoding"] = counts.noncoding;
  json["refused"] = {{"short", counts.shortReads}, {"empty", counts.emptyReads}};
  json["bases"] = counts.bases;
  json["unknown_bases"] = counts.unknownBases;
  json["figures"] = nlohmann::ordered_json::parse(figuresJson(figures));
  json["seconds"] = run.seconds;
  return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

}  // namespace velto
