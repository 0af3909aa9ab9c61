// The drawing of one read as text for a terminal.
#pragma once

#include <string>

#include "draw/drawn_read.h"

namespace velto {

struct ReadTextOptions {
  int columns = 80;      // 40 or more
  bool colours = false;  // by control sequences (ECMA-48)
};

// Name, sentences, the three lanes with curves and called path, what the signs mean, each
// frameshift with its confidence, and the protein, in lines of UTF-8 that are at most `columns`
// wide; each ends in a line feed. Control characters of the name are replaced.
std::string readText(const DrawnRead& read, const ReadTextOptions& options = {});

}  // namespace velto
