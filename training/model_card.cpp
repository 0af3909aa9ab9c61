#include "training/model_card.h"

#include <zlib.h>

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>

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
            {"noncoding", inputs(facts.noncodingFiles, facts.noncodingCounts)}};
  for (const TrainedDecoder& decoder : decoders) card.update(Json::parse(decoder.card));
  return card.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace velto
