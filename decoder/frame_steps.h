// The codon steps of one read as the frame path needs them, without scores.
#pragma once

#include <vector>

#include "decoder/path_recurrence.h"
#include "model/coded_read.h"
#include "model/vote_engine.h"

namespace velto {

// The steps that layOutFrames and fillLeadingClasses lay out for a read of `length` bases.
void layOutSteps(const CodedRead& codons, int length, int windowWidth, const WindowClasses& classes,
                 std::vector<FrameStep>& steps);

// The scores of all steps, [frame][step], as layOutFrames lays them out.
void layOutScores(const CodedRead& codons, int length, int windowWidth, const WindowScores& scores,
                  std::vector<double> (&stepScores)[3]);

}  // namespace velto
