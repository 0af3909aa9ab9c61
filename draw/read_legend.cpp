#include "draw/read_legend.h"

#include <utility>
#include <vector>

#include "draw/svg_marks.h"

namespace velto {
namespace {

constexpr double kRow = 20;  // pixels
constexpr double kSign = 22;
constexpr double kLetter = 5.9;
constexpr double kGap = 14;

// A sign of 16 by 20 pixels and its words.
using Entry = std::pair<std::string, std::string>;

Entry shiftEntry(Frameshift::Kind kind, const char* words) {
  return {"<g" + attribute("class", shiftStyle(kind)) + ">" +
              svgPath("glyph", shiftSign(kind, 8, 10)) + "</g>",
          words};
}

Entry pathEntry() {
  SvgPath rail;
  rail.move(0, 10);
  rail.across(16);
  return {svgPath("path", rail), "called path"};
}

Entry curveEntry(const LaneCurves& curves) {
  SvgPath hill;
  hill.move(0, 15);
  hill.line(5, 6);
  hill.line(11, 6);
  hill.line(16, 15);
  hill.close();
  const std::string most = decimal(curves.most);
  return {svgPath("curve", hill), curves.isVote
                                      ? "vote, \u2212" + most + " to " + most + "; above 0: coding"
                                      : "probability of the frame, 0 to 1"};
}

std::vector<Entry> entriesOf(const Prediction& prediction, const LaneCurves& curves) {
  SvgPath start;
  addStartSign(start, 8, 7);
  SvgPath stop;
  addStopSign(stop, 8, 6);
  std::vector<Entry> entries;
  if (prediction.isCoding()) entries.push_back(pathEntry());
  if (!curves.empty()) entries.push_back(curveEntry(curves));
  if (!prediction.frameshifts.empty()) {
    entries.push_back(shiftEntry(Frameshift::Kind::kInsertion, "extra base"));
    entries.push_back(shiftEntry(Frameshift::Kind::kDeletion, "missing base"));
  }
  entries.emplace_back(svgPath("startcodon", start), "start codon");
  entries.emplace_back(svgPath("stopcodon", stop), "stop codon");
  return entries;
}

}  // namespace

Legend readLegend(const Prediction& prediction, const LaneCurves& curves, double left, double right,
                  double top) {
  Legend legend{"", kRow};
  double x = left;
  for (const auto& [sign, words] : entriesOf(prediction, curves)) {
    const double width = kSign + kLetter * static_cast<double>(charactersOf(words));
    if (x + width > right && x > left) {
      x = left;
      legend.height += kRow;
    }
    const double y = top + legend.height - kRow;
    legend.svg += "<g" +
                  attribute("transform", "translate(" + decimal(x) + " " + decimal(y) + ")") + ">" +
                  sign + svgText("key", kSign, 14, words) + "</g>\n";
    x += width + kGap;
  }
  return legend;
}

}  // namespace velto
