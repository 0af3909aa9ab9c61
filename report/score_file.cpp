#include "report/score_file.h"

#include <charconv>
#include <fstream>

#include "model/read_data.h"

namespace velto {
namespace {

// Index into the score series of `frame` for base i of a read of `length` bases, -1 for none. The
// first three rows show the first codons as they begin; from the last whole frame-0 codon on each
// index is one codon further back, so that the last values are repeated.
int scoreIndex(int i, int frame, int length) {
  const int lastCodon = 3 * (length / 3) - 3;
  if (i < 3) return i >= frame ? 0 : -1;
  if (i < lastCodon) return (i - frame) / 3;
  return i / 3 - (frame == 2 ? 2 : 1);
}

void writeColumn(std::ostream& out, const std::vector<double>& series, int index) {
  out << ',';
  if (index < 0 || static_cast<size_t>(index) >= series.size()) {
    out << 0;
  } else {
    // The text that a stream of the usual precision would write, made faster.
    constexpr int kPrecision = 6;
    char text[32];
    const std::to_chars_result end =
        std::to_chars(text, text + sizeof text, series[static_cast<size_t>(index)],
                      std::chars_format::general, kPrecision);
    out.write(text, end.ptr - text);
  }
}

}  // namespace

void writeScoreRows(std::ostream& out, const short* seq, int length,
                    const std::vector<double> (&scores)[3]) {
  for (int i = 0; i < length; ++i) {
    out << ReadData::outPutBase(seq[i]);
    for (int f = 0; f < 3; ++f) writeColumn(out, scores[f], scoreIndex(i, f, length));
    out << '\n';
  }
}

void writeScoreFile(std::ostream& out, const WebPredict& result) {
  writeScoreRows(out, result.seqArray, result.arrayLen, result.frameScore);
}

int WebPredict::OutValLayout(int /*width*/, char* fileName) {
  std::ofstream out(fileName, std::ios::trunc);
  writeScoreFile(out, *this);
  return 0;
}

}  // namespace velto
