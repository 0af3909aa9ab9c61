// Fuzz target: the posterior decoder's model file with some of its lines replaced. The bytes are
// edits, two for the number of a line and then its new text up to a line feed. What is accepted
// must come back whole when it is written and read again, and decode a read within bounds.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "core/call.h"
#include "hmm/hmm_decoder.h"
#include "hmm/hmm_model_file.h"
#include "hmm/toy_model.h"
#include "tests/support/reads.h"

namespace {

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = text.find('\n', begin);
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

std::string edited(std::vector<std::string> lines, const uint8_t* data, size_t size) {
  const uint8_t* const end = data + size;
  while (end - data > 2) {
    const std::size_t number = static_cast<std::size_t>(data[0]) << 8 | data[1];
    const uint8_t* const stop = std::find(data + 2, end, '\n');
    // Lines behind the tables count from the end, so that two bytes reach them.
    lines[lines.size() - 1 - number % lines.size()].assign(data + 2, stop);
    data = stop == end ? end : stop + 1;
  }
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

void decodeWith(const velto::HmmModel& model) {
  velto::test::Random random(3);
  const std::vector<short> codes = velto::test::baseCodes(
      "ATG" + velto::test::repeated("GCC", 30) + "N" + velto::test::randomLetters(random, 146));
  const velto::HmmDecoder decoder(std::make_shared<velto::HmmModel>(model));
  const auto scratch = decoder.scratch();
  velto::Call call;
  decoder.decode({codes, {}}, {true, 0.0}, *scratch, call);
  const auto length = static_cast<int>(codes.size());
  if (!call.coding) return;
  if (call.start < 0 || call.start > call.stop || call.stop >= length + 2) std::abort();
  if (call.frame.size() != codes.size()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::vector<std::string> lines = linesOf(hmmModelText(velto::toyModel()));
  const std::string text = edited(lines, data, size);
  velto::HmmModel model;
  if (!velto::readHmmModel(text, model).regular()) return 0;
  const std::string written = velto::hmmModelText(model);
  velto::HmmModel again;
  if (!velto::readHmmModel(written, again).regular()) std::abort();
  if (velto::hmmModelText(again) != written) std::abort();
  decodeWith(model);
  return 0;
}
