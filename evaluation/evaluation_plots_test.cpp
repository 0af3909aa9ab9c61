#include "evaluation/evaluation_plots.h"

#include <gtest/gtest.h>

#include <vector>

#include "evaluation/evaluation_figures.h"
#include "evaluation/svg_chart.h"
#include "model/read_class.h"

namespace velto {
namespace {

// Empty if every tag of the text is closed in turn, every attribute quoted, and no stray '<' or '&'
// stands in the text; else what is wrong. Enough XML for our own images.
std::string xmlFault(const std::string& text) {
  std::vector<std::string> open;
  std::size_t at = 0;
  while ((at = text.find('<', at)) != std::string::npos) {
    const std::size_t end = text.find('>', at);
    if (end == std::string::npos) return "tag without end";
    const std::string tag = text.substr(at + 1, end - at - 1);
    at = end + 1;
    if (tag.find('<') != std::string::npos) return "stray '<' before " + tag;
    std::size_t quotes = 0;
    for (const char c : tag) quotes += c == '"';
    if (quotes % 2 != 0) return "odd quotes in " + tag;
    if (tag.front() == '?' || tag.back() == '/') continue;
    if (tag.front() != '/') {
      open.push_back(tag.substr(0, tag.find(' ')));
    } else if (open.empty() || open.back() != tag.substr(1)) {
      return "unexpected " + tag;
    } else {
      open.pop_back();
    }
  }
  for (at = 0; (at = text.find('&', at)) != std::string::npos; ++at) {
    const std::string name = text.substr(at, text.find(';', at) - at + 1);
    if (name != "&amp;" && name != "&lt;" && name != "&gt;" && name != "&quot;") return name;
  }
  return open.empty() ? "" : "unclosed " + open.back();
}

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
  return count;
}

EvaluationCounts counts(long found) {
  EvaluationCounts c;
  c.reads = 7;
  c.bases = 100;
  c.coding = 40;
  c.called = c.both = c.inFrame = found;
  return c;
}

ModelEvaluation model(const std::string& directory, long found) {
  ModelEvaluation m;
  m.directory = directory;
  m.total = counts(found);
  m.byClass.resize(kReadClasses);
  m.byClass[2] = m.byClass[9] = m.total;
  m.byRate = {{0.0, counts(found)}, {1.2, counts(found / 2)}};
  m.shiftDistances = {-60, -2, 0, 2, 3, 60};
  return m;
}

EvaluationReport report(int models) {
  EvaluationReport r;
  r.models.push_back(model("a <b> & \"c\"", 30));
  if (models == 2) r.models.push_back(model("other\xff", 20));
  return r;
}

TEST(EvaluationPlots, ImagesAreWellFormed) {
  for (const int models : {1, 2}) {
    for (const auto plot : {ratePlot, distancePlot, classPlot}) {
      const std::string text = plot(report(models));
      EXPECT_EQ(xmlFault(text), "") << text;
      EXPECT_EQ(text.find("nan"), std::string::npos);
    }
  }
}

TEST(EvaluationPlots, NothingToJudgeStillGivesAnImage) {
  EvaluationReport empty;
  empty.models.emplace_back();
  empty.models.front().byClass.resize(kReadClasses);
  for (const auto plot : {ratePlot, distancePlot, classPlot}) {
    const std::string text = plot(empty);
    EXPECT_EQ(xmlFault(text), "") << text;
    EXPECT_EQ(text.find("nan"), std::string::npos);
    EXPECT_EQ(text.find("inf"), std::string::npos);
  }
}

TEST(EvaluationPlots, EveryFigureOfEveryModelHasItsPoints) {
  // Three figures: two points each and an entry of the legend.
  EXPECT_EQ(occurrences(ratePlot(report(1)), "<circle"), 3U * 2 + 3);
  EXPECT_EQ(occurrences(ratePlot(report(2)), "<circle"), 2U * (3 * 2 + 3));
  EXPECT_EQ(occurrences(classPlot(report(2)), "<circle"), 2U * (3 * 2 + 3));
}

// The interval 0.2 to 0.7 for frame F1, none for the other figures.
FigureIntervals intervalsOfFrameF1() {
  const std::vector<Figure>& figures = evaluationFigures();
  FigureIntervals intervals(figures.size());
  for (std::size_t f = 0; f < figures.size(); ++f) {
    if (figures[f].of == frameF1Of) intervals[f] = Interval{0.2, 0.7};
  }
  return intervals;
}

TEST(EvaluationPlots, IntervalsAreLinesAtTheirPoints) {
  const EvaluationReport without = report(1);
  EvaluationReport with = without;
  with.models[0].byRate[1].intervals = intervalsOfFrameF1();
  with.models[0].classIntervals.resize(kReadClasses);
  with.models[0].classIntervals[9] = intervalsOfFrameF1();
  // One line more each, of half the plotted height of 300, or of half the width of 420 - 2 x 14.
  EXPECT_EQ(occurrences(ratePlot(with), "<line"), occurrences(ratePlot(without), "<line") + 1);
  EXPECT_NE(ratePlot(with).find("y1=\"300\" x2=\"389.9\" y2=\"150\""), std::string::npos)
      << ratePlot(with);
  EXPECT_EQ(occurrences(classPlot(with), "<line"), occurrences(classPlot(without), "<line") + 1);
  EXPECT_NE(classPlot(with).find("x1=\"92.4\""), std::string::npos) << classPlot(with);
  EXPECT_NE(classPlot(with).find("x2=\"288.4\""), std::string::npos);
}

TEST(EvaluationPlots, ImagesAreNoWiderThanATelephoneShows) {
  for (const auto plot : {ratePlot, distancePlot, classPlot}) {
    EXPECT_NE(plot(report(2)).find("viewBox=\"0 0 420 "), std::string::npos);
  }
}

TEST(EvaluationPlots, ClassesAreNamedInWords) {
  EvaluationReport twoClasses = report(1);
  for (EvaluationCounts& counts : twoClasses.models[0].byClass) counts = {};
  twoClasses.models[0].byClass[0].reads = 12;
  twoClasses.models[0].byClass[14].reads = 3;
  const std::string text = classPlot(twoClasses);
  EXPECT_NE(text.find("up to 599 bases, GC below 43 %: 12 reads"), std::string::npos) << text;
  EXPECT_NE(text.find("over 3000 bases, GC 51 to 57 %: 3 reads"), std::string::npos) << text;
}

TEST(EvaluationPlots, DistancesFallIntoBinsAroundMultiplesOfFive) {
  // -2, 0 and 2 stand in the bin of 0: the highest bar, as high as the axis of 3 x 1.05 allows.
  const std::string text = distancePlot(report(1));
  EXPECT_NE(text.find("height=\"285.7\""), std::string::npos) << text;  // 300 x 3 / 3.15
  EXPECT_EQ(occurrences(text, "height=\"95.2\""), 3U);                  // -60, 3 and 60
}

TEST(SvgChart, TicksAreRound) {
  EXPECT_DOUBLE_EQ(roundTick(1.0), 0.2);
  EXPECT_DOUBLE_EQ(roundTick(1.2), 0.2);
  EXPECT_DOUBLE_EQ(roundTick(7.9), 1.0);
  EXPECT_DOUBLE_EQ(roundTick(8.0), 2.0);
  EXPECT_DOUBLE_EQ(roundTick(530.0), 100.0);
}

}  // namespace
}  // namespace velto
