// A histogram of two kinds of reads as inline SVG, with a table of its numbers.
#pragma once

#include <string>
#include <vector>

namespace velto {

struct BarChart {
  std::string title;
  std::string axis;           // what the bins are bins of
  std::vector<double> edges;  // one more than bins, one bin at least
  std::vector<long> lower;    // [bin] the lower part of the bar
  std::vector<long> upper;    // [bin] the upper part
  std::string lowerName;
  std::string upperName;        // empty: there is no upper part
  bool isSingleValues = false;  // each bin holds the value of its lower edge and no other
};

// A figure of bars of equal width, whatever the width of their bins; of even bins, multiples of a
// round number are labelled, of others the edges that are 1, 2 or 5 times a power of ten first.
// Below it, folded, the numbers of all bins. `id` begins its ids, unique in the page.
std::string barChartFigure(const BarChart& chart, const std::string& id);

}  // namespace velto
