#include "report/score_rows.h"

#include <charconv>

#include "model/read_data.h"

namespace velto {
namespace {

// The text that a stream of the usual precision would write, made faster.
void writeNumber(std::ostream& out, double number) {
  constexpr int kPrecision = 6;
  char text[32];
  const std::to_chars_result end =
      std::to_chars(text, text + sizeof text, number, std::chars_format::general, kPrecision);
  out.write(text, end.ptr - text);
}

}  // namespace

void writeScoreRows(std::ostream& out, const short* seq, int length,
                    const std::vector<double> (&scores)[3]) {
  for (int i = 0; i < length; ++i) {
    out << ReadData::outPutBase(seq[i]);
    for (const std::vector<double>& ofFrame : scores) {
      out << ',';
      writeNumber(out, ofFrame[static_cast<std::size_t>(i)]);
    }
    out << '\n';
  }
}

}  // namespace velto
