// 1. A grid of characters  2. Lanes  3. Marks and positions  4. Words and protein
#include "draw/read_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "draw/label_rows.h"
#include "draw/lanes.h"
#include "draw/markup.h"
#include "draw/read_sentence.h"
#include "draw/round_step.h"

namespace velto {
namespace {

// ---- 1. A grid of characters

enum class Ink { kPlain, kStrong, kSoft, kCall, kExtra, kLost };

const char* sequenceOf(Ink ink) {
  constexpr std::array<const char*, 6> kSequences = {"\x1b[0m",    "\x1b[0;1m",  "\x1b[0;90m",
                                                     "\x1b[0;34m", "\x1b[0;31m", "\x1b[0;35m"};
  return kSequences[static_cast<std::size_t>(ink)];
}

struct Cell {
  std::string sign = " ";  // one character of UTF-8
  Ink ink = Ink::kPlain;
};

class Grid {
 public:
  Grid(int rows, int columns)
      : rows_(static_cast<std::size_t>(rows),
              std::vector<Cell>(static_cast<std::size_t>(columns))) {}

  // Nothing happens outside the grid.
  void put(int row, int column, const std::string& sign, Ink ink) {
    const auto r = static_cast<std::size_t>(row);
    const auto c = static_cast<std::size_t>(column);
    if (row >= 0 && r < rows_.size() && column >= 0 && c < rows_[r].size())
      rows_[r][c] = {sign, ink};
  }

  void write(int row, int column, std::string_view ascii, Ink ink) {
    for (const char c : ascii) put(row, column++, std::string(1, c), ink);
  }

  std::string text(bool colours) const {
    std::string out;
    for (const std::vector<Cell>& row : rows_) out += rowText(row, colours) + '\n';
    return out;
  }

 private:
  static std::string rowText(const std::vector<Cell>& row, bool colours) {
    const auto last =
        std::find_if(row.rbegin(), row.rend(), [](const Cell& cell) { return cell.sign != " "; });
    std::string out;
    Ink ink = Ink::kPlain;
    for (auto cell = row.begin(); cell != last.base(); ++cell) {
      if (colours && cell->ink != ink) out += sequenceOf(ink = cell->ink);
      out += cell->sign;
    }
    return out + (ink != Ink::kPlain ? sequenceOf(Ink::kPlain) : "");
  }

  std::vector<std::vector<Cell>> rows_;
};

// ---- 2. Lanes

constexpr int kMargin = 9;    // columns of the lanes' names
constexpr int kLaneRows = 2;  // curve and path
constexpr int kLabelRows = 4;
constexpr int kBlockSteps = 8;

class TextDrawing {
 public:
  TextDrawing(const DrawnRead& read, const ReadTextOptions& options);
  std::string text(bool colours);
  // What the signs mean, sign by sign.
  std::vector<std::string> key() const;

 private:
  int columnOf(double base) const {
    return kMargin + std::min(width_ - 1, static_cast<int>(base * width_ / p_.length));
  }
  int curveRow(int lane) const { return lanesRow_ + kLaneRows * lane; }
  int pathRow(int lane) const { return curveRow(lane) + 1; }

  void collectLabels();
  void drawCurve(int lane);
  void drawCodons(int lane);
  void drawPath();
  void drawMarks();
  void drawPositions();

  struct Mark {
    std::string sign;
    std::string words;
    Ink ink;
  };

  const Prediction& p_;
  const int width_;  // of the lanes
  const LaneCurves curves_;
  const std::vector<FrameRun> runs_;
  const SignalCodons codons_;
  std::vector<Mark> marks_;
  std::vector<Label> labels_;  // [mark]
  int lanesRow_;
  Grid grid_;
};

TextDrawing::TextDrawing(const DrawnRead& read, const ReadTextOptions& options)
    : p_(read.prediction),
      width_(std::max(1, std::min(p_.length, options.columns - kMargin))),
      curves_(laneCurves(p_, width_)),
      runs_(calledRuns(p_, static_cast<double>(p_.length) / width_)),
      codons_(signalCodons(read.letters, read.code)),
      lanesRow_(0),
      grid_(0, 0) {
  collectLabels();
  lanesRow_ = placeLabels(labels_) + 1;
  grid_ = Grid(lanesRow_ + 3 * kLaneRows + 1, options.columns);
}

void TextDrawing::drawCurve(int lane) {
  const std::vector<double>& values = curves_.values[lane];
  for (std::size_t c = 0; c < values.size(); ++c) {
    const int steps = static_cast<int>(std::lround(values[c] / curves_.most * kBlockSteps));
    if (steps < 1) continue;
    const double middle = (static_cast<double>(c) + 0.5) * p_.length / width_;
    const bool called = std::any_of(runs_.begin(), runs_.end(), [&](const FrameRun& run) {
      return run.frame == lane && run.begin <= middle && middle < run.end;
    });
    // U+2581 to U+2588: an eighth of a block to a whole one.
    const std::string block = {'\xE2', '\x96', static_cast<char>('\x80' + std::min(8, steps))};
    grid_.put(curveRow(lane), kMargin + static_cast<int>(c), block,
              called ? Ink::kCall : Ink::kSoft);
  }
}

void TextDrawing::drawCodons(int lane) {
  for (const int base : codons_.starts[lane]) {
    grid_.put(pathRow(lane), columnOf(base), "^", Ink::kSoft);
  }
  for (const int base : codons_.stops[lane]) {
    grid_.put(pathRow(lane), columnOf(base), "|", Ink::kSoft);
  }
}

// Heavy lines: along a lane, and from lane to lane at a frameshift.
void TextDrawing::drawPath() {
  for (std::size_t i = 0; i < runs_.size(); ++i) {
    const FrameRun& run = runs_[i];
    const int end = i + 1 < runs_.size() ? columnOf(run.end) : columnOf(run.end - 0.5) + 1;
    for (int column = columnOf(run.begin); column < end; ++column) {
      grid_.put(pathRow(run.frame), column, "\u2501", Ink::kCall);
    }
    if (i == 0) continue;
    const int from = pathRow(runs_[i - 1].frame);
    const int to = pathRow(run.frame);
    const int column = columnOf(run.begin);
    for (int row = std::min(from, to); row <= std::max(from, to); ++row) {
      grid_.put(row, column, "\u2503", Ink::kCall);
    }
    grid_.put(from, column, from < to ? "\u2513" : "\u251B", Ink::kCall);
    grid_.put(to, column, from < to ? "\u2517" : "\u250F", Ink::kCall);
  }
}

// ---- 3. Marks and positions

void TextDrawing::collectLabels() {
  if (!p_.isCoding()) return;
  const int end = kMargin + width_;
  const auto add = [&](double base, const Mark& mark, bool leftward) {
    const int column = columnOf(base);
    const double width = static_cast<double>(mark.words.size()) + 2;
    marks_.push_back(mark);
    labels_.push_back({static_cast<double>(column), width, leftward || column + width > end,
                       kLabelRows - (mark.ink == Ink::kCall ? 0 : 1)});
  };
  for (auto shift = p_.frameshifts.rbegin(); shift != p_.frameshifts.rend(); ++shift) {
    const bool extra = shift->kind == Frameshift::Kind::kInsertion;
    const std::string place = std::to_string(shift->position + 1);
    add(shift->position,
        {extra ? "\u25BC" : "\u25C7", (extra ? "+1 at " : "-1 before ") + place,
         extra ? Ink::kExtra : Ink::kLost},
        false);
  }
  const int stop = std::min(p_.stop + 1, p_.length);
  add(stop - 1, {"\u25A0", "stop " + std::to_string(stop), Ink::kCall}, false);
  const std::string start = "start " + std::to_string(p_.start + 1);
  add(p_.start, {"\u25B6", start, Ink::kCall},
      columnOf(p_.start) - static_cast<int>(start.size()) > 2);
}

void TextDrawing::drawMarks() {
  const int signRow = lanesRow_ - 1;
  for (std::size_t i = 0; i < marks_.size(); ++i) {
    const int column = static_cast<int>(labels_[i].pole);
    grid_.put(signRow, column, marks_[i].sign, marks_[i].ink);
    if (labels_[i].row < 0) continue;
    const int row = signRow - 1 - labels_[i].row;
    for (int r = row; r < signRow; ++r) grid_.put(r, column, "\u2502", marks_[i].ink);
    const int words = static_cast<int>(marks_[i].words.size());
    grid_.write(row, labels_[i].leftward ? column - words : column + 1, marks_[i].words,
                marks_[i].ink);
  }
}

void TextDrawing::drawPositions() {
  const int row = lanesRow_ + 3 * kLaneRows;
  const int step = roundStep(10.0 * p_.length / width_);
  grid_.write(row, 0, "base", Ink::kSoft);
  for (int count = 1; count <= p_.length / step; ++count) {
    const std::string words = std::to_string(count * step);
    const int column = columnOf(count * step - 1);
    if (column + 1 + static_cast<int>(words.size()) > kMargin + width_) break;
    grid_.put(row, column, "\u2575", Ink::kSoft);
    grid_.write(row, column + 1, words, Ink::kSoft);
  }
}

std::string TextDrawing::text(bool colours) {
  for (int lane = 0; lane < 3; ++lane) {
    grid_.write(curveRow(lane), 0, "frame " + std::to_string(lane + 1), Ink::kSoft);
    if (!curves_.empty()) drawCurve(lane);
    drawCodons(lane);
  }
  drawPath();
  drawMarks();
  drawPositions();
  return grid_.text(colours);
}

std::vector<std::string> TextDrawing::key() const {
  std::vector<std::string> entries;
  if (p_.isCoding()) entries.emplace_back("\u2501 called path;");
  if (!curves_.empty()) {
    entries.push_back("\u2584 " +
                      (curves_.isVote ? "vote for the frame, up to " + decimal(curves_.most)
                                      : std::string("probability of the frame, up to 1")) +
                      ";");
  }
  if (!p_.frameshifts.empty()) {
    entries.insert(entries.end(), {"\u25BC extra base;", "\u25C7 missing base;"});
  }
  entries.insert(entries.end(), {"^ start codon;", "| stop codon"});
  return entries;
}

// ---- 4. Words and protein

// Parts with blanks between them, in lines of at most `columns` characters where the parts allow.
std::string linesOf(const std::vector<std::string>& parts, int columns) {
  std::string out;
  std::size_t used = 0;
  for (const std::string& part : parts) {
    const std::size_t size = charactersOf(part);
    if (used > 0) out += used + 1 + size > static_cast<std::size_t>(columns) ? '\n' : ' ';
    used = used > 0 && out.back() == ' ' ? used + 1 + size : size;
    out += part;
  }
  return out + '\n';
}

std::vector<std::string> wordsOf(std::string_view text) {
  std::vector<std::string> words;
  while (!text.empty()) {
    words.emplace_back(text.substr(0, text.find(' ')));
    text.remove_prefix(std::min(text.size(), words.back().size() + 1));
  }
  return words;
}

// Amino acids in groups of ten, each line headed by the count of its first one.
std::string proteinText(std::string_view protein, int columns) {
  const auto groups = static_cast<std::size_t>(std::max(1, (columns - kMargin) / 11));
  std::string out;
  for (std::size_t i = 0; i < protein.size(); i += 10) {
    if (i % (10 * groups) == 0) {
      const std::string count = std::to_string(i + 1);
      out += (i > 0 ? "\n" : "") +
             std::string(kMargin - 1 - std::min<std::size_t>(8, count.size()), ' ') + count;
    }
    out += ' ';
    out += protein.substr(i, 10);
  }
  return out.empty() ? "" : out + '\n';
}

}  // namespace

std::string readText(const DrawnRead& read, const ReadTextOptions& options) {
  const std::string name = printable(read.name);
  std::string text =
      options.colours ? sequenceOf(Ink::kStrong) + name + sequenceOf(Ink::kPlain) : name;
  std::string words = callSentence(read);
  for (const std::string& sentence : furtherSentences(read)) words += " " + sentence;
  text += '\n' + linesOf(wordsOf(words), options.columns) + '\n';
  if (read.prediction.length == 0) return text;
  TextDrawing drawing(read, options);
  text += drawing.text(options.colours) + '\n' + linesOf(drawing.key(), options.columns);
  for (const Frameshift& shift : read.prediction.frameshifts) text += shiftSentence(shift) + '\n';
  return text + (read.protein.empty() ? "" : "\n" + proteinText(read.protein, options.columns));
}

}  // namespace velto
