// Elements of an SVG drawing, each a line of text. Styles are class names of the style sheet.
#pragma once

#include <string>
#include <string_view>

#include "draw/svg_path.h"
#include "velto/velto.h"

namespace velto {

// <name class="style" ATTRIBUTES/>; the attributes are those of attribute(), one behind another.
std::string svgElement(const char* name, const char* style, const std::string& attributes);

// Nothing for an empty path.
std::string svgPath(const char* style, const SvgPath& path);

// One line, its baseline at the point. The words may be any bytes.
std::string svgText(const char* style, double x, double y, std::string_view words);

// The sign of a frameshift around the point: a filled triangle that points down for an extra base,
// an open diamond for a missing one.
SvgPath shiftSign(Frameshift::Kind kind, double x, double y);

// The class of a frameshift: "extra" or "lost".
const char* shiftStyle(Frameshift::Kind kind);

// The sign of a start codon, a triangle with its tip at the point; that of a stop codon, a tick
// down.
void addStartSign(SvgPath& path, double x, double y);
void addStopSign(SvgPath& path, double x, double y);

}  // namespace velto
