#include "batch/histogram.h"

#include <algorithm>
#include <numeric>

namespace velto {
namespace {

// The preferred numbers of ISO 3 in hundredths, series R20; every other one is of R10.
constexpr int kPreferred[] = {100, 112, 125, 140, 160, 180, 200, 224, 250, 280,
                              315, 355, 400, 450, 500, 560, 630, 710, 800, 900};

void addCounts(std::vector<long>& counts, const std::vector<long>& more) {
  for (size_t i = 0; i < counts.size(); ++i) counts[i] += more[i];
}

}  // namespace

Histogram::Histogram(std::span<const double> edges)
    : edges_(edges), coding_(edges.size() - 1), others_(edges.size() - 1) {}

void Histogram::add(double value, bool isCoding) {
  const auto above = std::upper_bound(edges_.begin() + 1, edges_.end() - 1, value);
  const auto bin = static_cast<size_t>(above - edges_.begin() - 1);
  ++(isCoding ? coding_ : others_)[bin];
}

void Histogram::add(const Histogram& other) {
  addCounts(coding_, other.coding_);
  addCounts(others_, other.others_);
}

long Histogram::reads() const {
  return std::accumulate(coding_.begin(), coding_.end(), 0L) +
         std::accumulate(others_.begin(), others_.end(), 0L);
}

BinCounts Histogram::occupied() const {
  size_t first = 0;
  size_t end = coding_.size();
  while (first < end && coding_[first] + others_[first] == 0) ++first;
  while (end > first && coding_[end - 1] + others_[end - 1] == 0) --end;
  BinCounts bins;
  if (first == end) return bins;
  bins.edges.assign(&edges_[first], &edges_[end] + 1);
  bins.coding.assign(&coding_[first], &coding_[end - 1] + 1);
  bins.others.assign(&others_[first], &others_[end - 1] + 1);
  return bins;
}

std::vector<double> evenEdges(int bins, double last) {
  std::vector<double> edges;
  for (int i = 0; i <= bins; ++i) edges.push_back(i * last / bins);
  return edges;
}

std::vector<double> powerEdges(bool fine) {
  std::vector<double> edges;
  for (double power = 10; power < 1e8; power *= 10) {
    for (size_t i = 0; i < std::size(kPreferred); i += fine ? 1 : 2) {
      edges.push_back(kPreferred[i] * power / 100);
    }
  }
  edges.push_back(1e8);
  return edges;
}

}  // namespace velto
