#include "evaluation/svg_chart.h"

#include <cmath>
#include <cstdio>

namespace velto {
namespace {

// Sizes in pixels.
constexpr double kPlotWidth = 520;
constexpr double kLegendWidth = 260;
constexpr double kHeadingLine = 20;
constexpr double kTopMargin = 18;
constexpr double kBottomMargin = 60;
constexpr int kTextSize = 13;
constexpr int kTitleSize = 17;
constexpr double kMarkerRadius = 4.5;

constexpr char kInk[] = "#222222";
constexpr char kGrid[] = "#dddddd";
constexpr char kPaper[] = "#ffffff";

// No label is wider than the image.
constexpr std::size_t kLongestHeading = 90;  // characters

std::string cut(const std::string& words) {
  if (words.size() <= kLongestHeading) return words;
  return words.substr(0, kLongestHeading - 3) + "...";
}

std::string tickLabel(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", std::abs(value) < 1e-9 ? 0.0 : value);
  return text;
}

std::vector<double> ticks(const ChartAxis& axis) {
  std::vector<double> values;
  if (axis.tick <= 0.0) return values;
  const auto first = static_cast<long>(std::ceil(axis.least / axis.tick - 1e-9));
  const auto last = static_cast<long>(std::floor(axis.most / axis.tick + 1e-9));
  for (long i = first; i <= last; ++i) values.push_back(static_cast<double>(i) * axis.tick);
  return values;
}

double topOf(const std::vector<std::string>& heading) {
  return kTopMargin + kHeadingLine * static_cast<double>(heading.size()) + 12;
}

}  // namespace

double roundTick(double most) {
  const double power = std::pow(10.0, std::floor(std::log10(most / 4.0)));
  for (const double step : {5.0, 2.0}) {
    if (step * power <= most / 4.0) return step * power;
  }
  return power;
}

SvgChart::SvgChart(const std::vector<std::string>& heading, const ChartAxis& x, const ChartAxis& y,
                   double left, double height)
    : x_(x),
      y_(y),
      left_(left),
      top_(topOf(heading)),
      height_(height),
      canvas_(static_cast<int>(left + kPlotWidth + kLegendWidth),
              static_cast<int>(top_ + height + kBottomMargin), heading.front()) {
  for (std::size_t i = 0; i < heading.size(); ++i) {
    canvas_.text({kTopMargin, kTopMargin + kHeadingLine * static_cast<double>(i) + 6},
                 cut(heading[i]), i == 0 ? kTitleSize : kTextSize, SvgAnchor::kStart, kInk);
  }
  drawAxes();
}

SvgPoint SvgChart::place(SvgPoint point) const {
  return {left_ + kPlotWidth * (point.first - x_.least) / (x_.most - x_.least),
          top_ + height_ * (y_.most - point.second) / (y_.most - y_.least)};
}

void SvgChart::drawAxes() {
  const double bottom = top_ + height_;
  for (const double value : ticks(x_)) {
    const double x = place({value, y_.least}).first;
    canvas_.line({x, top_}, {x, bottom}, kGrid, 1);
    canvas_.text({x, bottom + 18}, tickLabel(value), kTextSize, SvgAnchor::kMiddle, kInk);
  }
  for (const double value : ticks(y_)) {
    const double y = place({x_.least, value}).second;
    canvas_.line({left_, y}, {left_ + kPlotWidth, y}, kGrid, 1);
    canvas_.text({left_ - 8, y + 4}, tickLabel(value), kTextSize, SvgAnchor::kEnd, kInk);
  }
  canvas_.line({left_, top_}, {left_, bottom}, kInk, 1);
  canvas_.line({left_, bottom}, {left_ + kPlotWidth, bottom}, kInk, 1);
  canvas_.text({left_ + kPlotWidth / 2, bottom + 44}, x_.label, kTextSize, SvgAnchor::kMiddle,
               kInk);
  canvas_.text({20, top_ + height_ / 2}, y_.label, kTextSize, SvgAnchor::kMiddle, kInk, true);
}

void SvgChart::addSeries(const std::vector<SvgPoint>& points, const ChartStyle& style) {
  std::vector<SvgPoint> places;
  for (const SvgPoint& point : points) places.push_back(place(point));
  canvas_.polyline(places, style.colour, 2, style.hollow);
  for (const SvgPoint& point : points) addPoint(point, style);
}

void SvgChart::addPoint(SvgPoint point, const ChartStyle& style) {
  canvas_.circle(place(point), kMarkerRadius, style.hollow ? kPaper : style.colour, style.colour);
}

void SvgChart::addBar(double fromX, double toX, double y, const std::string& fill) {
  const SvgPoint corner = place({fromX, y});
  const SvgPoint opposite = place({toX, y_.least});
  canvas_.rectangle(corner, opposite.first - corner.first, opposite.second - corner.second, fill,
                    kPaper);
}

void SvgChart::addOutline(const std::vector<SvgPoint>& points, const std::string& colour) {
  std::vector<SvgPoint> places;
  for (const SvgPoint& point : points) places.push_back(place(point));
  canvas_.polyline(places, colour, 2, false);
}

void SvgChart::labelRow(double y, const std::string& label) {
  const double height = place({x_.least, y}).second;
  canvas_.text({left_ - 8, height + 4}, label, kTextSize, SvgAnchor::kEnd, kInk);
}

void SvgChart::addLegend(const std::string& label, const ChartStyle& style) {
  const double x = left_ + kPlotWidth + 24;
  const double y = top_ + 10 + 22 * legendEntries_++;
  canvas_.circle({x, y}, kMarkerRadius, style.hollow ? kPaper : style.colour, style.colour);
  canvas_.text({x + 14, y + 4}, label, kTextSize, SvgAnchor::kStart, kInk);
}

}  // namespace velto
