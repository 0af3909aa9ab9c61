// Counts of reads in bins, so that memory does not grow with the reads.
#pragma once

#include <span>
#include <vector>

namespace velto {

// Bin i holds values from edges[i] up to, but not including, edges[i + 1]; the first one also
// holds what is below it, the last one what is above.
struct BinCounts {
  std::vector<double> edges;  // one more than bins; ascending
  std::vector<long> coding;   // [bin] reads that code
  std::vector<long> others;   // [bin] reads that do not
};

class Histogram {
 public:
  // The edges, two at least, must outlive the histogram.
  explicit Histogram(std::span<const double> edges);

  void add(double value, bool isCoding);
  void add(const Histogram& other);  // of the same edges

  long reads() const;

  // The bins from the first to the last one that is not empty; none without reads.
  BinCounts occupied() const;

 private:
  std::span<const double> edges_;
  std::vector<long> coding_;
  std::vector<long> others_;
};

// Edges of bins of equal width from 0 to `last`.
std::vector<double> evenEdges(int bins, double last);

// Edges at 20 (fine) or 10 round numbers for each power of ten, from 10 to 10^8.
std::vector<double> powerEdges(bool fine);

}  // namespace velto
