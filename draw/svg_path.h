// The `d` attribute of an SVG path, in tenths of a pixel.
#pragma once

#include <string>

#include "draw/markup.h"

namespace velto {

class SvgPath {
 public:
  void move(double x, double y) { d_ += "M" + decimal(x) + " " + decimal(y); }
  void line(double x, double y) { d_ += "L" + decimal(x) + " " + decimal(y); }
  void across(double x) { d_ += "H" + decimal(x); }
  void down(double y) { d_ += "V" + decimal(y); }
  void close() { d_ += "Z"; }

  bool empty() const { return d_.empty(); }
  const std::string& text() const { return d_; }

 private:
  std::string d_;
};

}  // namespace velto
