// 1. Rows of reads  2. Writing  3. Reading
#include "simulation/truth_table.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <istream>
#include <string_view>

#include "seqio/input_error.h"

namespace velto {
namespace {

constexpr std::string_view kColumns[] = {
    "read", "length",     "transcript", "fragment_start", "fragment_length", "coding", "start",
    "stop", "start_kind", "stop_kind",  "insertions",     "deletions",       "strand"};

// The strand is the last column and may be missing.
constexpr std::size_t columnCount(Strands strands) {
  return std::size(kColumns) - (strands == Strands::kNamed ? 0 : 1);
}

constexpr std::string_view kExact = "exact";
constexpr std::string_view kPartial = "partial";

}  // namespace

// ---- 1. Rows of reads

std::vector<signed char> TruthRow::frames() const {
  std::vector<signed char> marks(static_cast<std::size_t>(length), -1);
  for (const CodingInterval& interval : coding) {
    for (int p = interval.first; p <= interval.last; ++p) {
      marks[static_cast<std::size_t>(p)] = static_cast<signed char>(interval.frame);
    }
  }
  return marks;
}

namespace {

std::vector<CodingInterval> intervalsOf(const std::vector<signed char>& frame) {
  std::vector<CodingInterval> intervals;
  int previous = -1;
  for (int p = 0; p < static_cast<int>(frame.size()); ++p) {
    const int now = frame[static_cast<std::size_t>(p)];
    if (now >= 0 && now == previous) {
      intervals.back().last = p;
    } else if (now >= 0) {
      intervals.push_back({p, p, now});
    }
    previous = now;
  }
  return intervals;
}

}  // namespace

TruthRow truthOf(const SimulatedRead& read, std::string name) {
  TruthRow row;
  row.read = std::move(name);
  row.length = read.length();
  row.transcript = read.source->name;
  row.fragment = read.fragment;
  row.coding = intervalsOf(read.frame);
  row.start = read.start;
  row.stop = read.stop;
  row.reversed = read.reversed;
  row.startExact = read.startInside;
  row.stopExact = read.stopInside;
  for (const Frameshift& shift : read.shifts) {
    const bool inserted = shift.kind == Frameshift::Kind::kInsertion;
    (inserted ? row.insertions : row.deletions).push_back(shift.position);
  }
  return row;
}

// ---- 2. Writing

namespace {

// 1-based position, or nothing for -1.
std::string positionText(int position) {
  return position < 0 ? std::string() : std::to_string(position + 1);
}

std::string kindText(const TruthRow& row, bool exact) {
  return row.isCoding() ? std::string(exact ? kExact : kPartial) : std::string();
}

std::string intervalsText(const std::vector<CodingInterval>& intervals) {
  std::string text;
  for (const CodingInterval& i : intervals) {
    if (!text.empty()) text += ',';
    text += std::to_string(i.first + 1) + "-" + std::to_string(i.last + 1) + ":" +
            std::to_string(i.frame);
  }
  return text;
}

std::string positionsText(const std::vector<int>& positions) {
  std::string text;
  for (const int position : positions) {
    if (!text.empty()) text += ',';
    text += positionText(position);
  }
  return text;
}

}  // namespace

std::string truthHeader(Strands strands) {
  std::string line;
  for (std::size_t i = 0; i < columnCount(strands); ++i) {
    if (i > 0) line += '\t';
    line += kColumns[i];
  }
  return line + "\n";
}

std::string truthLine(const TruthRow& row, Strands strands) {
  const std::string fields[] = {row.read,
                                std::to_string(row.length),
                                row.transcript,
                                positionText(row.fragment.start),
                                std::to_string(row.fragment.length),
                                intervalsText(row.coding),
                                positionText(row.start),
                                positionText(row.stop),
                                kindText(row, row.startExact),
                                kindText(row, row.stopExact),
                                positionsText(row.insertions),
                                positionsText(row.deletions),
                                row.reversed ? "-" : "+"};
  std::string line = fields[0];
  for (std::size_t i = 1; i < columnCount(strands); ++i) line += "\t" + fields[i];
  return line + "\n";
}

// ---- 3. Reading

namespace {

// Calls use(part) for every part of the text between separators, one at least.
template <typename Use>
void eachPart(std::string_view text, char separator, const Use& use) {
  for (;;) {
    const std::size_t end = text.find(separator);
    use(text.substr(0, end));
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

// Reads the fields of one row; every failure names file, line and column.
class RowReader {
 public:
  RowReader(const std::string& file, long line, std::string_view text, Strands strands)
      : file_(file), line_(line) {
    const auto columns = 1 + std::count(text.begin(), text.end(), '\t');
    if (columns != static_cast<std::ptrdiff_t>(columnCount(strands))) {
      fail("expected " + std::to_string(columnCount(strands)) + " columns, found " +
           std::to_string(columns));
    }
    eachPart(text, '\t', [this](std::string_view field) { fields_.push_back(field); });
  }

  TruthRow read() const {
    TruthRow row;
    row.read = fields_[0];
    row.length = number(1, fields_[1], 0);
    row.transcript = fields_[2];
    row.fragment = {number(3, fields_[3], 1) - 1, number(4, fields_[4], 0)};
    row.coding = intervals(row.length);
    row.start = optionalPosition(6);
    row.stop = optionalPosition(7);
    checkEnds(row);
    row.startExact = exact(8, row.isCoding());
    row.stopExact = exact(9, row.isCoding());
    row.insertions = positions(10, row);
    checkInserted(row);
    row.deletions = positions(11, row);
    row.reversed = fields_.size() > kStrand && isMinus();
    return row;
  }

 private:
  [[noreturn]] void fail(const std::string& reason) const {
    throw InputError(file_, 0, line_, reason);
  }

  [[noreturn]] void failAt(std::size_t column, const std::string& reason) const {
    fail("column " + std::string(kColumns[column]) + ": " + reason);
  }

  int number(std::size_t column, std::string_view text, int least) const {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || value < least) {
      failAt(column, "'" + std::string(text) + "' is not a number from " + std::to_string(least));
    }
    return value;
  }

  int optionalPosition(std::size_t column) const {
    return fields_[column].empty() ? -1 : number(column, fields_[column], 1) - 1;
  }

  std::vector<CodingInterval> intervals(int length) const {
    constexpr std::size_t kColumn = 5;
    std::vector<CodingInterval> result;
    if (fields_[kColumn].empty()) return result;
    int before = -1;
    eachPart(fields_[kColumn], ',', [&](std::string_view text) {
      result.push_back(interval(kColumn, text));
      const CodingInterval& i = result.back();
      if (i.first <= before || i.last < i.first || i.last >= length) {
        failAt(kColumn, "interval '" + std::string(text) + "' is out of range or out of order");
      }
      before = i.last;
    });
    return result;
  }

  // Reads "a-b:f".
  CodingInterval interval(std::size_t column, std::string_view text) const {
    const std::size_t dash = text.find('-');
    const std::size_t colon = text.find(':');
    if (dash == std::string_view::npos || colon == std::string_view::npos || colon < dash) {
      failAt(column, "'" + std::string(text) + "' is not of the form a-b:frame");
    }
    const int first = number(column, text.substr(0, dash), 1) - 1;
    const int last = number(column, text.substr(dash + 1, colon - dash - 1), 1) - 1;
    const int frame = number(column, text.substr(colon + 1), 0);
    if (frame > 2) failAt(column, "a frame is 0, 1 or 2");
    return {first, last, frame};
  }

  void checkEnds(const TruthRow& row) const {
    const int first = row.coding.empty() ? -1 : row.coding.front().first;
    const int last = row.coding.empty() ? -1 : row.coding.back().last;
    if (row.start != first) failAt(6, "is not where the coding intervals begin");
    if (row.stop != last) failAt(7, "is not where the coding intervals end");
  }

  bool exact(std::size_t column, bool coding) const {
    const std::string_view text = fields_[column];
    if (coding ? text != kExact && text != kPartial : !text.empty()) {
      failAt(column, coding ? "must be exact or partial" : "must be empty without coding region");
    }
    return text == kExact;
  }

  bool isMinus() const {
    const std::string_view text = fields_[kStrand];
    if (text != "+" && text != "-") failAt(kStrand, "must be + or -");
    return text == "-";
  }

  // Comma-separated positions inside the coding region.
  std::vector<int> positions(std::size_t column, const TruthRow& row) const {
    std::vector<int> result;
    if (fields_[column].empty()) return result;
    eachPart(fields_[column], ',', [&](std::string_view text) {
      const int position = number(column, text, 1) - 1;
      if (position <= row.start || position > row.stop) {
        failAt(column, "position " + std::string(text) + " is not inside the coding region");
      }
      if (!result.empty() && position < result.back()) failAt(column, "positions must ascend");
      result.push_back(position);
    });
    return result;
  }

  // Inserted bases, which lie between the first and the last coding base, are no coding bases, and
  // none stands twice.
  void checkInserted(const TruthRow& row) const {
    auto interval = row.coding.begin();
    int before = -1;
    for (const int position : row.insertions) {
      while (interval->last < position) ++interval;
      if (interval->first <= position || position == before) {
        failAt(10,
               "position " + std::to_string(position + 1) + " is a coding base or stands twice");
      }
      before = position;
    }
  }

  static constexpr std::size_t kStrand = std::size(kColumns) - 1;

  const std::string& file_;
  long line_;
  std::vector<std::string_view> fields_;
};

// Keeps a file without line feeds from filling the memory.
constexpr std::size_t kMostLineBytes = 100'000'000;

// Takes the line of this number without its line feed; false at the end of the file.
bool nextLine(std::istream& in, const std::string& file, long number, std::string& line) {
  line.clear();
  for (char byte; in.get(byte) && byte != '\n';) {
    if (line.size() == kMostLineBytes) throw InputError(file, 0, number, "line too long");
    line += byte;
  }
  return in || !line.empty();
}

}  // namespace

std::vector<TruthRow> readTruthTable(std::istream& in, const std::string& file) {
  std::string line;
  nextLine(in, file, 1, line);
  const Strands strands =
      line + "\n" == truthHeader(Strands::kNamed) ? Strands::kNamed : Strands::kAllPlus;
  if (line + "\n" != truthHeader(strands)) {
    throw InputError(file, 0, 1, "not the header line of a truth table");
  }
  std::vector<TruthRow> rows;
  for (long number = 2; nextLine(in, file, number, line); ++number) {
    rows.push_back(RowReader(file, number, line, strands).read());
  }
  if (in.bad()) throw InputError(file, 0, 0, "cannot be read to its end");
  return rows;
}

}  // namespace velto
