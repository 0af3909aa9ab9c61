#include "core/score_rows.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "core/base_code.h"
#include "core/six_digits.h"

namespace velto {
namespace {

// Letters of a score at most, the comma before it included, as in ",-1.23457e-05"; texts are copied
// with the room behind them, since a copy of a known length is fast.
constexpr std::size_t kMostScoreLetters = 16;
constexpr std::size_t kMostRowLetters = 1 + 3 * kMostScoreLetters + 1;

// The scores of one frame as text; most bases show the same score as the base before.
class ScoreColumn {
 public:
  explicit ScoreColumn(const std::vector<double>& scores) : scores_(scores) {}

  // Writes the score of a base, behind a comma, where there is room for kMostScoreLetters; returns
  // the text's end.
  char* write(std::size_t base, char* text) {
    // Bit by bit, since 0 and -0 are not written alike.
    const auto bits = std::bit_cast<std::uint64_t>(scores_[base]);
    if (length_ == 0 || bits != bits_) format(bits);
    std::memcpy(text, text_.data(), kMostScoreLetters);
    return text + length_;
  }

 private:
  void format(std::uint64_t bits) {
    std::string text = ",";
    appendSixDigits(text, std::bit_cast<double>(bits));
    bits_ = bits;
    length_ = text.copy(text_.data(), kMostScoreLetters);
  }

  const std::vector<double>& scores_;  // [base]
  std::uint64_t bits_ = 0;             // of the score asked for last
  std::array<char, kMostScoreLetters> text_{};
  std::size_t length_ = 0;  // of that score's text; 0: none yet
};

}  // namespace

void appendScoreRows(const short* seq, int length, const std::vector<double> (&scores)[3],
                     std::string& rows) {
  ScoreColumn columns[] = {ScoreColumn(scores[0]), ScoreColumn(scores[1]), ScoreColumn(scores[2])};
  std::array<char, 64 * kMostRowLetters> block;
  char* const lastRow = block.data() + block.size() - kMostRowLetters;
  char* end = block.data();
  for (std::size_t i = 0; i < static_cast<std::size_t>(length); ++i) {
    *end++ = baseLetter(seq[i]);
    for (ScoreColumn& column : columns) end = column.write(i, end);
    *end++ = '\n';
    if (end <= lastRow) continue;
    rows.append(block.data(), end);
    end = block.data();
  }
  rows.append(block.data(), end);
}

}  // namespace velto
