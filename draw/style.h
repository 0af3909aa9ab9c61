// Style sheets for the one <style> element of a page.
#pragma once

#include <string>

namespace velto {

// Colours of light, dark and printed pages, and the drawings.
std::string drawingStyle();

// Text, tables and layout of htmlPage; needs the colours of drawingStyle.
std::string pageStyle();

}  // namespace velto
