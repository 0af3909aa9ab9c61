// From posterior probabilities to a coding region: the path that is expected to be right most.
#pragma once

#include <algorithm>
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

// States of a path: in frame f, at a base that was inserted before a base in frame f, behind the
// region, before it. Before the region a path scores 0.
enum PathState : std::int8_t { kFrame0 = 0, kInserted0 = 3, kBehind = 6, kBefore = 7 };
constexpr int kPathStates = 7;  // without kBefore

// Frames that a read goes on in behind a lost base and behind an inserted one are one below and one
// above.
constexpr int upFrame(int f) { return f == 2 ? 0 : f + 1; }
constexpr int downFrame(int f) { return f == 0 ? 2 : f - 1; }

constexpr int kConfidenceReach = 8;  // bases

// Scratch of findCodingPath: where the best path to each base and state came from.
struct PathTrace {
  std::vector<std::array<std::int8_t, 8>> from;
};

// Sets start, stop, frame and frameshifts of the call to the best path with coding bases that
// begins with a codon. The posteriors are those of at least one base.
void findCodingPath(std::span<const FramePosterior> posteriors, PathTrace& trace, Call& call);

// Sets start, stop, frame and frameshifts of the call to the path over `length` bases that ends in
// `state`. `before(i, state)` is the state before base i of the best path that is in `state` there,
// `shifted(kind, i, f)` the posterior of a shift to frame f at base i.
template <class Before, class Shifted>
void takePath(int length, int state, Before before, Shifted shifted, Call& call) {
  call.frame.assign(static_cast<std::size_t>(length), -1);
  call.frameshifts.clear();
  for (int last = length - 1; last >= 0 && state != kBefore;) {
    int first = last;  // of the bases up to the last one that are in this state
    while (first > 0 && before(first, state) == state) --first;
    const int from = before(first, state);
    if (state < kInserted0) {
      std::fill(call.frame.begin() + first, call.frame.begin() + last + 1,
                static_cast<std::int8_t>(state));
      if (call.stop < 0) call.stop = last;
      call.start = first;
      if (from == upFrame(state)) call.frameshifts.push_back({Frameshift::Kind::kDeletion, first});
    } else if (state < kBehind) {
      call.frameshifts.push_back({Frameshift::Kind::kInsertion, first});
    }
    state = from;
    last = first - 1;
  }
  std::reverse(call.frameshifts.begin(), call.frameshifts.end());
  for (Frameshift& shift : call.frameshifts) {
    const bool inserted = shift.kind == Frameshift::Kind::kInsertion;
    const auto at = static_cast<std::size_t>(inserted ? shift.position + 1 : shift.position);
    const int last = std::min(length - 1, shift.position + kConfidenceReach);
    float sum = 0.0f;
    for (int i = std::max(0, shift.position - kConfidenceReach); i <= last; ++i) {
      sum += shifted(shift.kind, i, call.frame[at]);
    }
    shift.confidence = std::min(sum, 1.0f);
  }
}

}  // namespace velto
