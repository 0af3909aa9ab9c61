// Charts are 420 pixels wide; bars stand from 58 to 406, on a floor at 160 and up to 12.
#include "draw/bar_chart.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

BarChart twoBins() { return {"Length", "bases", {100, 200, 500}, {4, 2}, {0, 1}, "in", "out"}; }

TEST(BarChart, BarsAreStackedAndFillTheirBins) {
  // Two bars of 174 pixels less half a pixel on each side; 37 pixels a read.
  const std::string svg = barChartFigure(twoBins(), "c");
  EXPECT_TRUE(
      holds(svg, "class=\"bar lower\" d=\"M58.5 160V12H231.5V160ZM232.5 160V86H405.5V160Z\""))
      << svg;
  EXPECT_TRUE(holds(svg, "class=\"bar upper\" d=\"M232.5 86V49H405.5V86Z\"")) << svg;
}

TEST(BarChart, EdgesAreLabelledWhereTheyAre) {
  const std::string svg = barChartFigure(twoBins(), "c");
  EXPECT_TRUE(holds(svg, "x=\"58\" y=\"177\">100<"));
  EXPECT_TRUE(holds(svg, "x=\"232\" y=\"177\">200<"));
  EXPECT_TRUE(holds(svg, "x=\"406\" y=\"177\">500<"));
}

TEST(BarChart, SingleValuesAreLabelledInTheMiddleOfTheirBars) {
  BarChart chart = {"Shifts", "n", {0, 1, 2}, {4, 2}, {}, "reads", "", true};
  const std::string svg = barChartFigure(chart, "c");
  EXPECT_TRUE(holds(svg, "x=\"145\" y=\"177\">0<")) << svg;
  EXPECT_TRUE(holds(svg, "<th>1</th><td>2</td>"));
  EXPECT_FALSE(holds(svg, "bar upper"));
}

TEST(BarChart, RoundEdgesWinWhereThereIsRoomForFew) {
  BarChart chart = {"GC", "percent", {}, std::vector<long>(50, 1), std::vector<long>(50, 1),
                    "in", "out"};
  for (int i = 0; i <= 50; ++i) chart.edges.push_back(2 * i + 1000);
  const std::string svg = barChartFigure(chart, "c");
  EXPECT_TRUE(holds(svg, ">1000</text>"));
  EXPECT_FALSE(holds(svg, ">1002</text>"));
}

TEST(BarChart, EvenBinsAreLabelledEvenly) {
  BarChart chart = {"GC", "percent", {}, std::vector<long>(20, 1), {}, "in", ""};
  for (int i = 0; i <= 20; ++i) chart.edges.push_back(2 * i + 32);
  const std::string svg = barChartFigure(chart, "c");
  for (const char* label : {">40</text>", ">50</text>", ">60</text>", ">70</text>"}) {
    EXPECT_TRUE(holds(svg, label)) << label;
  }
  EXPECT_FALSE(holds(svg, ">32</text>"));
  EXPECT_FALSE(holds(svg, ">44</text>"));
}

TEST(BarChart, UnevenBinsAreLabelledAtRoundEdges) {
  BarChart chart = {"Length", "bases", {500, 560, 630, 710, 800, 900, 1000, 1120}, {}, {}, "", ""};
  chart.lower.assign(7, 1);
  const std::string svg = barChartFigure(chart, "c");
  EXPECT_TRUE(holds(svg, ">500</text>"));
  EXPECT_TRUE(holds(svg, ">1000</text>"));
  EXPECT_FALSE(holds(svg, ">710</text>"));
  chart.edges = {630, 710, 800};
  chart.lower.assign(2, 1);
  EXPECT_TRUE(holds(barChartFigure(chart, "c"), ">710</text>"));
}

TEST(BarChart, AllNumbersAreInATable) {
  EXPECT_TRUE(
      holds(barChartFigure(twoBins(), "c"), "<tr><th>200 to 500</th><td>2</td><td>1</td></tr>"));
}

TEST(BarChart, TheChartDescribesItself) {
  const std::string svg = barChartFigure(twoBins(), "c");
  EXPECT_TRUE(holds(svg, "aria-labelledby=\"c-title c-text\""));
  EXPECT_TRUE(holds(svg, "The fullest of 2 bins, 100 to 200, holds 4 reads."));
}

TEST(BarChart, WordsAreEscaped) {
  BarChart chart = twoBins();
  chart.title = chart.axis = chart.lowerName = "<b>";
  EXPECT_FALSE(holds(barChartFigure(chart, "c"), "<b>"));
}

}  // namespace
}  // namespace velto
