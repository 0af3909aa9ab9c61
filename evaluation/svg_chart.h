// A chart with two axes on an SVG canvas: frame, ticks, labels, heading and legend.
#pragma once

#include <string>
#include <vector>

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

// A round distance of ticks (1, 2 or 5 times a power of ten) that gives four to ten ticks up to
// `most`, which must be above 0.
double roundTick(double most);

class SvgChart {
 public:
  // `heading` is the title and up to two further lines. `left` is the room for the labels beside
  // the vertical axis, in pixels; `height` that of the plotted area.
  SvgChart(const std::vector<std::string>& heading, const ChartAxis& x, const ChartAxis& y,
           double left, double height);

  // Series are joined by lines in the order of their points, which lie inside the axes.
  void addSeries(const std::vector<SvgPoint>& points, const ChartStyle& style);
  void addPoint(SvgPoint point, const ChartStyle& style);
  // Bar from the horizontal axis up to y.
  void addBar(double fromX, double toX, double y, const std::string& fill);
  // Lines without markers.
  void addOutline(const std::vector<SvgPoint>& points, const std::string& colour);

  // Label beside the vertical axis at y.
  void labelRow(double y, const std::string& label);

  // Next entry of the legend, right of the plotted area.
  void addLegend(const std::string& label, const ChartStyle& style);

  std::string finish() const { return canvas_.finish(); }

 private:
  SvgPoint place(SvgPoint point) const;
  void drawAxes();

  const ChartAxis x_;
  const ChartAxis y_;
  const double left_;    // pixels
  const double top_;     // pixels
  const double height_;  // pixels
  SvgCanvas canvas_;
  int legendEntries_ = 0;
};

}  // namespace velto
