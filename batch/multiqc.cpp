#include "batch/multiqc.h"

#include <filesystem>
#include <nlohmann/json.hpp>

namespace velto {
namespace {

using Json = nlohmann::ordered_json;

Json column(const char* key, const char* title, const char* description, const char* format,
            const char* suffix) {
  Json json;
  json[key] = {{"title", title},   {"description", description}, {"namespace", "velto"},
               {"format", format}, {"suffix", suffix},           {"min", 0}};
  return json;
}

double percentOf(long part, long whole) {
  return whole > 0 ? 100.0 * static_cast<double>(part) / static_cast<double>(whole) : 0.0;
}

}  // namespace

std::string multiqcJson(const std::string& sample, const ScanCounts& counts,
                        const RunFigures& figures) {
  Json json;
  json["id"] = "velto";
  json["plot_type"] = "generalstats";
  json["pconfig"] = {
      column("reads", "Reads", "Reads in the input", "{:,.0f}", ""),
      column("coding", "Coding", "Reads with a coding region", "{:,.1f}", "%"),
      column("reverse", "Reverse", "Coding reads whose region is on the reverse strand", "{:,.1f}",
             "%"),
      column("complete", "Complete", "Coding regions with start and stop codon and none between",
             "{:,.1f}", "%"),
      column("insertions", "Extra/kb", "Extra bases per 1000 coding bases", "{:,.2f}", ""),
      column("deletions", "Missing/kb", "Missing bases per 1000 coding bases", "{:,.2f}", "")};
  json["data"][sample] = {
      {"reads", counts.reads},
      {"coding", percentOf(counts.coding, counts.reads)},
      {"reverse", percentOf(counts.codingMinus, counts.coding)},
      {"complete", percentOf(figures.readsOf(CodingType::kComplete), counts.coding)},
      {"insertions", figures.perKilobase(figures.insertions())},
      {"deletions", figures.perKilobase(figures.deletions())}};
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::string multiqcSample(const std::string& path) {
  const std::string name = std::filesystem::path(path).filename();
  const std::string end = kMultiqcEnd;
  const bool ends = name.size() > end.size() && name.ends_with(end);
  return ends ? name.substr(0, name.size() - end.size()) : name;
}

}  // namespace velto
