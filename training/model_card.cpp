#include "training/model_card.h"

#include <zlib.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace velto {
namespace {

using Json = nlohmann::ordered_json;

// Rounded to four decimals: more would be noise.
double shortened(double value) { return std::round(value * 1e4) / 1e4; }

std::string baseName(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

Json inputs(const std::vector<std::string>& files, const RefusalCounts& counts) {
  Json list = Json::array();
  for (const std::string& file : files) {
    Json entry{{"file", baseName(file)}};
    if (file != "-") entry["crc32"] = fileChecksum(file);
    list.push_back(entry);
  }
  return {{"files", list}, {"accepted", counts.accepted()}, {"refused", counts.refused()}};
}

Json accuracy(const AccuracyTally& tally) {
  return {{"reads", tally.reads},
          {"correlation", shortened(tally.correlation())},
          {"frame_recall", shortened(tally.frameRecall())},
          {"frame_precision", shortened(tally.framePrecision())},
          {"frame_f1", shortened(tally.frameF1())},
          {"start_and_stop_exact", shortened(tally.exactRate())}};
}

Json accuracies(const PresetTallies& tallies) {
  const AccuracyTally& noncoding = tallies[kNoncodingReads];
  return {{"est", accuracy(tallies[kEstReads])},
          {"mild", accuracy(tallies[kMildReads])},
          {"clean", accuracy(tallies[kCleanReads])},
          {"noncoding", {{"reads", noncoding.reads}, {"called", shortened(noncoding.callRate())}}}};
}

Json ofClass(const TrainedClass& trained, const ReadClass& readClass) {
  const SampleCounts& n = trained.sample;
  return {{"class", readClass.name()},
          {"window", readClass.windowWidth},
          {"length_class", readClass.lengthId},
          {"gc_class", readClass.gcId},
          {"reads", n.reads},
          {"borrowed_reads", n.borrowedReads},
          {"lacked_reads", n.lackedReads},
          {"windows_in_frame", n.windows[0]},
          {"windows_out_of_frame", n.windows[1]},
          {"windows_outside", n.windows[2]},
          {"held_back", accuracies(trained.heldBack)}};
}

PresetTallies sumOfAll(const TrainedModel& model) {
  PresetTallies sum;
  for (const TrainedClass& trained : model) {
    for (std::size_t preset = 0; preset < kSearchPresets; ++preset) {
      sum[preset].add(trained.heldBack[preset]);
    }
  }
  return sum;
}

}  // namespace

std::string fileChecksum(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  uLong sum = crc32(0, nullptr, 0);
  std::vector<char> block(1 << 16);
  while (in) {
    in.read(block.data(), static_cast<std::streamsize>(block.size()));
    sum = crc32(sum, reinterpret_cast<const Bytef*>(block.data()), static_cast<uInt>(in.gcount()));
  }
  if (!in.eof()) throw std::runtime_error(path + ": cannot read");
  char text[9];
  std::snprintf(text, sizeof text, "%08lx", sum);
  return text;
}

std::string modelCardText(const CardFacts& facts, const TrainedModel& model) {
  Json card{{"format", 1},
            {"program", "velto " + facts.version},
            {"command", facts.command},
            {"seed", facts.seed},
            {"coding", inputs(facts.codingFiles, facts.codingCounts)},
            {"noncoding", inputs(facts.noncodingFiles, facts.noncodingCounts)},
            {"held_back", accuracies(sumOfAll(model))}};
  Json classes = Json::array();
  for (int c = 0; c < kReadClasses; ++c) {
    classes.push_back(ofClass(model[static_cast<std::size_t>(c)], readClassAt(c)));
  }
  card["classes"] = classes;
  return card.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace velto
