#include "training/model_card.h"

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>

#include "evaluation/evaluation_figures.h"
#include "predict/model_card.h"

namespace velto {
namespace {

using Json = nlohmann::ordered_json;

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

// Rounded to four decimals: more would be noise. Null where there was nothing to be judged.
Json shortened(const FigureValue& figure) {
  return figure.value ? Json(std::round(*figure.value * 1e4) / 1e4) : Json();
}

Json figuresOf(const EvaluationCounts& counts) {
  return {{"reads", counts.reads},
          {"frame_f1", shortened(frameF1Of(counts))},
          {"correlation", shortened(correlationOf(counts))},
          {"start_and_stop_exact", shortened(bothExactOf(counts))},
          {"noncoding_called", shortened(noncodingCalledOf(counts))}};
}

// {decoder: {preset: figures}}.
Json accuracies(const std::vector<HeldBackAccuracy>& ofDecoders) {
  Json card = Json::object();
  for (const HeldBackAccuracy& accuracy : ofDecoders) {
    Json& decoder = card[accuracy.front().decoder];
    for (std::size_t p = 0; p < accuracy.size(); ++p) {
      decoder[kJudgedPresets[p]] = figuresOf(accuracy[p].total);
    }
  }
  return card;
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
  if (!in.eof()) throw Error(path, 0, 0, "cannot be read");
  char text[9];
  std::snprintf(text, sizeof text, "%08lx", sum);
  return text;
}

std::string modelCardText(const CardFacts& facts, std::span<const TrainedDecoder> decoders) {
  Json card{{"format", kModelFormat},
            {"program", "velto " + facts.version},
            {"command", facts.command},
            {"seed", facts.seed},
            {"coding", inputs(facts.codingFiles, facts.codingCounts)},
            {"noncoding", inputs(facts.noncodingFiles, facts.noncodingCounts)},
            {"judged", accuracies(facts.accuracy)}};
  for (const TrainedDecoder& decoder : decoders) card.update(Json::parse(decoder.card));
  return card.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

namespace {

// The number at a place such as "/coding/accepted".
std::optional<double> numberAt(const Json& card, const std::string& place) {
  const Json::json_pointer pointer(place);
  if (!card.contains(pointer) || !card[pointer].is_number()) return std::nullopt;
  return card[pointer].get<double>();
}

long countAt(const Json& card, const std::string& place) {
  const std::optional<double> count = numberAt(card, place);
  return count && *count >= 0.0 && *count < 1e15 ? static_cast<long>(*count) : -1;
}

// Of records of one kind, from the inputs of the decoder's own where it was trained apart.
long acceptedOf(const Json& card, const std::string& decoder, const std::string& kind) {
  const std::string place = "/" + kind + "/accepted";
  const long own = countAt(card, "/" + decoder + place);
  return own < 0 ? countAt(card, place) : own;
}

}  // namespace

DecoderSummary readDecoderSummary(const std::string& directory, const std::string& decoder) {
  std::ifstream in(directory + '/' + kModelCardFile, std::ios::binary);
  const Json card = Json::parse(in, nullptr, false);
  DecoderSummary summary;
  if (!card.is_object()) return summary;
  summary.coding = acceptedOf(card, decoder, "coding");
  summary.noncoding = acceptedOf(card, decoder, "noncoding");
  const auto figure = [&](const char* preset, const char* name) {
    return numberAt(card, "/judged/" + decoder + "/" + preset + "/" + name);
  };
  std::transform(kJudgedPresets.begin(), kJudgedPresets.end(), summary.frameF1.begin(),
                 [&](const char* preset) { return figure(preset, "frame_f1"); });
  summary.noncodingCalled = figure(kJudgedPresets.front(), "noncoding_called");
  return summary;
}

}  // namespace velto
