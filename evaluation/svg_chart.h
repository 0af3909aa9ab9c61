// A chart with two axes on an SVG canvas: heading, frame, ticks and labels, and a legend below.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "evaluation/resampling.h"
#include "evaluation/svg_canvas.h"

namespace velto {

struct ChartAxis {
  std::string label;
  double least;
  double most;  // above least
  double tick;  // distance of the ticks; 0: no ticks
};

// How the points of one series look: filled and solid, or hollow and dashed.
struct ChartStyle {
  std::string colour;
  bool hollow;
};

// A value with the interval that it is sure to lie in, if there is one.
struct ChartPoint {
  double x;
  double y;
  std::optional<Interval> interval;
};

// A round distance of ticks (1, 2 or 5 times a power of ten) that gives four to ten ticks up to
// `most`, which must be above 0.
double roundTick(double most);

// Narrow enough to be read on a telephone.
class SvgChart {
 public:
  // `heading` is the title and up to two further lines; `height` that of the plotted area in
  // pixels. A vertical axis without ticks has no room for labels: rows are labelled inside.
  SvgChart(const std::vector<std::string>& heading, const ChartAxis& x, const ChartAxis& y,
           double height);

  // Points inside the axes, joined by lines in their order, each with the interval of its y.
  void addSeries(const std::vector<ChartPoint>& points, const ChartStyle& style);
  // A point with the interval of its x.
  void addPoint(const ChartPoint& point, const ChartStyle& style);
  // Bar from the horizontal axis up to y.
  void addBar(double fromX, double toX, double y, const std::string& fill);
  // Lines without markers.
  void addOutline(const std::vector<SvgPoint>& points, const std::string& colour);

  // Label inside the plotted area, its baseline at y.
  void labelRow(double y, const std::string& label);

  // The next line below the plotted area: an entry of the legend, or words alone.
  void addLegend(const std::string& label, const ChartStyle& style);
  void addNote(const std::string& words);

  // The image.
  std::string finish() const;

 private:
  SvgPoint place(double x, double y) const;
  void drawAxes();
  void drawMarker(SvgPoint at, const ChartStyle& style);
  double nextLine();

  const std::string title_;
  const ChartAxis x_;
  const ChartAxis y_;
  const double left_;    // pixels
  const double top_;     // pixels
  const double height_;  // pixels
  SvgCanvas canvas_;
  int linesBelow_ = 0;
};

}  // namespace velto
