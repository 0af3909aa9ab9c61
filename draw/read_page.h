// The HTML page of one read.
#pragma once

#include <string>

#include "draw/drawn_read.h"
#include "draw/page.h"

namespace velto {

// A whole document: the drawing, the sentences, what `facts` say of the read, its frameshifts and
// its protein.
std::string readPage(const DrawnRead& read, const Facts& facts);

// The drawing for wide and for narrow pages; `id` begins the ids of both.
std::string readFigure(const DrawnRead& read, const std::string& id, bool legend);

}  // namespace velto
