// 1. Writing  2. Fields and lines  3. Sections
#include "hmm/hmm_model_file.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <concepts>
#include <cstdlib>
#include <limits>
#include <span>
#include <type_traits>
#include <utility>

#include "core/plain_real.h"

namespace velto {
namespace {

constexpr std::string_view kTitle = "VELTO posterior model 4";

// The path weights behind those of start codons, in the order of the file.
constexpr float PathWeights::*kWeights[] = {&PathWeights::stop,           &PathWeights::stayUtr5,
                                            &PathWeights::beginCoding,    &PathWeights::beginUtr5,
                                            &PathWeights::beginNoncoding, &PathWeights::beginUtr3,
                                            &PathWeights::beginStart};

constexpr double ReadDecision::*kDecision[] = {&ReadDecision::constant, &ReadDecision::logOdds,
                                               &ReadDecision::codingBases,
                                               &ReadDecision::codingShare};
constexpr double StrandDecision::*kStrand[] = {
    &StrandDecision::logOdds, &StrandDecision::logLikelihood, &StrandDecision::constant,
    &StrandDecision::calledLogOdds, &StrandDecision::calledCodingBases};

// ---- 1. Writing

class Writer {
 public:
  Writer& word(std::string_view word) {
    separate();
    text_ += word;
    return *this;
  }

  template <class Number>
  Writer& number(Number value) {
    separate();
    if constexpr (std::is_floating_point_v<Number>) {
      appendPlainReal(text_, value);
    } else {
      text_ += std::to_string(value);
    }
    return *this;
  }

  Writer& millionths(float value) { return number(std::lround(static_cast<double>(value) * 1e6)); }

  void end() { text_ += '\n'; }

  // Lines of `columns` numbers each.
  template <class Number>
  void table(std::span<const Number> numbers, int columns) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      number(numbers[i]);
      if ((i + 1) % static_cast<std::size_t>(columns) == 0) end();
    }
  }

  std::string take() { return std::move(text_); }

 private:
  void separate() {
    if (!text_.empty() && text_.back() != '\n') text_ += ' ';
  }

  std::string text_;
};

void writeTables(const HmmModel& model, Writer& out) {
  out.word("stops");
  for (const float share : model.stopShare) out.millionths(share);
  out.end();
  out.word("kozak").end();
  for (const auto& place : model.kozak) {
    for (const float ratio : place) out.millionths(ratio);
    out.end();
  }
  out.word("emissions").end();
  for (const EmissionRow& row : model.emissions) {
    for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) out.millionths(row[kind]);
    out.end();
  }
}

void writeNetwork(const WindowNetwork& network, Writer& out) {
  out.word("network").number(network.letters).number(network.units);
  out.number(network.offsets.size()).end();
  out.word("offsets");
  for (const int offset : network.offsets) out.number(offset);
  out.end();
  out.word("scale").number(network.outputScale).end();
  out.word("output-bias");
  for (const float bias : network.outputBias) out.number(bias);
  out.end();
  const std::pair<const char*, const std::vector<std::int16_t>*> tables[] = {
      {"bias", &network.bias},
      {"dinucleotides", &network.dinucleotide},
      {"outputs", &network.output}};
  for (const auto& [name, numbers] : tables) {
    out.word(name).end();
    out.table(std::span(*numbers), network.units);
  }
  out.word("rows").end();
  for (std::size_t o = 0; o < network.offsets.size(); ++o) {
    for (int kmer = 0; kmer < network.kmers(); ++kmer) {
      out.table(std::span(network.row(o, kmer), static_cast<std::size_t>(network.units)),
                network.units);
    }
  }
}

}  // namespace

std::string hmmModelText(const HmmModel& model) {
  Writer out;
  out.word(kTitle).end();
  out.word("weights");
  for (const float weight : model.weights.start) out.number(weight);
  for (const auto weight : kWeights) out.number(model.weights.*weight);
  out.end();
  out.word("truncated-share").number(model.truncatedShare).end();
  out.word("decision");
  for (const auto number : kDecision) out.number(model.decision.*number);
  out.end();
  out.word("strand");
  for (const auto number : kStrand) out.number(model.strand.*number);
  out.end();
  writeTables(model, out);
  writeNetwork(model.network, out);
  out.word("end").end();
  return out.take();
}

// ---- 2. Fields and lines

namespace {

// Whether a number that begins with 0 is no other than 0, or a fraction.
template <class Number>
bool hasPlainZero(std::string_view field) {
  const bool isNegative = field.front() == '-';
  const std::string_view digits = field.substr(isNegative ? 1 : 0);
  if (digits.front() != '0') return true;
  if (digits.size() > 1) return digits[1] == '.';
  return !isNegative || std::is_floating_point_v<Number>;
}

// Reads a text line by line and word by word; throws the status at the first irregular place.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  [[noreturn]] void fail(const std::string& reason) const { throw HmmFileStatus{line_, reason}; }

  // Moves to the next line, which must begin with this word; empty: with a number.
  void line(std::string_view word) {
    ++line_;
    const std::size_t end = text_.find('\n');
    if (end == std::string_view::npos) fail(text_.empty() ? "missing line" : "cut off line");
    fields_ = text_.substr(0, end);
    text_.remove_prefix(end + 1);
    if (!word.empty() && nextField() != word) fail("expected '" + std::string(word) + "'");
  }

  void wholeLine(std::string_view expected) {
    line("");
    if (fields_ != expected) fail("expected '" + std::string(expected) + "'");
    fields_ = {};
  }

  template <class Number>
  Number number(Number least, Number most) {
    Number value{};
    if (!hasPlainZero<Number>(takeNumber(value))) fail("not a number");
    if (!(value >= least && value <= most)) fail("number out of range");
    return value;
  }

  float millionths(int least, int most) {
    return static_cast<float>(number<int>(least, most)) * 1e-6f;
  }

  void endLine() const {
    if (!fields_.empty()) fail("more numbers than expected");
  }

  void endText() {
    ++line_;
    if (!text_.empty()) fail("text behind the last line");
  }

 private:
  // Takes the next field and the blank behind it.
  std::string_view nextField() { return takeField(std::min(fields_.find(' '), fields_.size())); }

  std::string_view takeField(std::size_t length) {
    const std::string_view field = fields_.substr(0, length);
    if (field.empty()) fail("missing number");
    if (length + 1 == fields_.size()) fail("blank at the end");
    fields_.remove_prefix(std::min(length + 1, fields_.size()));
    return field;
  }

  // Reads and takes the next field. It ends with its digits, which is known sooner than where the
  // next blank is.
  template <std::integral Number>
  std::string_view takeNumber(Number& value) {
    const char* const begin = fields_.data();
    const auto [end, error] = std::from_chars(begin, begin + fields_.size(), value);
    const auto length = static_cast<std::size_t>(end - begin);
    const bool endsField = length == fields_.size() || *end == ' ';
    if (error == std::errc() && endsField) return takeField(length);
    nextField();
    fail("not a number");
  }

  template <std::floating_point Number>
  std::string_view takeNumber(Number& value) {
    const std::string_view field = nextField();
    if (!readPlainReal(field, value)) fail("not a number");
    return field;
  }

  std::string_view text_;    // lines to come
  std::string_view fields_;  // of the present line
  int line_ = 0;
};

// ---- 3. Sections

constexpr int kLeastMillionths = 1;  // no emission is impossible
constexpr int kMostMillionths = 1000000;

void readTables(Reader& in, HmmModel& model) {
  in.line("stops");
  for (float& share : model.stopShare) share = in.millionths(0, kMostMillionths);
  in.endLine();
  in.line("kozak");
  in.endLine();
  for (auto& place : model.kozak) {
    in.line("");
    for (float& ratio : place) ratio = in.millionths(1, 4 * kMostMillionths);
    in.endLine();
  }
  in.line("emissions");
  in.endLine();
  model.emissions.assign(static_cast<std::size_t>(kHmmGcClasses * kFiveMers), EmissionRow{});
  for (EmissionRow& row : model.emissions) {
    in.line("");
    for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
      row[kind] = in.millionths(kLeastMillionths, kMostMillionths);
    }
    in.endLine();
  }
}

void readSizes(Reader& in, WindowNetwork& network) {
  in.line("network");
  network.letters = in.number<int>(1, 5);
  network.units = in.number<int>(16, kMostUnits);
  if (network.units % 16 != 0) in.fail("units are not a multiple of 16");
  network.offsets.resize(static_cast<std::size_t>(in.number<int>(1, kMostOffsets)));
  in.endLine();
  in.line("offsets");
  for (int& offset : network.offsets) offset = in.number<int>(-kMostOffset, kMostOffset);
  in.endLine();
  in.line("scale");
  network.outputScale = in.number<float>(0.0f, 1.0f);
  in.endLine();
  in.line("output-bias");
  for (float& bias : network.outputBias) bias = in.number<float>(-100.0f, 100.0f);
  in.endLine();
}

template <class Number>
void readRow(Reader& in, std::span<Number> row) {
  constexpr Number kMost = std::numeric_limits<Number>::max();
  in.line("");
  for (Number& x : row) x = in.number<Number>(-kMost, kMost);
  in.endLine();
}

void readTable(Reader& in, const char* name, std::size_t rows, int columns,
               std::vector<std::int16_t>& table) {
  const auto units = static_cast<std::size_t>(columns);
  in.line(name);
  in.endLine();
  table.resize(rows * units);
  for (std::size_t row = 0; row < rows; ++row) {
    readRow(in, std::span(table).subspan(row * units, units));
  }
}

void readRows(Reader& in, WindowNetwork& network) {
  in.line("rows");
  in.endLine();
  network.clearRows();
  for (std::size_t o = 0; o < network.offsets.size(); ++o) {
    for (int kmer = 0; kmer < network.kmers(); ++kmer) readRow(in, network.row(o, kmer));
  }
}

// No sum of rows may leave eight bits.
void checkRows(const Reader& in, const WindowNetwork& network) {
  for (std::size_t u = 0; u < static_cast<std::size_t>(network.units); ++u) {
    int sum = 0;
    for (std::size_t o = 0; o < network.offsets.size(); ++o) {
      int largest = 0;
      for (int kmer = 0; kmer < network.kmers(); ++kmer) {
        largest = std::max(largest, std::abs(network.row(o, kmer)[u]));
      }
      sum += largest;
    }
    if (sum > kMostRowSum) in.fail("rows of unit " + std::to_string(u + 1) + " are too large");
  }
}

// No sum of outputs may leave 32 bits.
void checkOutputs(const Reader& in, const WindowNetwork& network) {
  const auto units = static_cast<std::size_t>(network.units);
  for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
    int sum = 0;
    for (std::size_t u = 0; u < units; ++u) sum += std::abs(network.output[kind * units + u]);
    if (sum > kMostOutputSum)
      in.fail("weights of output " + std::to_string(kind + 1) + " are too large");
  }
}

void readNetwork(Reader& in, WindowNetwork& network) {
  readSizes(in, network);
  readTable(in, "bias", kHmmGcClasses, network.units, network.bias);
  readTable(in, "dinucleotides", kDinucleotides, network.units, network.dinucleotide);
  readTable(in, "outputs", kEmissionKinds, network.units, network.output);
  checkOutputs(in, network);
  readRows(in, network);
  checkRows(in, network);
}

void readModel(Reader& in, HmmModel& model) {
  in.wholeLine(kTitle);
  in.line("weights");
  for (float& weight : model.weights.start) weight = in.number<float>(1e-9f, 10.0f);
  for (const auto weight : kWeights) model.weights.*weight = in.number<float>(1e-9f, 10.0f);
  if (model.weights.stayUtr5 > 1.0f) in.fail("number out of range");
  in.endLine();
  in.line("truncated-share");
  model.truncatedShare = in.number<double>(0.01, 0.99);
  in.endLine();
  in.line("decision");
  for (const auto number : kDecision) model.decision.*number = in.number<double>(-100.0, 100.0);
  if (model.decision.codingShare < 0.01 || model.decision.codingShare > 0.99) {
    in.fail("number out of range");
  }
  in.endLine();
  in.line("strand");
  for (const auto number : kStrand) model.strand.*number = in.number<double>(-100.0, 100.0);
  in.endLine();
  readTables(in, model);
  readNetwork(in, model.network);
  in.line("end");
  in.endLine();
  in.endText();
}

}  // namespace

HmmFileStatus readHmmModel(std::string_view text, HmmModel& model) {
  Reader in(text);
  try {
    readModel(in, model);
  } catch (HmmFileStatus& status) {
    return status;
  }
  return {};
}

}  // namespace velto
