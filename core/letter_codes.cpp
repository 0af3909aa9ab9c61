#include "core/letter_codes.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <iterator>

#include "core/base_code.h"

namespace velto {
namespace {

using CodeTable = std::array<short, UCHAR_MAX + 1>;  // [letter]

CodeTable exactTable() {
  CodeTable table{};
  for (size_t letter = 0; letter < table.size(); ++letter) {
    table[letter] = baseCode(static_cast<char>(letter));
  }
  return table;
}

CodeTable foldedTable() {
  CodeTable table = exactTable();
  table['U'] = table['T'];
  for (const char upper : {'A', 'C', 'G', 'T', 'U'}) {
    table[static_cast<size_t>(upper - 'A' + 'a')] = table[static_cast<size_t>(upper)];
  }
  return table;
}

const CodeTable& tableOf(Letters letters) {
  static const CodeTable exact = exactTable();
  static const CodeTable folded = foldedTable();
  return letters == Letters::kExact ? exact : folded;
}

}  // namespace

void codeLetters(std::string_view bases, Letters letters, std::vector<short>& codes) {
  const CodeTable& table = tableOf(letters);
  codes.resize(bases.size());
  std::transform(bases.begin(), bases.end(), codes.begin(),
                 [&table](char letter) { return table[static_cast<unsigned char>(letter)]; });
}

// Without a table and in bytes, so that compilers look at many letters at once.
long long countUnknown(std::string_view bases, Letters letters) {
  const bool folded = letters == Letters::kFolded;
  const std::uint8_t lower = folded ? 'a' - 'A' : 0;  // a bit
  const auto byte = [lower](char letter) { return static_cast<std::uint8_t>(letter | lower); };
  const std::uint8_t a = byte('A'), c = byte('C'), g = byte('G'), t = byte('T');
  const std::uint8_t u = folded ? byte('U') : t;
  unsigned known = 0;
  for (const char letter : bases) {
    const std::uint8_t l = byte(letter);
    known += static_cast<std::uint8_t>(int{l == a} | int{l == c} | int{l == g} | int{l == t} |
                                       int{l == u});
  }
  return static_cast<long long>(bases.size()) - known;
}

void reverseComplement(std::vector<short>& codes) {
  std::reverse(codes.begin(), codes.end());
  for (short& code : codes) {
    if (isKnownBase(code)) code ^= 1;  // A 0 and T 1, G 2 and C 3
  }
}

double gcPercent(std::span<const short> codes) {
  if (codes.empty()) return 0.0;
  const auto gc = std::count_if(codes.begin(), codes.end(), [](short code) {
    return code == baseCode('G') || code == baseCode('C');
  });
  return static_cast<double>(gc) * 100.0 / static_cast<double>(codes.size());
}

std::string predictedLetters(std::string_view bases, Strand strand, Letters letters) {
  const CodeTable& table = tableOf(letters);
  const int turn = strand == Strand::kMinus ? 1 : 0;  // as in reverseComplement
  std::string text(bases.size(), 'N');
  std::transform(bases.begin(), bases.end(), text.begin(), [&](char letter) {
    const short code = table[static_cast<unsigned char>(letter)];
    return isKnownBase(code) ? "ATGC"[code ^ turn] : 'N';
  });
  if (turn != 0) std::reverse(text.begin(), text.end());
  return text;
}

}  // namespace velto
