// 1. Sizes  2. Labels  3. The chart  4. The numbers
#include "draw/bar_chart.h"

#include <algorithm>
#include <cmath>

#include "draw/round_step.h"
#include "draw/svg_marks.h"

namespace velto {
namespace {

// ---- 1. Sizes (pixels)

constexpr double kWidth = 420;
constexpr double kLeft = 58;
constexpr double kRight = kWidth - 14;
constexpr double kTop = 12;
constexpr double kFloor = 160;
constexpr double kHeight = 206;
constexpr double kLetter = 6.6;
constexpr double kLabelGap = 10;

// ---- 2. Labels

std::string edgeText(double edge) {
  const std::string number =
      std::abs(edge) >= 10000 ? grouped(std::llround(edge)) : decimal(std::abs(edge), 2);
  return edge < 0 && std::abs(edge) < 10000 ? "\u2212" + number : number;
}

// How well an edge serves as a label: 3 for zero and powers of ten, 2 for five times, 1 for twice
// one, else 0.
int roundness(double edge) {
  double leading = std::abs(edge);
  if (leading < 1e-9) return 3;
  while (leading >= 9.999) leading /= 10;
  while (leading < 0.9999) leading *= 10;
  const auto is = [leading](double digit) { return std::abs(leading - digit) < 1e-6; };
  if (is(1)) return 3;
  return is(5) ? 2 : is(2) ? 1 : 0;
}

std::string binText(const BarChart& chart, std::size_t bin) {
  const std::string from = edgeText(chart.edges[bin]);
  return chart.isSingleValues ? from : from + " to " + edgeText(chart.edges[bin + 1]);
}

// The width of the bins; 0 if they are not of one width.
double evenWidth(const std::vector<double>& edges) {
  const double width = edges[1] - edges[0];
  for (std::size_t i = 1; i + 1 < edges.size(); ++i) {
    if (std::abs(edges[i + 1] - edges[i] - width) > 1e-6) return 0.0;
  }
  return width;
}

double labelWidth(const std::string& words) {
  return kLetter * static_cast<double>(charactersOf(words)) + kLabelGap;
}

// [edge] how well it serves as a label. Of even bins that is 3 for multiples of a round number that
// leaves room for all of them, else 0.
std::vector<int> ranksOf(const std::vector<double>& edges, double barWidth) {
  constexpr double kSteps = 1000;  // of one: the finest multiples
  double widest = 0.0;
  for (const double edge : edges) widest = std::max(widest, labelWidth(edgeText(edge)));
  const double width = evenWidth(edges);
  const double step = roundStep(kSteps * width * widest / barWidth) / kSteps;
  std::vector<int> ranks;
  for (const double edge : edges) {
    const bool isMultiple = std::abs(edge - step * std::round(edge / step)) < 1e-6;
    ranks.push_back(width == 0.0 ? roundness(edge) : isMultiple ? 3 : 0);
  }
  return ranks;
}

struct EdgeLabel {
  double x;
  std::string words;
};

// The roundest edges first, as long as there is room; others only where there would be one at most.
std::vector<EdgeLabel> edgeLabels(const BarChart& chart, double barWidth) {
  const std::size_t count = chart.edges.size() - (chart.isSingleValues ? 1 : 0);
  const double left = kLeft + (chart.isSingleValues ? barWidth / 2 : 0.0);
  const std::vector<int> ranks = ranksOf(chart.edges, barWidth);
  std::vector<EdgeLabel> labels;
  for (int rank = 3; rank > 0 || (rank == 0 && labels.size() < 2); --rank) {
    for (std::size_t i = 0; i < count; ++i) {
      if (ranks[i] != rank) continue;
      const EdgeLabel label{left + barWidth * static_cast<double>(i), edgeText(chart.edges[i])};
      const bool free = std::none_of(labels.begin(), labels.end(), [&](const EdgeLabel& other) {
        return std::abs(other.x - label.x) <
               (labelWidth(other.words) + labelWidth(label.words)) / 2;
      });
      if (free) labels.push_back(label);
    }
  }
  return labels;
}

// ---- 3. The chart

class Chart {
 public:
  explicit Chart(const BarChart& chart) : chart_(chart), bins_(chart.lower.size()) {
    for (std::size_t i = 0; i < bins_; ++i) most_ = std::max(most_, total(i));
    barWidth_ = (kRight - kLeft) / static_cast<double>(bins_);
  }

  std::string svg(const std::string& id) {
    drawScale();
    drawBars();
    drawEdges();
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" class=\"velto-chart\"" +
           attribute("viewBox", "0 0 " + decimal(kWidth) + " " + decimal(kHeight)) +
           " role=\"img\"" + attribute("aria-labelledby", id + "-title " + id + "-text") +
           ">\n<title" + attribute("id", id + "-title") + ">" + escaped(chart_.title) +
           "</title>\n<desc" + attribute("id", id + "-text") + ">" + escaped(description()) +
           "</desc>\n" + body_ + "</svg>\n";
  }

 private:
  long upper(std::size_t bin) const { return chart_.upperName.empty() ? 0 : chart_.upper[bin]; }
  long total(std::size_t bin) const { return chart_.lower[bin] + upper(bin); }
  double yOf(double count) const {
    return kFloor - (kFloor - kTop) * count / static_cast<double>(most_);
  }

  std::string description() const {
    std::size_t fullest = 0;
    for (std::size_t i = 0; i < bins_; ++i) {
      if (total(i) > total(fullest)) fullest = i;
    }
    return "Histogram. The fullest of " + std::to_string(bins_) + " bins, " +
           binText(chart_, fullest) + ", holds " + std::to_string(total(fullest)) +
           " reads. The table below has all numbers.";
  }

  void drawScale() {
    const long step = roundStep(std::max(1.0, static_cast<double>(most_) / 4));
    SvgPath lines;
    for (long count = step; count <= most_; count += step) {
      lines.move(kLeft, yOf(static_cast<double>(count)));
      lines.across(kRight);
      body_ +=
          svgText("scale before", kLeft - 6, yOf(static_cast<double>(count)) + 4, grouped(count));
    }
    body_ += svgPath("grid", lines);
  }

  void drawBars() {
    SvgPath lower;
    SvgPath upper;
    for (std::size_t i = 0; i < bins_; ++i) {
      const auto first = static_cast<double>(chart_.lower[i]);
      addBar(lower, i, 0, first);
      addBar(upper, i, first, static_cast<double>(total(i)));
    }
    body_ += svgPath("bar lower", lower) + svgPath("bar upper", upper);
  }

  void addBar(SvgPath& path, std::size_t bin, double from, double to) const {
    if (from == to) return;
    const double gap = barWidth_ > 4 ? 0.5 : 0.0;
    path.move(kLeft + barWidth_ * static_cast<double>(bin) + gap, yOf(from));
    path.down(yOf(to));
    path.across(kLeft + barWidth_ * static_cast<double>(bin + 1) - gap);
    path.down(yOf(from));
    path.close();
  }

  void drawEdges() {
    SvgPath axis;
    axis.move(kLeft, kFloor);
    axis.across(kRight);
    for (const EdgeLabel& label : edgeLabels(chart_, barWidth_)) {
      axis.move(label.x, kFloor);
      axis.down(kFloor + 4);
      body_ += svgText("scale", label.x, kFloor + 17, label.words);
    }
    body_ += svgPath("axis", axis);
    body_ += svgText("scale", (kLeft + kRight) / 2, kFloor + 37, chart_.axis);
  }

  const BarChart& chart_;
  const std::size_t bins_;
  long most_ = 1;
  double barWidth_;
  std::string body_;
};

// ---- 4. The numbers

std::string cell(const char* name, const std::string& words) {
  return std::string("<") + name + ">" + escaped(words) + "</" + name + ">";
}

std::string numberTable(const BarChart& chart) {
  const bool two = !chart.upperName.empty();
  std::string rows = "<tr><td></td>" + cell("th", chart.lowerName) +
                     (two ? cell("th", chart.upperName) : "") + "</tr>\n";
  for (std::size_t i = 0; i < chart.lower.size(); ++i) {
    rows += "<tr>" + cell("th", binText(chart, i)) + cell("td", grouped(chart.lower[i])) +
            (two ? cell("td", grouped(chart.upper[i])) : "") + "</tr>\n";
  }
  return "<details><summary>Numbers</summary>\n<table class=\"numbers\">\n" + rows +
         "</table>\n</details>\n";
}

}  // namespace

std::string barChartFigure(const BarChart& chart, const std::string& id) {
  return "<figure class=\"card\">\n<h3>" + escaped(chart.title) + "</h3>\n" + Chart(chart).svg(id) +
         numberTable(chart) + "</figure>\n";
}

}  // namespace velto
