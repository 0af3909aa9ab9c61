// Fuzz target: the name and the description of a read, a zero byte between them, through every
// format and the drawings: no name may add a row, a column or a mark-up element.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "batch/formats/row_formats.h"
#include "draw/markup.h"
#include "draw/read_page.h"
#include "predict/coding_sequence.h"

namespace {

using Kind = velto::Frameshift::Kind;

// Bases 2 to 16 are ATG AAA (T) CCC GG. TAA: an inserted T at 8, a base lost before 14.
constexpr char kLetters[] = "GGATGAAATCCCGGTAAGG";

velto::Prediction codingPrediction() {
  velto::Prediction prediction;
  prediction.status = velto::Prediction::Status::kCoding;
  prediction.length = 19;
  prediction.start = 2;
  prediction.stop = 16;
  prediction.frameshifts = {{Kind::kInsertion, 8, 0.5}, {Kind::kDeletion, 14, 0.75}};
  prediction.frame = {-1, -1, 2, 2, 2, 2, 2, 2, -1, 0, 0, 0, 0, 0, 2, 2, 2, -1, -1};
  for (auto& scores : prediction.scores) scores.assign(19, 0.25);
  return prediction;
}

void expect(bool holds) {
  if (!holds) std::abort();
}

// Rows and columns.
std::pair<long, long> shapeOf(const std::string& text) {
  return {std::count(text.begin(), text.end(), '\n'), std::count(text.begin(), text.end(), '\t')};
}

std::string rowsOf(const velto::RowFormat& format, const velto::Record& record) {
  static const velto::Prediction prediction = codingPrediction();
  static const velto::CodingSequence coding =
      velto::codingSequence(prediction, kLetters, *velto::geneticCode(1));
  std::string text;
  format.append({record, 1, prediction, coding}, {}, text);
  return text;
}

std::string pageOf(const std::string& name) {
  static const velto::Prediction prediction = codingPrediction();
  return velto::readPage({name, prediction, kLetters, "MKPX", *velto::geneticCode(1)}, {});
}

// A string of JSON holds valid UTF-8 only.
bool isUtf8(const std::string& text) { return nlohmann::json::accept("\"" + text + "\""); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const uint8_t* const border = std::find(data, data + size, 0);
  const velto::Record plain{"read", "text", kLetters, 1, 1};
  velto::Record hostile = plain;
  hostile.name.assign(data, border);
  hostile.description.assign(border == data + size ? border : border + 1, data + size);
  for (const velto::RowFormat& format : velto::rowFormats()) {
    const std::string text = rowsOf(format, hostile);
    expect(shapeOf(text) == shapeOf(rowsOf(format, plain)));
    if (std::string(format.option) == "--json") expect(nlohmann::json::accept(text));
  }
  std::string shown = velto::escaped(std::string(data, data + size));
  expect(shown.find_first_of("<>\"'\n\t") == std::string::npos);
  std::replace(shown.begin(), shown.end(), '\\', '/');
  expect(isUtf8(shown));
  const std::string page = pageOf(hostile.name);
  static const auto elements = [](const std::string& text) {
    return std::count(text.begin(), text.end(), '<');
  };
  expect(elements(page) == elements(pageOf(plain.name)));
  return 0;
}
