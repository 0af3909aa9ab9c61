// What tests of resampled figures share.
#pragma once

#include <cstring>
#include <stdexcept>
#include <vector>

#include "evaluation/evaluation_counts.h"
#include "evaluation/evaluation_figures.h"

namespace velto {

// A transcript with 10 coding bases of which so many are called, all in frame, and none wrongly.
inline EvaluationCounts transcriptOf(long found) {
  EvaluationCounts counts;
  counts.reads = 1;
  counts.bases = 20;
  counts.coding = 10;
  counts.called = counts.both = counts.inFrame = found;
  return counts;
}

// What a list in the order of evaluationFigures() has for the figure `id`. Throws
// std::out_of_range.
template <typename Value>
Value valueOf(const char* id, const std::vector<Value>& values) {
  const std::vector<Figure>& figures = evaluationFigures();
  for (std::size_t f = 0; f < figures.size(); ++f) {
    if (std::strcmp(figures[f].id, id) == 0) return values.at(f);
  }
  throw std::out_of_range(id);
}

}  // namespace velto
