// 1. Lines and fields  2. Parameter file  3. Matrix file  4. Writing
#include "model/model_file.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <locale>
#include <sstream>
#include <string_view>

#include "core/plain_real.h"

namespace velto {
namespace {

// ---- 1. Lines and fields

// Characters of a line buffer with the terminating zero; the format's limit of one line.
constexpr int kLineBuffer = 256;

// Walks a model file line by line and field by field and notes the first irregularity.
class LineReader {
 public:
  explicit LineReader(std::istream& in) : in_(in) {}

  void nextLine() {
    finishLine();
    const bool readable = in_.good();
    in_.getline(buffer_, kLineBuffer);
    rest_ = buffer_;
    fieldsLeft_ = true;
    ++line_;
    if (in_.gcount() == 0) {
      note(readable && !in_.eof() ? "unreadable line" : "the file ends early");
    } else if (in_.fail()) {
      note("the line is longer than 255 characters");
    } else if (endsBeforeLineBreak()) {
      note("the line holds a zero byte");
    }
    lineOpen_ = true;
  }

  int nextInt() {
    char* end = nullptr;
    const long value = std::strtol(rest_, &end, 10);
    if (value < INT_MIN || value > INT_MAX) note("a number is out of range");
    advance(end);
    return static_cast<int>(value);
  }

  // Numbers in the usual form read alike in any locale; what strtod makes of other text matters to
  // the one-read program only, which sets none.
  double nextReal() {
    const std::string_view field(rest_, std::strcspn(rest_, ",\r"));
    const char* end = field.data() + field.size();
    double value = 0.0;
    if (!readPlainReal(field, value)) {
      char* stop = nullptr;
      value = std::strtod(rest_, &stop);
      end = stop;
    }
    if (!std::isfinite(value)) note("a number is not finite");
    advance(end);
    return value;
  }

  void note(const char* reason) {
    if (status_.line == 0) status_ = {line_, reason};
  }

  // The status after the last line that the format knows.
  ModelFileStatus finish() {
    finishLine();
    lineOpen_ = false;
    if (in_.good() && in_.peek() != std::istream::traits_type::eof()) {
      ++line_;
      note("there are more lines than the format has");
    }
    return status_;
  }

 private:
  // True if a zero byte hides the rest of the line from number conversion.
  bool endsBeforeLineBreak() const {
    const std::streamsize lineBreak = in_.eof() ? 0 : 1;
    return static_cast<std::streamsize>(std::strlen(buffer_)) + lineBreak < in_.gcount();
  }

  // Number conversion also takes leading blanks, a plus sign and hexadecimal digits, which no
  // writer of model files puts there.
  static bool isPlainNumber(const char* field, const char* end) {
    return (*field == '-' || *field == '.' || std::isdigit(static_cast<unsigned char>(*field))) &&
           std::none_of(field, end, [](char c) { return c == 'x' || c == 'X'; });
  }

  // The text after the next comma is what remains; without a comma the same text remains.
  void advance(const char* end) {
    if (!fieldsLeft_) note("a field is missing");
    const char* comma = std::strchr(rest_, ',');
    const char* stop = comma != nullptr ? comma : rest_ + std::strlen(rest_);
    const bool carriageReturn = comma == nullptr && *end == '\r' && end[1] == '\0';
    if (!isPlainNumber(rest_, end) || (end != stop && !carriageReturn)) {
      note("a field is not a number");
    }
    if (comma != nullptr) {
      rest_ = comma + 1;
    } else {
      fieldsLeft_ = false;
    }
  }

  // A comma behind the last field is allowed.
  void finishLine() {
    if (lineOpen_ && fieldsLeft_ && *rest_ != '\0' && *rest_ != '\r') {
      note("there are more fields than the format has");
    }
  }

  std::istream& in_;
  char buffer_[kLineBuffer] = {};
  const char* rest_ = buffer_;  // what remains of the line
  bool fieldsLeft_ = false;     // false once the last field of the line was taken
  bool lineOpen_ = false;
  int line_ = 0;  // 1-based
  ModelFileStatus status_;
};

// ---- 2. Parameter file

void readHypothesis(LineReader& lines, fnlHypo& hypothesis) {
  lines.nextLine();
  hypothesis.kind = lines.nextInt();
  hypothesis.elem1 = lines.nextInt();
  hypothesis.elem2 = lines.nextInt();
  hypothesis.elem3 = lines.nextInt();
  hypothesis.gap = lines.nextInt();
  hypothesis.alpha = lines.nextReal();
  if (!indicesInRange(hypothesis)) lines.note("an index points outside its table");
}

void readRealThreshold(LineReader& lines, RealThreshold& threshold) {
  lines.nextLine();
  threshold.polarity = lines.nextInt();
  threshold.trsld = lines.nextReal();
}

void readCountThreshold(LineReader& lines, CountThreshold& threshold) {
  lines.nextLine();
  threshold.polarity = lines.nextInt();
  threshold.trsld = lines.nextInt();
}

void readPrior(LineReader& lines, double (&prior)[2]) {
  lines.nextLine();
  prior[0] = lines.nextReal();
  prior[1] = lines.nextReal();
}

}  // namespace

bool indicesInRange(const fnlHypo& h) {
  const auto base = [](int code) { return code >= 0 && code <= 3; };
  const auto acid = [](int number) { return number >= 0 && number < kAminoAcids; };
  switch (h.kind) {
    case kCodonKind:
      return base(h.elem1) && base(h.elem2) && base(h.elem3);
    case kSingleAcidKind:
      return acid(h.elem1);
    case kPairKind:
      return acid(h.elem1) && acid(h.elem2) && h.gap >= 0 && h.gap < kPairGaps;
    default:
      return true;
  }
}

ModelFileStatus readParameterFile(std::istream& in, int rounds, ModelTables& tables) {
  LineReader lines(in);
  const size_t loaded = static_cast<size_t>(std::max(rounds, 0));
  tables.fh.resize(tables.fh.size() + loaded);
  for (size_t i = 0; i < loaded; ++i) readHypothesis(lines, tables.fh[i]);
  for (size_t i = loaded; i < kModelHypotheses; ++i) {
    fnlHypo discarded;
    readHypothesis(lines, discarded);
  }
  for (RealThreshold& threshold : tables.codonTrsld) readRealThreshold(lines, threshold);
  for (RealThreshold& threshold : tables.pairAcidTrsld) readRealThreshold(lines, threshold);
  for (CountThreshold& threshold : tables.snglAcidTrsld) readCountThreshold(lines, threshold);
  for (auto& ofGap : tables.pairAcidPriproTable) {
    for (auto& ofFirst : ofGap) {
      for (auto& prior : ofFirst) readPrior(lines, prior);
    }
  }
  for (auto& prior : tables.snglAcidPriproTable) readPrior(lines, prior);
  return lines.finish();
}

// ---- 3. Matrix file

ModelFileStatus readMatrixFile(std::istream& in, double (&matrix)[16]) {
  LineReader lines(in);
  for (int row = 0; row < kMatrixFileLines; ++row) {
    lines.nextLine();
    for (int column = 0; column < 4; ++column) matrix[4 * row + column] = lines.nextReal();
  }
  return lines.finish();
}

// ---- 4. Writing

namespace {

// Numbers as "%f" and "%d" print them in the usual locale, whatever the process has set.
std::ostringstream modelFileStream() {
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << std::fixed << std::setprecision(6);
  return out;
}

}  // namespace

std::string parameterFileText(const ModelTables& tables) {
  std::ostringstream out = modelFileStream();
  for (size_t i = 0; i < kModelHypotheses; ++i) {
    const fnlHypo h = i < tables.fh.size() ? tables.fh[i] : fnlHypo{};
    out << h.kind << ',' << h.elem1 << ',' << h.elem2 << ',' << h.elem3 << ',' << h.gap << ','
        << h.alpha << '\n';
  }
  const auto writeThreshold = [&](const auto& t) { out << t.polarity << ',' << t.trsld << '\n'; };
  for (const RealThreshold& t : tables.codonTrsld) writeThreshold(t);
  for (const RealThreshold& t : tables.pairAcidTrsld) writeThreshold(t);
  for (const CountThreshold& t : tables.snglAcidTrsld) writeThreshold(t);
  const auto writePrior = [&](const double(&prior)[2]) {
    out << prior[0] << ',' << prior[1] << '\n';
  };
  for (const auto& ofGap : tables.pairAcidPriproTable) {
    for (const auto& ofFirst : ofGap) {
      for (const auto& prior : ofFirst) writePrior(prior);
    }
  }
  for (const auto& prior : tables.snglAcidPriproTable) writePrior(prior);
  return std::move(out).str();
}

std::string matrixFileText(const double (&matrix)[16]) {
  std::ostringstream out = modelFileStream();
  for (int row = 0; row < kMatrixFileLines; ++row) {
    const double* m = matrix + 4 * row;
    out << m[0] << ',' << m[1] << ',' << m[2] << ',' << m[3] << '\n';
  }
  return std::move(out).str();
}

}  // namespace velto
