#include "draw/svg_marks.h"

namespace velto {

std::string svgElement(const char* name, const char* style, const std::string& attributes) {
  return std::string("<") + name + attribute("class", style) + attributes + "/>\n";
}

std::string svgPath(const char* style, const SvgPath& path) {
  return path.empty() ? "" : svgElement("path", style, attribute("d", path.text()));
}

std::string svgText(const char* style, double x, double y, std::string_view words) {
  return "<text" + attribute("class", style) + attribute("x", x) + attribute("y", y) + ">" +
         escaped(words) + "</text>\n";
}

SvgPath shiftSign(Frameshift::Kind kind, double x, double y) {
  SvgPath sign;
  if (kind == Frameshift::Kind::kInsertion) {
    sign.move(x - 5, y - 5);
    sign.across(x + 5);
    sign.line(x, y + 5);
  } else {
    sign.move(x, y - 5.5);
    sign.line(x + 5.5, y);
    sign.line(x, y + 5.5);
    sign.line(x - 5.5, y);
  }
  sign.close();
  return sign;
}

const char* shiftStyle(Frameshift::Kind kind) {
  return kind == Frameshift::Kind::kInsertion ? "extra" : "lost";
}

void addStartSign(SvgPath& path, double x, double y) {
  path.move(x - 3, y + 6);
  path.line(x, y);
  path.line(x + 3, y + 6);
  path.close();
}

void addStopSign(SvgPath& path, double x, double y) {
  path.move(x, y);
  path.down(y + 8);
}

}  // namespace velto
