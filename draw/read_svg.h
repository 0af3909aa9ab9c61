// The drawing of one read as inline SVG.
#pragma once

#include <string>

#include "draw/drawn_read.h"

namespace velto {

struct ReadSvgOptions {
  int width = 960;          // pixels, 240 or more; the height follows
  std::string id = "read";  // begins the ids of the drawing, unique in its page
  bool legend = true;
};

// Three frame lanes along the read with curves of the scores, the called path, the region's ends,
// frameshifts, start and stop codons; below them the positions, from 1, and the protein. An <svg>
// element of class "velto-read" whose colours drawingStyle (draw/style.h) gives and that describes
// itself in words. Its size is bounded whatever the read's length. Empty for a read without bases.
std::string readSvg(const DrawnRead& read, const ReadSvgOptions& options = {});

}  // namespace velto
