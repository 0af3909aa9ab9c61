// From posterior probabilities to a coding region: the path that is expected to be right most.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "core/call.h"
#include "hmm/forward_backward.h"

namespace velto {

// What is asked about one base, given that the read codes.
struct FramePosterior {
  std::array<float, 3> frame;     // coding base, start and stop codon included, in reading frame f:
                                  // codons begin at bases p with p mod 3 = f
  std::array<float, 3> inserted;  // inserted base, the next codon base being in frame f
  std::array<float, 3> deleted;   // coding base in frame f behind a lost one
  float start;                    // first base of the start codon
  float stop;                     // last base of the stop codon
};

// Turns state posteriors into frame posteriors, each times `factor`.
void framePosteriors(std::span<const StatePosterior> states, float factor,
                     std::vector<FramePosterior>& frames);

// Rewards and costs of a path, in bases that are right.
constexpr float kCodingCost = 0.35f;   // of calling a base coding, against its frame's posterior
constexpr float kChangeCost = 0.5f;    // of a frameshift
constexpr float kEndCost = 0.5f;       // of the first and of the last base of the region
constexpr float kCodonReward = 12.0f;  // times the posterior of a start or stop codon at that end

// Scratch of findCodingPath: where the best path to each base and state came from.
struct PathTrace {
  std::vector<std::array<std::int8_t, 8>> from;
};

// Sets start, stop, frame and frameshifts of the call to the best path with coding bases that begins
// with a codon.
// The posteriors are those of at least one base.
void findCodingPath(std::span<const FramePosterior> posteriors, PathTrace& trace, Call& call);

}  // namespace velto
