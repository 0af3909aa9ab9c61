// The frame-path dynamic programme: the best path through the three reading frames of one read.
#pragma once

#include <vector>

#include "decoder/layout.h"
#include "decoder/path_recurrence.h"

namespace velto {

// Score returned for a path of fewer than 60 traced steps.
constexpr double kShortPathScore = -10.0;

// One cell of the matrix. The names are fixed; the initial values are those before decoding.
struct dpNode {
  int prevFrame = -1;      // frame of the best predecessor at the previous step; or kPathBegins
  double score = -1000.0;  // score of the best path that ends in this cell
  int term = -1;           // 1 where a path may end, otherwise not
};

// Gives the first halfWindow steps of every frame the class of the first full window; they are
// not centred on a full window themselves.
void fillLeadingClasses(layout& lay, int windowWidth);

// Fills the 3n cells, n = lay.cls[0].size(); the cell of step i and frame f is element 3i + f and
// must hold its initial values. `matrix` is [4 x current state + previous state]. A step that
// frames 1 and 2 lack reads as kNoWindow and as not ATG.
void fillFramePaths(const double (&matrix)[16], const layout& lay, dpNode* nodes);

// The traced path's end and score.
struct TracedPath {
  double score;  // of the end cell, or kShortPathScore for fewer than 60 traced steps
  int endStep;   // step of the end cell; 0 when no cell may end a path
};

// Picks the best cell that may end a path (the earliest step, then the lowest frame, among equals),
// walks back and appends exactly n entries to `path`: frame 0 to 2 on the path, else kOffPath.
TracedPath traceFramePath(const dpNode* nodes, int n, std::vector<int>& path);

}  // namespace velto
