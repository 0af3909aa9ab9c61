// 1. Headings and colours  2. Error rate  3. Distance  4. Classes
#include "evaluation/evaluation_plots.h"

#include <algorithm>

#include "evaluation/evaluation.h"
#include "evaluation/evaluation_figures.h"
#include "evaluation/svg_chart.h"
#include "model/read_class.h"

namespace velto {
namespace {

// ---- 1. Headings and colours

constexpr double kAxisRoom = 70;       // pixels beside the vertical axis, for numbers
constexpr double kClassRoom = 290;     // the same for names of classes
constexpr double kPlotHeight = 340;    // pixels
constexpr double kRowHeight = 26;      // pixels per class
constexpr std::size_t kLeastRows = 6;  // leaves room for the legend

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
constexpr PlottedFigure kPlotted[] = {{"CC", kBlue, correlationOf},
                                      {"right frame FR", kOrange, frameSensitivityOf},
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

ChartStyle styleOf(const PlottedFigure& figure, std::size_t model) {
  return {figure.colour, model == 1};
}

std::string legendOf(const PlottedFigure& figure, std::size_t model,
                     const EvaluationReport& report) {
  if (report.models.size() == 1) return figure.label;
  return std::string(figure.label) + ", " + kModelNames[model];
}

void addLegends(SvgChart& chart, const EvaluationReport& report) {
  for (std::size_t m = 0; m < report.models.size(); ++m) {
    for (const PlottedFigure& figure : kPlotted) {
      chart.addLegend(legendOf(figure, m, report), styleOf(figure, m));
    }
  }
}

// A correlation below 0 is drawn at 0, where the axis begins.
double drawn(double value) { return std::max(0.0, value); }

// ---- 2. Error rate

double highestRate(const EvaluationReport& report) {
  double highest = 0.0;
  for (const ModelEvaluation& model : report.models) {
    for (const RatePoint& point : model.byRate) highest = std::max(highest, point.shiftsPer100);
  }
  return highest > 0.0 ? highest : 1.0;
}

std::vector<SvgPoint> seriesOf(const ModelEvaluation& model, const PlottedFigure& figure) {
  std::vector<SvgPoint> points;
  for (const RatePoint& point : model.byRate) {
    const FigureValue value = figure.of(point.counts);
    if (value.value) points.push_back({point.shiftsPer100, drawn(*value.value)});
  }
  return points;
}

}  // namespace

std::string ratePlot(const EvaluationReport& report) {
  const double highest = highestRate(report);
  SvgChart chart(headingOf("Score against error rate", report),
                 {"true frameshifts per 100 coding bases", 0.0, highest * 1.05, roundTick(highest)},
                 {"score", 0.0, 1.0, 0.2}, kAxisRoom, kPlotHeight);
  for (std::size_t m = 0; m < report.models.size(); ++m) {
    for (const PlottedFigure& figure : kPlotted) {
      chart.addSeries(seriesOf(report.models[m], figure), styleOf(figure, m));
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
                 kAxisRoom, kPlotHeight);
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

// The figures of a row stand a little below each other, so that none hides another.
constexpr double kFigureStep = 0.25;  // rows

void addClassPoints(SvgChart& chart, const EvaluationReport& report, int readClass, double row) {
  for (std::size_t m = 0; m < report.models.size(); ++m) {
    const EvaluationCounts& counts = report.models[m].byClass[static_cast<std::size_t>(readClass)];
    double height = row + kFigureStep;
    for (const PlottedFigure& figure : kPlotted) {
      const FigureValue value = figure.of(counts);
      if (value.value) chart.addPoint({drawn(*value.value), height}, styleOf(figure, m));
      height -= kFigureStep;
    }
  }
}

}  // namespace

std::string classPlot(const EvaluationReport& report) {
  const std::vector<int> classes = classesWithReads(report.models.front());
  const auto rows = static_cast<double>(std::max(kLeastRows, classes.size()));
  SvgChart chart(headingOf("Accuracy by class of reads", report), {"score", 0.0, 1.0, 0.2},
                 {"class (reads)", 0.0, rows, 0.0}, kClassRoom, kRowHeight * rows);
  for (std::size_t i = 0; i < classes.size(); ++i) {
    const double row = rows - static_cast<double>(i) - 0.5;
    const EvaluationCounts& counts =
        report.models.front().byClass[static_cast<std::size_t>(classes[i])];
    chart.labelRow(row,
                   classWords(readClassAt(classes[i])) + " (" + std::to_string(counts.reads) + ")");
    addClassPoints(chart, report, classes[i], row);
  }
  addLegends(chart, report);
  return chart.finish();
}

}  // namespace velto
