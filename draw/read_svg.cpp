// 1. Sizes  2. The drawing  3. Marks of the region  4. Lanes  5. Path  6. Positions  7. Protein
// 8. Words
#include "draw/read_svg.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/corrected_positions.h"
#include "draw/label_rows.h"
#include "draw/lanes.h"
#include "draw/read_legend.h"
#include "draw/read_sentence.h"
#include "draw/round_step.h"
#include "draw/svg_marks.h"

namespace velto {
namespace {

// ---- 1. Sizes (pixels)

constexpr double kLetter = 6.3;        // of labels, on average
constexpr double kRow = 17;            // of labels
constexpr double kSigns = 18;          // strip of the frameshifts' signs above the lanes
constexpr double kCurve = 42;          // height of a curve
constexpr double kLane = kCurve + 18;  // a curve and the ticks below it
constexpr double kAxis = 28;
constexpr double kProtein = 20;
constexpr double kColumn = 2;          // of the curves
constexpr double kRunCell = 1;         // runs of the path within one are not drawn
constexpr double kCrowdedRun = 6;      // mean length of runs below which the path is a thin line
constexpr double kLeastTick = 1;       // distance of ticks
constexpr double kLeastSign = 9;       // distance of signs without a label
constexpr double kLeastAcid = 7;       // width of a codon whose letter is drawn
constexpr double kPositionLabel = 62;  // least distance of labelled positions
constexpr double kCountLabel = 44;     // likewise of amino acids
constexpr int kShiftRows = 3;          // rows of labels for frameshifts; one more for the ends
constexpr int kEnds = 2;               // of the region
constexpr int kNarrow = 600;           // drawings below this width say less

// ---- 2. The drawing

// An end of the called region or a frameshift.
struct Mark {
  double x;
  const Frameshift* shift;  // null: an end
  bool isStart;
  std::string words;
};

class Drawing {
 public:
  Drawing(const DrawnRead& read, const ReadSvgOptions& options);
  std::string finish();

 private:
  double pixelsPerBase() const { return (right_ - left_) / p_.length; }
  double xOf(double base) const { return left_ + pixelsPerBase() * base; }
  double laneTop(int lane) const { return lanesTop_ + lane * kLane; }
  double baseline(int lane) const { return laneTop(lane) + kCurve; }
  double lanesBottom() const { return laneTop(3) - 3; }
  double labelTop(const Label& label) const { return lanesTop_ - kSigns - kRow * label.row - 12; }
  int endBase() const { return std::min(p_.stop + 1, p_.length); }  // one behind the region

  void collectMarks();
  int placeMarks();
  void drawMarks();
  void drawEnd(const Mark& mark, const Label& label);
  void drawShift(const Mark& mark, const Label& label);
  void drawLabel(const char* style, const Mark& mark, const Label& label);

  void drawLanes();
  double yOf(int lane, double value) const;
  SvgPath area(int lane, double begin, double end) const;
  void drawCurve(int lane);
  void drawTicks(int lane);
  void drawPath();

  void drawPositions();
  void drawProtein();
  std::vector<double> codonMiddles() const;
  void drawLetters(const std::vector<double>& middles);
  void drawCounts(const std::vector<double>& middles);
  void drawOddAcids(const std::vector<double>& middles);

  const DrawnRead& read_;
  const Prediction& p_;
  const ReadSvgOptions& options_;
  const bool narrow_;
  const double left_;  // of the lanes
  const double right_;
  const LaneCurves curves_;
  const std::vector<FrameRun> runs_;
  const SignalCodons codons_;
  std::vector<Mark> marks_;
  std::vector<Label> labels_;  // [mark]
  double lanesTop_ = 0;
  double y_ = 0;  // where what is drawn next begins
  std::string body_;
};

Drawing::Drawing(const DrawnRead& read, const ReadSvgOptions& options)
    : read_(read),
      p_(read.prediction),
      options_(options),
      narrow_(options.width < kNarrow),
      left_(narrow_ ? 20 : 74),
      right_(options.width - (narrow_ ? 4 : 12)),
      curves_(laneCurves(p_, static_cast<int>((right_ - left_) / kColumn))),
      runs_(calledRuns(p_, kRunCell / pixelsPerBase())),
      codons_(signalCodons(read.letters, read.code)) {
  collectMarks();
  lanesTop_ = kRow * placeMarks() + kSigns;
}

// ---- 3. Marks of the region

std::string shiftLabel(const Frameshift& shift, bool brief) {
  const bool extra = shift.kind == Frameshift::Kind::kInsertion;
  const std::string place = std::to_string(shift.position + 1);
  if (brief) return (extra ? "+1 " : "\u22121 ") + place;
  return (extra ? "+1 at " : "\u22121 before ") + place +
         (std::isnan(shift.confidence) ? "" : " \u00B7 " + percentText(shift.confidence));
}

// Frameshifts from right to left, so that of two labels that meet the left one goes up a row; the
// ends last, with a row of their own if need be.
void Drawing::collectMarks() {
  if (!p_.isCoding()) return;
  for (auto shift = p_.frameshifts.rbegin(); shift != p_.frameshifts.rend(); ++shift) {
    const bool extra = shift->kind == Frameshift::Kind::kInsertion;
    const double x = xOf(shift->position + (extra ? 0.5 : 0.0));
    const std::string words = shiftLabel(*shift, narrow_);
    const double width = kLetter * static_cast<double>(charactersOf(words)) + 8;
    marks_.push_back({x, &*shift, false, words});
    labels_.push_back({x, width, x + width > right_, kShiftRows});
  }
  const double endWidth = 74;
  const double stop = xOf(endBase());
  marks_.push_back({stop, nullptr, false, "stop " + std::to_string(endBase())});
  labels_.push_back({stop, endWidth, stop + endWidth > right_, kShiftRows + 1});
  const double start = xOf(p_.start);
  marks_.push_back({start, nullptr, true, "start " + std::to_string(p_.start + 1)});
  labels_.push_back({start, endWidth, start - endWidth > left_, kShiftRows + 1});
}

// Returns the number of rows in use. The ends never give way to frameshifts.
int Drawing::placeMarks() {
  const int rows = placeLabels(labels_);
  if (!p_.isCoding()) return rows;
  const bool complete = std::all_of(labels_.end() - kEnds, labels_.end(),
                                    [](const Label& label) { return label.row >= 0; });
  if (complete) return rows;
  std::rotate(marks_.begin(), marks_.end() - kEnds, marks_.end());
  std::rotate(labels_.begin(), labels_.end() - kEnds, labels_.end());
  return placeLabels(labels_);
}

void Drawing::drawMarks() {
  double before = right_ + kLeastSign;  // the sign drawn last
  for (std::size_t i = 0; i < marks_.size(); ++i) {
    const bool labelled = labels_[i].row >= 0;
    if (marks_[i].shift == nullptr) {
      if (labelled) drawEnd(marks_[i], labels_[i]);
    } else if (labelled || before - marks_[i].x >= kLeastSign) {
      before = marks_[i].x;
      drawShift(marks_[i], labels_[i]);
    }
  }
}

void Drawing::drawLabel(const char* style, const Mark& mark, const Label& label) {
  const std::string styles = label.leftward ? std::string(style) + " before" : style;
  body_ +=
      svgText(styles.c_str(), mark.x + (label.leftward ? -4 : 4), labelTop(label) + 9, mark.words);
}

void Drawing::drawEnd(const Mark& mark, const Label& label) {
  const double foot = baseline((mark.isStart ? runs_.front() : runs_.back()).frame);
  SvgPath pole;
  pole.move(mark.x, labelTop(label));
  pole.down(foot);
  body_ += svgPath("pole", pole);
  body_ += mark.isStart
               ? svgElement("circle", "end",
                            attribute("cx", mark.x) + attribute("cy", foot) + attribute("r", 4.5))
               : svgElement("rect", "end",
                            attribute("x", mark.x - 4.5) + attribute("y", foot - 4.5) +
                                attribute("width", 9) + attribute("height", 9));
  drawLabel("label strong", mark, label);
}

// A sign above the lanes; with a label also a guide from it through the lanes.
void Drawing::drawShift(const Mark& mark, const Label& label) {
  const Frameshift::Kind kind = mark.shift->kind;
  body_ += "<g" + attribute("class", shiftStyle(kind)) + "><title>" +
           escaped(shiftSentence(*mark.shift)) + "</title>\n";
  if (label.row >= 0) {
    SvgPath guide;
    guide.move(mark.x, labelTop(label));
    guide.down(lanesBottom());
    body_ += svgPath("guide", guide);
  }
  body_ += svgPath("glyph", shiftSign(kind, mark.x, lanesTop_ - kSigns / 2));
  if (label.row >= 0) drawLabel("label", mark, label);
  body_ += "</g>\n";
}

// ---- 4. Lanes

void Drawing::drawLanes() {
  for (int lane = 0; lane < 3; ++lane) {
    body_ += svgElement("rect", "lane",
                        attribute("x", left_) + attribute("y", laneTop(lane)) +
                            attribute("width", right_ - left_) + attribute("height", kCurve));
    body_ += svgText("name", 4, laneTop(lane) + kCurve / 2 + 4,
                     (narrow_ ? "" : "Frame ") + std::to_string(lane + 1));
    drawCurve(lane);
    drawTicks(lane);
  }
}

double Drawing::yOf(int lane, double value) const {
  const double share = value / curves_.most;  // a vote: -1 to 1
  return baseline(lane) - kCurve * (curves_.isVote ? (share + 1) / 2 : share);
}

// Between the curve and its zero line, from base to base. Inner points of level stretches are left
// out.
SvgPath Drawing::area(int lane, double begin, double end) const {
  const std::vector<double>& values = curves_.values[lane];
  const double column = p_.length / static_cast<double>(values.size());  // bases
  const auto first = static_cast<std::size_t>(std::round(begin / column));
  const auto last = std::min(values.size(), static_cast<std::size_t>(std::round(end / column)));
  SvgPath d;
  if (first >= last) return d;
  const auto height = [&](std::size_t c) { return decimal(yOf(lane, values[c])); };
  d.move(xOf(begin), yOf(lane, 0));
  d.line(xOf(begin), yOf(lane, values[first]));
  for (std::size_t c = first; c < last; ++c) {
    const bool inner = c > first && c + 1 < last;
    if (inner && height(c) == height(c - 1) && height(c) == height(c + 1)) continue;
    d.line(xOf((static_cast<double>(c) + 0.5) * column), yOf(lane, values[c]));
  }
  d.line(xOf(end), yOf(lane, values[last - 1]));
  d.down(yOf(lane, 0));
  d.close();
  return d;
}

void Drawing::drawCurve(int lane) {
  SvgPath zero;
  zero.move(left_, curves_.isVote ? yOf(lane, 0) : baseline(lane));
  zero.across(right_);
  if (!curves_.empty()) {
    body_ += svgPath("curve", area(lane, 0, p_.length));
    for (const FrameRun& run : runs_) {
      if (run.frame == lane) body_ += svgPath("curve called", area(lane, run.begin, run.end));
    }
  }
  body_ += svgPath("zero", zero);
}

// The x of the codons' first bases, no two closer than a tick.
std::vector<double> spread(const std::vector<int>& bases, double left, double pixelsPerBase) {
  std::vector<double> places;
  for (const int base : bases) {
    const double x = left + pixelsPerBase * base;
    if (places.empty() || x - places.back() >= kLeastTick) places.push_back(x);
  }
  return places;
}

void Drawing::drawTicks(int lane) {
  SvgPath starts;
  for (const double x : spread(codons_.starts[lane], left_, pixelsPerBase())) {
    addStartSign(starts, x, baseline(lane) + 4);
  }
  SvgPath stops;
  for (const double x : spread(codons_.stops[lane], left_, pixelsPerBase())) {
    addStopSign(stops, x, baseline(lane) + 3);
  }
  body_ += svgPath("startcodon", starts) + svgPath("stopcodon", stops);
}

// ---- 5. Path

// Along the floors of the lanes; a light rim sets it off.
void Drawing::drawPath() {
  if (runs_.empty()) return;
  SvgPath d;
  d.move(xOf(runs_.front().begin), baseline(runs_.front().frame));
  for (const FrameRun& run : runs_) {
    if (&run != &runs_.front()) d.down(baseline(run.frame));
    d.across(xOf(run.end));
  }
  const double meanRun =
      xOf(runs_.back().end - runs_.front().begin) / static_cast<double>(runs_.size());
  if (meanRun < kCrowdedRun) {
    body_ += svgPath("path crowded", d);
  } else {
    body_ += svgPath("rim", d) + svgPath("path", d);
  }
}

// ---- 6. Positions

// Position p, which counts from 1, stands for the middle of its base.
void Drawing::drawPositions() {
  const double top = lanesBottom() + 3;
  const int step = roundStep(kPositionLabel / pixelsPerBase());
  SvgPath axis;
  axis.move(left_, top);
  axis.across(right_);
  if (!narrow_) body_ += svgText("name", 4, top + 17, "Base");
  for (int count = 1; count <= p_.length / step; ++count) {
    const double x = xOf(count * step - 0.5);
    const std::string words = std::to_string(count * step);
    const double half = kLetter * static_cast<double>(words.size()) / 2;
    axis.move(x, top);
    axis.down(top + 5);
    const bool cut = x + half > options_.width;
    body_ +=
        svgText(cut ? "position before" : "position", cut ? options_.width : x, top + 17, words);
  }
  body_ += svgPath("axis", axis);
  y_ = top + kAxis - 3;
}

// ---- 7. Protein

void Drawing::drawProtein() {
  if (read_.protein.empty() || runs_.empty()) return;
  const double begin = xOf(p_.start);
  body_ += svgElement("rect", "protein",
                      attribute("x", begin) + attribute("y", y_) +
                          attribute("width", xOf(endBase()) - begin) +
                          attribute("height", kProtein) + attribute("rx", 3));
  if (!narrow_) body_ += svgText("name", 4, y_ + 14, "Protein");
  const std::vector<double> middles = codonMiddles();
  if (3 * pixelsPerBase() >= kLeastAcid) {
    drawLetters(middles);
  } else {
    drawCounts(middles);
    drawOddAcids(middles);
  }
  y_ += kProtein + 4;
}

// [amino acid] x of the middle of its codon; one base of a codon at most is lost.
std::vector<double> Drawing::codonMiddles() const {
  const std::vector<int> positions = correctedPositions(p_);
  std::vector<double> middles;
  for (std::size_t i = 0; i + 2 < positions.size() && middles.size() < read_.protein.size();
       i += 3) {
    int first = p_.length;
    int last = -1;
    for (std::size_t k = i; k < i + 3; ++k) {
      if (positions[k] == kLostBase) continue;
      first = std::min(first, positions[k]);
      last = positions[k];
    }
    middles.push_back(xOf((first + last + 1) / 2.0));
  }
  return middles;
}

void Drawing::drawLetters(const std::vector<double>& middles) {
  std::string places;
  for (const double x : middles) places += (places.empty() ? "" : " ") + decimal(x);
  body_ += "<text class=\"acids\"" + attribute("x", places) + attribute("y", y_ + 14) + ">" +
           escaped(read_.protein.substr(0, middles.size())) + "</text>\n";
}

void Drawing::drawCounts(const std::vector<double>& middles) {
  const auto step = static_cast<std::size_t>(roundStep(kCountLabel / (3 * pixelsPerBase())));
  SvgPath counts;
  for (std::size_t count = step; count <= middles.size(); count += step) {
    const double x = middles[count - 1];
    counts.move(x, y_ + kProtein - 4);
    counts.down(y_ + kProtein);
    if (x + kCountLabel / 3 < middles.back()) {
      body_ += svgText("acid", x, y_ + 13, std::to_string(count));
    }
  }
  body_ += svgPath("counts", counts);
}

// Stop codons through the band, amino acids that are not known at its top.
void Drawing::drawOddAcids(const std::vector<double>& middles) {
  SvgPath unknown;
  SvgPath stops;
  double before = -kLeastTick;
  for (std::size_t i = 0; i < middles.size(); ++i) {
    const char acid = read_.protein[i];
    if ((acid != '*' && acid != 'X') || middles[i] - before < kLeastTick) continue;
    before = middles[i];
    SvgPath& marks = acid == '*' ? stops : unknown;
    marks.move(before, y_);
    marks.down(y_ + (acid == '*' ? kProtein : 5));
  }
  body_ += svgPath("unknown", unknown) + svgPath("innerstop", stops);
}

// ---- 8. Words

std::string described(const DrawnRead& read, const std::string& id) {
  std::string words = callSentence(read);
  for (const std::string& sentence : furtherSentences(read)) words += " " + sentence;
  return "<title" + attribute("id", id + "-title") + ">Read " + escaped(read.name) +
         "</title>\n<desc" + attribute("id", id + "-text") + ">" + escaped(words) + "</desc>\n";
}

std::string Drawing::finish() {
  drawLanes();
  drawPath();
  drawMarks();
  drawPositions();
  drawProtein();
  if (options_.legend) {
    const Legend legend = readLegend(p_, curves_, narrow_ ? 4 : left_, options_.width, y_ + 4);
    body_ += legend.svg;
    y_ += 4 + legend.height;
  }
  const std::string box = "0 0 " + std::to_string(options_.width) + " " + decimal(std::ceil(y_));
  const std::string words = options_.id + "-title " + options_.id + "-text";
  return "<svg xmlns=\"http://www.w3.org/2000/svg\"" + attribute("class", "velto-read") +
         attribute("viewBox", box) + attribute("role", "img") +
         attribute("aria-labelledby", words) + ">\n" + described(read_, options_.id) + body_ +
         "</svg>\n";
}

}  // namespace

std::string readSvg(const DrawnRead& read, const ReadSvgOptions& options) {
  return read.prediction.length == 0 ? "" : Drawing(read, options).finish();
}

}  // namespace velto
