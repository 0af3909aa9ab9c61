#include "evaluation/svg_chart.h"

#include <cmath>

#include "draw/markup.h"

namespace velto {
namespace {

// Sizes in pixels.
constexpr double kWidth = 420;
constexpr double kMargin = 14;
constexpr double kAxisRoom = 58;  // beside a vertical axis with ticks
constexpr double kHeadingLine = 18;
constexpr double kTopMargin = 20;
constexpr double kBottomRoom = 52;  // for ticks and label of the horizontal axis
constexpr double kLegendLine = 20;
constexpr int kTextSize = 12;
constexpr int kTitleSize = 16;
constexpr double kMarkerRadius = 4;

constexpr char kInk[] = "#222222";
constexpr char kGrid[] = "#dddddd";
constexpr char kPaper[] = "#ffffff";

// No line of the heading is wider than the image.
constexpr std::size_t kLongestHeading = 60;  // characters

std::string cut(const std::string& words) {
  std::string shown = printable(words);
  if (charactersOf(shown) <= kLongestHeading) return shown;
  std::size_t end = shown.size();
  while (charactersOf(shown.substr(0, end)) > kLongestHeading - 3) --end;
  return shown.substr(0, end) + "...";
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
  return kTopMargin + kHeadingLine * static_cast<double>(heading.size()) + 4;
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
                   double height)
    : title_(heading.front()),
      x_(x),
      y_(y),
      left_(y.tick > 0.0 ? kAxisRoom : kMargin),
      top_(topOf(heading)),
      height_(height) {
  for (std::size_t i = 0; i < heading.size(); ++i) {
    canvas_.text({kMargin, kTopMargin + kHeadingLine * static_cast<double>(i)}, cut(heading[i]),
                 i == 0 ? kTitleSize : kTextSize, SvgAnchor::kStart, kInk);
  }
  drawAxes();
}

SvgPoint SvgChart::place(double x, double y) const {
  return {left_ + (kWidth - kMargin - left_) * (x - x_.least) / (x_.most - x_.least),
          top_ + height_ * (y_.most - y) / (y_.most - y_.least)};
}

void SvgChart::drawAxes() {
  const double bottom = top_ + height_;
  const double right = kWidth - kMargin;
  for (const double value : ticks(x_)) {
    const double x = place(value, y_.least).first;
    canvas_.line({x, top_}, {x, bottom}, kGrid, 1);
    canvas_.text({x, bottom + 17}, decimal(value, 3), kTextSize, SvgAnchor::kMiddle, kInk);
  }
  for (const double value : ticks(y_)) {
    const double y = place(x_.least, value).second;
    canvas_.line({left_, y}, {right, y}, kGrid, 1);
    canvas_.text({left_ - 7, y + 4}, decimal(value, 3), kTextSize, SvgAnchor::kEnd, kInk);
  }
  canvas_.line({left_, top_}, {left_, bottom}, kInk, 1);
  canvas_.line({left_, bottom}, {right, bottom}, kInk, 1);
  canvas_.text({(left_ + right) / 2, bottom + 37}, x_.label, kTextSize, SvgAnchor::kMiddle, kInk);
  canvas_.text({18, top_ + height_ / 2}, y_.label, kTextSize, SvgAnchor::kMiddle, kInk, true);
}

void SvgChart::drawMarker(SvgPoint at, const ChartStyle& style) {
  canvas_.circle(at, kMarkerRadius, style.hollow ? kPaper : style.colour, style.colour);
}

void SvgChart::addSeries(const std::vector<ChartPoint>& points, const ChartStyle& style) {
  std::vector<SvgPoint> places;
  for (const ChartPoint& point : points) {
    places.push_back(place(point.x, point.y));
    if (!point.interval) continue;
    canvas_.line(place(point.x, point.interval->low), place(point.x, point.interval->high),
                 style.colour, 1.5);
  }
  canvas_.polyline(places, style.colour, 1.5, style.hollow);
  for (const SvgPoint& at : places) drawMarker(at, style);
}

void SvgChart::addPoint(const ChartPoint& point, const ChartStyle& style) {
  if (point.interval) {
    canvas_.line(place(point.interval->low, point.y), place(point.interval->high, point.y),
                 style.colour, 1.5);
  }
  drawMarker(place(point.x, point.y), style);
}

void SvgChart::addBar(double fromX, double toX, double y, const std::string& fill) {
  const SvgPoint corner = place(fromX, y);
  const SvgPoint opposite = place(toX, y_.least);
  canvas_.rectangle(corner, opposite.first - corner.first, opposite.second - corner.second, fill,
                    kPaper);
}

void SvgChart::addOutline(const std::vector<SvgPoint>& points, const std::string& colour) {
  std::vector<SvgPoint> places;
  places.reserve(points.size());
  for (const SvgPoint& point : points) places.push_back(place(point.first, point.second));
  canvas_.polyline(places, colour, 2, false);
}

void SvgChart::labelRow(double y, const std::string& label) {
  const double height = place(x_.least, y).second;
  canvas_.text({left_ + 5, height}, label, kTextSize, SvgAnchor::kStart, kInk);
}

double SvgChart::nextLine() { return top_ + height_ + kBottomRoom + kLegendLine * linesBelow_++; }

void SvgChart::addLegend(const std::string& label, const ChartStyle& style) {
  const double y = nextLine();
  drawMarker({kMargin + 6, y + 6}, style);
  canvas_.text({kMargin + 18, y + 10}, label, kTextSize, SvgAnchor::kStart, kInk);
}

void SvgChart::addNote(const std::string& words) {
  canvas_.text({kMargin, nextLine() + 10}, words, kTextSize, SvgAnchor::kStart, kInk);
}

std::string SvgChart::finish() const {
  const double height = top_ + height_ + kBottomRoom + kLegendLine * linesBelow_ + 4;
  return canvas_.image(static_cast<int>(kWidth), static_cast<int>(height), title_);
}

}  // namespace velto
