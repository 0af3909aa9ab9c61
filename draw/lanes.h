// What the three frame lanes of a drawing show: curves, the called path, start and stop codons.
#pragma once

#include <string_view>
#include <vector>

#include "draw/drawn_read.h"

namespace velto {

// Scores per frame in columns of adjoining bases: column c of n covers the bases from
// c * length / n to (c + 1) * length / n.
struct LaneCurves {
  bool isVote = false;            // votes, which may be negative; else probabilities
  double most = 1.0;              // largest absolute value, above 0
  std::vector<double> values[3];  // [frame][column] mean of the column, or the value before it
                                  // where there is no vote; empty: no scores

  bool empty() const { return values[0].empty(); }
};

// At most `mostColumns` columns (1 or more), one a base for reads of fewer bases.
LaneCurves laneCurves(const Prediction& prediction, int mostColumns);

// Part of the called path that stays in one frame. Positions in bases; an inserted base is shared
// by the runs beside it.
struct FrameRun {
  double begin;
  double end;
  int frame;  // 0 to 2
};

// The called path from the region's start to its stop, without gaps. The read is cut into cells of
// `cell` bases (above 0); a run that holds the middle of none is taken into the run before. Empty
// unless coding.
std::vector<FrameRun> calledRuns(const Prediction& prediction, double cell);

// First bases of the codons of each frame that may start or stop a protein, ascending.
struct SignalCodons {
  std::vector<int> starts[3];
  std::vector<int> stops[3];
};
SignalCodons signalCodons(std::string_view letters, const GeneticCode& code);

}  // namespace velto
