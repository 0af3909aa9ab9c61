// The frame-transition matrix of reads with known coding paths, as log ratios.
#pragma once

#include <ostream>
#include <vector>

#include "decoder/layout.h"

namespace velto {

// Log ratio of a transition that no known path shows.
constexpr double kUnseenTransition = -1000.0;

// log10 of the share of each transition along the known paths (rfm) over its share among the other
// steps from any frame to any frame; [4 x previous state + current state]. Not a number where a
// total is 0.
struct TransitionRatios {
  double value[16];
};
TransitionRatios transitionRatios(const std::vector<layout>& layouts);

// Writes four lines, one for each previous state. This is not the order of matrix files, whose
// lines are current states: a file written so is read with the two states exchanged, on purpose.
void writeTransitionRatios(std::ostream& out, const TransitionRatios& ratios);

}  // namespace velto
