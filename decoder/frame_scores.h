// Classes and scores of all codon steps of one read in its three reading frames.
#pragma once

#include <vector>

#include "decoder/layout.h"
#include "model/model_tables.h"
#include "model/vote_engine.h"

namespace velto {

// Overwrites lay.met of a read of `length` base codes.
void markAtg(const short* seq, int length, layout& lay);

// Fills lay.met and lay.cls (all else of `lay` becomes empty) and frameScore[frame][step] from the
// scores of the read's windows; the class of a step is that of the window centred on it. Both have
// at least halfWindow + 1 entries per frame, and as many as `met` for reads of at least
// 3 halfWindow + 6 bases. Windows that run into the read's end repeat the class and score of
// the window scored last, of whatever frame.
void layOutFrames(const ModelView& model, const short* seq, int length, const WindowScores& scores,
                  layout& lay, std::vector<double> (&frameScore)[3]);

}  // namespace velto
