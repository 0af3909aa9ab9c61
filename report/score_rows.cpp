#include "report/score_rows.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "core/six_digits.h"
#include "model/read_data.h"

namespace velto {
namespace {

// The scores of one frame as text; most bases show the same score as the base before.
class ScoreColumn {
 public:
  explicit ScoreColumn(const std::vector<double>& scores) : scores_(scores) {}

  // The score of a base, behind a comma.
  const std::string& text(std::size_t base) {
    // Bit by bit, since 0 and -0 are not written alike.
    const auto bits = std::bit_cast<std::uint64_t>(scores_[base]);
    if (text_.empty() || bits != bits_) {
      bits_ = bits;
      text_ = ',';
      appendSixDigits(text_, scores_[base]);
    }
    return text_;
  }

 private:
  const std::vector<double>& scores_;  // [base]
  std::uint64_t bits_ = 0;             // of the score asked for last
  std::string text_;                   // of that score
};

}  // namespace

void appendScoreRows(const short* seq, int length, const std::vector<double> (&scores)[3],
                     std::string& rows) {
  ScoreColumn columns[] = {ScoreColumn(scores[0]), ScoreColumn(scores[1]), ScoreColumn(scores[2])};
  char row[80];  // six digits, their sign, point and exponent three times
  for (std::size_t i = 0; i < static_cast<std::size_t>(length); ++i) {
    char* end = row;
    *end++ = ReadData::outPutBase(seq[i]);
    for (ScoreColumn& column : columns) {
      const std::string& text = column.text(i);
      end = std::copy(text.begin(), text.end(), end);
    }
    *end++ = '\n';
    rows.append(row, static_cast<std::size_t>(end - row));
  }
}

}  // namespace velto
