// Classes and scores of the windows of one read in its three reading frames.
#pragma once

#include <vector>

#include "decoder/layout.h"
#include "model/model_tables.h"

namespace velto {

// Vote sums [frame][window]: window k of frame f starts at base 3k + f; only windows that start
// more than the window width before the read's end are scored.
struct WindowScores {
  std::vector<double> frame[3];
};

// Number of windows of a frame that are scored.
int scoredWindows(int length, int windowWidth, int frame);

// The vote sum of the window that starts at base `start`, counted anew.
double scoreWindowPlain(const ModelView& model, const short* seq, int length, int start);

// Scores the windows by sliding: only the leaving and the entering codon are counted.
WindowScores scoreWindows(const ModelView& model, const short* seq, int length);

// The definition of scoreWindows: counts and votes every window anew.
WindowScores scoreWindowsPlain(const ModelView& model, const short* seq, int length);

// Fills lay.met and lay.cls (all else of `lay` becomes empty) and frameScore[frame][step] from the
// scores of the read's windows; the class of a step is that of the window centred on it. Both have
// at least halfWindow + 1 entries per frame, and as many as `met` for reads of at least
// 3 halfWindow + 6 bases. Windows that run into the read's end repeat the class and score of
// the window scored last, of whatever frame.
void layOutFrames(const ModelView& model, const short* seq, int length, const WindowScores& scores,
                  layout& lay, std::vector<double> (&frameScore)[3]);

}  // namespace velto
