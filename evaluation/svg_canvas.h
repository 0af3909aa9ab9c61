// A plain SVG image, drawn shape by shape.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace velto {

using SvgPoint = std::pair<double, double>;  // x to the right, y down, in pixels

enum class SvgAnchor { kStart, kMiddle, kEnd };

// Shapes lie above those drawn before. Colours are as in CSS, for example "#0072b2" or "none".
// Words may be any bytes.
class SvgCanvas {
 public:
  void line(SvgPoint from, SvgPoint to, const std::string& colour, double width);
  void polyline(const std::vector<SvgPoint>& points, const std::string& colour, double width,
                bool dashed);
  void rectangle(SvgPoint corner, double width, double height, const std::string& fill,
                 const std::string& stroke);
  void circle(SvgPoint centre, double radius, const std::string& fill, const std::string& stroke);

  // Text of one line, its baseline at the point; turned by 90 degrees to read upwards if `upward`.
  void text(SvgPoint at, const std::string& words, int size, SvgAnchor anchor,
            const std::string& colour, bool upward = false);

  // The whole image on white, of this size in pixels, less where there is less room; the title is
  // what screen readers read.
  std::string image(int width, int height, const std::string& title) const;

 private:
  std::string body_;
};

}  // namespace velto
