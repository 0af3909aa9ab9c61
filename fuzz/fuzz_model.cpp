// Fuzz target: the bytes of a parameter file and of a matrix file through the loaders to the vote
// and the frame path. A zero byte stands between the two files.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>

#include "decoder/decode_frames.h"
#include "model/model_file.h"
#include "model/plain_engine.h"
#include "model/sliding_engine.h"
#include "tests/support/reads.h"

namespace {

// A read of 240 bases that holds Ala codons, stops and an unknown base.
const std::vector<short>& fuzzRead() {
  static const std::vector<short> codes = [] {
    velto::test::Random random(2);
    return velto::test::baseCodes("ATG" + velto::test::repeated("GCC", 30) + "N" +
                                  velto::test::randomLetters(random, 146));
  }();
  return codes;
}

void expectSame(const std::vector<double>& a, const std::vector<double>& b) {
  const auto same = [](double x, double y) { return x == y || (x != x && y != y); };
  if (!std::equal(a.begin(), a.end(), b.begin(), b.end(), same)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const uint8_t* const border = std::find(data, data + size, 0);
  std::istringstream parameters(std::string(data, border));
  std::istringstream matrix(border == data + size ? std::string()
                                                  : std::string(border + 1, data + size));
  velto::ModelTables tables;
  velto::readParameterFile(parameters, velto::kModelHypotheses, tables);
  velto::readMatrixFile(matrix, tables.malkovChain);

  const velto::ModelView model{tables, 96};
  const std::vector<short>& read = fuzzRead();
  const auto length = static_cast<int>(read.size());
  const velto::WindowScores scores = velto::SlidingEngine(model, read.data(), length).scores();
  const velto::WindowScores plain = velto::PlainEngine(model, read.data(), length).scores();
  for (int f = 0; f < 3; ++f) expectSame(scores.frame[f], plain.frame[f]);

  velto::CodedRead codons;
  codons.assign(read.data(), length);
  velto::SlidingEngine votes(model, read.data(), length);
  velto::FrameScratch scratch;
  velto::decodeFrames({tables.malkovChain, 96}, codons, length, votes, false, scratch);
  return 0;
}
