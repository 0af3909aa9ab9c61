#include "evaluation/svg_canvas.h"

#include "draw/markup.h"

namespace velto {
namespace {

const char* anchorName(SvgAnchor anchor) {
  switch (anchor) {
    case SvgAnchor::kStart:
      return "start";
    case SvgAnchor::kMiddle:
      return "middle";
    default:
      return "end";
  }
}

}  // namespace

void SvgCanvas::line(SvgPoint from, SvgPoint to, const std::string& colour, double width) {
  body_ += "<line" + attribute("x1", from.first) + attribute("y1", from.second) +
           attribute("x2", to.first) + attribute("y2", to.second) + attribute("stroke", colour) +
           attribute("stroke-width", width) + "/>\n";
}

void SvgCanvas::polyline(const std::vector<SvgPoint>& points, const std::string& colour,
                         double width, bool dashed) {
  std::string list;
  for (const SvgPoint& p : points) {
    list += (list.empty() ? "" : " ") + decimal(p.first) + "," + decimal(p.second);
  }
  body_ += "<polyline" + attribute("points", list) + attribute("fill", "none") +
           attribute("stroke", colour) + attribute("stroke-width", width) +
           (dashed ? attribute("stroke-dasharray", "6 4") : "") + "/>\n";
}

void SvgCanvas::rectangle(SvgPoint corner, double width, double height, const std::string& fill,
                          const std::string& stroke) {
  body_ += "<rect" + attribute("x", corner.first) + attribute("y", corner.second) +
           attribute("width", width) + attribute("height", height) + attribute("fill", fill) +
           attribute("stroke", stroke) + "/>\n";
}

void SvgCanvas::circle(SvgPoint centre, double radius, const std::string& fill,
                       const std::string& stroke) {
  body_ += "<circle" + attribute("cx", centre.first) + attribute("cy", centre.second) +
           attribute("r", radius) + attribute("fill", fill) + attribute("stroke", stroke) +
           attribute("stroke-width", 2.0) + "/>\n";
}

void SvgCanvas::text(SvgPoint at, const std::string& words, int size, SvgAnchor anchor,
                     const std::string& colour, bool upward) {
  const std::string place = decimal(at.first) + " " + decimal(at.second);
  body_ += "<text" + attribute("x", at.first) + attribute("y", at.second) +
           attribute("font-size", std::to_string(size)) +
           attribute("text-anchor", anchorName(anchor)) + attribute("fill", colour) +
           (upward ? attribute("transform", "rotate(-90 " + place + ")") : "") + ">" +
           escaped(words) + "</text>\n";
}

std::string SvgCanvas::image(int width, int height, const std::string& title) const {
  const std::string w = std::to_string(width);
  const std::string h = std::to_string(height);
  SvgCanvas paper;
  paper.rectangle({0, 0}, width, height, "#ffffff", "none");
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
         attribute("width", w) + attribute("height", h) +
         attribute("viewBox", "0 0 " + w + " " + h) +
         " style=\"max-width:100%;height:auto\" role=\"img\" font-family=\"sans-serif\">\n<title>" +
         escaped(title) + "</title>\n" + paper.body_ + body_ + "</svg>\n";
}

}  // namespace velto
