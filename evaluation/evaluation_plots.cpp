// 1. Headings and colours  2. Error rate  3. Distance  4. Classes
#include "evaluation/evaluation_plots.h"

#include <algorithm>
#include <iterator>

#include "evaluation/evaluation.h"
#include "evaluation/evaluation_figures.h"
#include "evaluation/svg_chart.h"
#include "model/read_class.h"

namespace velto {
namespace {

// ---- 1. Headings and colours

constexpr double kPlotHeight = 300;  // pixels
constexpr double kLabelHeight = 19;  // pixels of the name of a class
constexpr double kMarkHeight = 11;   // pixels of a figure of a class, for each model

// Colours that people with colour blindness tell apart.
constexpr char kBlue[] = "#0072b2";
constexpr char kOrange[] = "#d55e00";
constexpr char kGreen[] = "#009e73";
constexpr char kLightBlue[] = "#9ecae1";

struct PlottedFigure {
  const char* label;
  const char* colour;
  FigureValue (*of)(const EvaluationCounts& counts);
};
constexpr PlottedFigure kPlotted[] = {{"correlation (CC)", kBlue, correlationOf},
                                      {"in right frame (FR)", kOrange, frameSensitivityOf},
                                      {"frame F1", kGreen, frameF1Of}};

constexpr const char* kModelNames[] = {"first", "second"};

std::vector<std::string> headingOf(const std::string& title, const EvaluationReport& report) {
  std::vector<std::string> heading = {title};
  for (std::size_t m = 0; m < report.models.size(); ++m) {
    const std::string name = report.models.size() == 1 ? "model" : kModelNames[m];
    const ModelEvaluation& model = report.models[m];
    heading.push_back(name + ": " + model.directory +
                      (model.decoder.empty() ? "" : ", decoder " + model.decoder));
  }
  return heading;
}

// A correlation below 0 is drawn at 0, where the axis begins.
double drawn(double value) { return std::max(0.0, value); }

ChartStyle styleOf(const PlottedFigure& figure, std::size_t model) {
  return {figure.colour, model == 1};
}

std::string legendOf(const PlottedFigure& figure, std::size_t model,
                     const EvaluationReport& report) {
  if (report.models.size() == 1) return figure.label;
  return std::string(figure.label) + ", " + kModelNames[model];
}

std::optional<Interval> intervalOf(const PlottedFigure& figure, const FigureIntervals& intervals) {
  const std::vector<Figure>& figures = evaluationFigures();
  for (std::size_t f = 0; f < intervals.size(); ++f) {
    if (figures[f].of == figure.of && intervals[f]) {
      return Interval{drawn(intervals[f]->low), drawn(intervals[f]->high)};
    }
  }
  return std::nullopt;
}

void addLegends(SvgChart& chart, const EvaluationReport& report) {
  for (std::size_t m = 0; m < report.models.size(); ++m) {
    for (const PlottedFigure& figure : kPlotted) {
      chart.addLegend(legendOf(figure, m, report), styleOf(figure, m));
    }
  }
  chart.addNote("Lines at the points: 95 % intervals (bootstrap of the transcripts)");
}

// ---- 2. Error rate

double highestRate(const EvaluationReport& report) {
  double highest = 0.0;
  for (const ModelEvaluation& model : report.models) {
    for (const RatePoint& point : model.byRate) highest = std::max(highest, point.shiftsPer100);
  }
  return highest > 0.0 ? highest : 1.0;
}

// `aside` sets the points of a series off from those of others at the same rate.
std::vector<ChartPoint> seriesOf(const ModelEvaluation& model, const PlottedFigure& figure,
                                 double aside) {
  std::vector<ChartPoint> points;
  for (const RatePoint& point : model.byRate) {
    const FigureValue value = figure.of(point.counts);
    if (!value.value) continue;
    points.push_back(
        {point.shiftsPer100 + aside, drawn(*value.value), intervalOf(figure, point.intervals)});
  }
  return points;
}

}  // namespace

std::string ratePlot(const EvaluationReport& report) {
  const double highest = highestRate(report);
  SvgChart chart(headingOf("Score against error rate", report),
                 {"true frameshifts per 100 coding bases", 0.0, highest * 1.08, roundTick(highest)},
                 {"score", 0.0, 1.0, 0.2}, kPlotHeight);
  double aside = highest * 0.01;
  for (std::size_t m = 0; m < report.models.size(); ++m) {
    for (const PlottedFigure& figure : kPlotted) {
      chart.addSeries(seriesOf(report.models[m], figure, aside), styleOf(figure, m));
      aside += highest * 0.01;
    }
  }
  addLegends(chart, report);
  return chart.finish();
}

// ---- 3. Distance

namespace {

// Bin b holds the distances around (b - kBinsPerSide) kBinWidth.
constexpr int kBinWidth = 5;  // bases; odd, so that a bin has a middle
constexpr int kBinsPerSide = kDistanceReach / kBinWidth;
constexpr int kBins = 2 * kBinsPerSide + 1;

double binStart(int bin) { return (bin - kBinsPerSide - 0.5) * kBinWidth; }

std::vector<int> binned(const std::vector<int>& distances) {
  std::vector<int> bins(kBins);
  constexpr int kFirst = kBinsPerSide * kBinWidth + kBinWidth / 2;  // minus the first bin's start
  for (const int distance : distances) {
    ++bins[static_cast<std::size_t>((distance + kFirst) / kBinWidth)];
  }
  return bins;
}

std::vector<SvgPoint> outlineOf(const std::vector<int>& bins) {
  std::vector<SvgPoint> points = {{binStart(0), 0.0}};
  for (int b = 0; b < kBins; ++b) {
    const double count = bins[static_cast<std::size_t>(b)];
    points.push_back({binStart(b), count});
    points.push_back({binStart(b + 1), count});
  }
  points.push_back({binStart(kBins), 0.0});
  return points;
}

std::string distanceLegend(const ModelEvaluation& model, const std::string& name) {
  return name + ": " + std::to_string(model.shiftDistances.size()) + " of " +
         std::to_string(model.total.shifts.called) + " called";
}

}  // namespace

std::string distancePlot(const EvaluationReport& report) {
  std::vector<std::vector<int>> bins;
  int most = 1;
  for (const ModelEvaluation& model : report.models) {
    bins.push_back(binned(model.shiftDistances));
    most = std::max(most, *std::max_element(bins.back().begin(), bins.back().end()));
  }
  SvgChart chart(headingOf("Distance of called from true frameshifts", report),
                 {"called minus true position, bases", binStart(0) - kBinWidth,
                  binStart(kBins) + kBinWidth, 15.0},
                 {"matched frameshifts per " + std::to_string(kBinWidth) + " bases", 0.0,
                  most * 1.05, std::max(1.0, roundTick(most))},
                 kPlotHeight);
  for (int b = 0; b < kBins; ++b) {
    chart.addBar(binStart(b), binStart(b + 1), bins[0][static_cast<std::size_t>(b)], kLightBlue);
  }
  chart.addLegend(distanceLegend(report.models[0], bins.size() == 1 ? "matched" : kModelNames[0]),
                  {kLightBlue, false});
  if (bins.size() == 2) {
    chart.addOutline(outlineOf(bins[1]), kOrange);
    chart.addLegend(distanceLegend(report.models[1], kModelNames[1]), {kOrange, true});
  }
  return chart.finish();
}

// ---- 4. Classes

namespace {

std::vector<int> classesWithReads(const ModelEvaluation& model) {
  std::vector<int> classes;
  for (int i = 0; i < kReadClasses; ++i) {
    if (model.byClass[static_cast<std::size_t>(i)].reads > 0) classes.push_back(i);
  }
  return classes;
}

// In words, for example "600 to 999 bases, GC 43 to 51 %".
std::string classWords(const ReadClass& readClass) {
  static constexpr const char* kLengths[] = {"600 to 999 bases", "1000 to 3000 bases",
                                             "over 3000 bases"};
  static constexpr const char* kGc[] = {"GC below 43 %", "GC 43 to 51 %", "GC 51 to 57 %",
                                        "GC over 57 %"};
  const char* length =
      readClass.windowWidth == 96 ? "up to 599 bases" : kLengths[readClass.lengthId];
  return std::string(length) + ", " + kGc[readClass.gcId];
}

FigureIntervals classIntervals(const ModelEvaluation& model, std::size_t readClass) {
  return model.classIntervals.empty() ? FigureIntervals{} : model.classIntervals[readClass];
}

// Figures stand below each other, those of two models side by side; `y` counts pixels upwards.
void addClassPoints(SvgChart& chart, const EvaluationReport& report, std::size_t readClass,
                    double y) {
  for (const PlottedFigure& figure : kPlotted) {
    for (std::size_t m = 0; m < report.models.size(); ++m) {
      const ModelEvaluation& model = report.models[m];
      const FigureValue value = figure.of(model.byClass[readClass]);
      const std::optional<Interval> interval = intervalOf(figure, classIntervals(model, readClass));
      if (value.value) chart.addPoint({drawn(*value.value), y, interval}, styleOf(figure, m));
      y -= kMarkHeight;
    }
  }
}

}  // namespace

std::string classPlot(const EvaluationReport& report) {
  const std::vector<int> classes = classesWithReads(report.models.front());
  const double rowHeight =
      kLabelHeight + kMarkHeight * static_cast<double>(std::size(kPlotted) * report.models.size());
  const double height = rowHeight * static_cast<double>(std::max<std::size_t>(1, classes.size()));
  SvgChart chart(headingOf("Accuracy by class of reads", report), {"score", 0.0, 1.0, 0.2},
                 {"", 0.0, height, 0.0}, height);
  double y = height;
  for (const int i : classes) {
    const auto readClass = static_cast<std::size_t>(i);
    const long reads = report.models.front().byClass[readClass].reads;
    const std::string label = classWords(readClassAt(i)) + ": " + std::to_string(reads) + " reads";
    chart.labelRow(y - kLabelHeight + 5, label);
    addClassPoints(chart, report, readClass, y - kLabelHeight - kMarkHeight / 2);
    y -= rowHeight;
  }
  addLegends(chart, report);
  return chart.finish();
}

}  // namespace velto
