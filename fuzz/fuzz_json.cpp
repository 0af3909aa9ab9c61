// Fuzz target: the bytes of a calibration and of a model's card. A calibration that is accepted
// must come back whole when it is written, and decode a read within bounds.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "batch/file_calibration.h"
#include "core/call.h"
#include "hmm/hmm_decoder.h"
#include "hmm/toy_model.h"
#include "predict/model_card.h"
#include "velto/velto.h"

namespace {

constexpr char kBases[] = "ATGGCCATGGCCATGGCCNATGGCCATGGCCTAA";

void expect(bool holds) {
  if (!holds) std::abort();
}

void decodeWith(const velto::Calibration& calibration) {
  static const velto::HmmDecoder plain(std::make_shared<velto::HmmModel>(velto::toyModel()));
  static const std::vector<short> codes = velto::codesOf(kBases);
  static const std::vector<std::uint8_t> phred(codes.size(), 20);
  const auto decoder = plain.calibrated(calibration);
  velto::Call call;
  decoder->decode({codes, phred}, {}, *decoder->scratch(), call);
  expect(call.probability >= 0.0 && call.probability <= 1.0);
  expect(!call.coding || call.frame.size() == codes.size());
}

void readCalibration(const std::string& text) {
  velto::Calibration calibration;
  try {
    calibration = velto::parseCalibration(text, "fuzz");
  } catch (const velto::Error&) {
    return;
  }
  const std::string written = velto::calibrationJson(calibration);
  expect(velto::calibrationJson(velto::parseCalibration(written, "fuzz")) == written);
  decodeWith(calibration);
}

void readCard(const std::string& text) {
  try {
    velto::readCardDecoders(velto::MemorySource({{velto::kModelCardFile, text}}));
  } catch (const velto::ModelError&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  readCalibration(text);
  readCard(text);
  return 0;
}
