#include "hmm/coding_path.h"

#include <algorithm>
#include <limits>

namespace velto {
namespace {

// States of a path: in frame f, at a base that was inserted before a base in frame f, behind the
// region. Before the region a path scores 0.
enum PathState : std::int8_t { kFrame0 = 0, kInserted0 = 3, kBehind = 6, kBefore = 7 };
constexpr int kPathStates = 7;
using PathScores = std::array<float, kPathStates>;

constexpr int kConfidenceReach = 8;  // bases

constexpr int upFrame(int f) { return f == 2 ? 0 : f + 1; }
constexpr int downFrame(int f) { return f == 0 ? 2 : f - 1; }

// The better of two ways into a state; the first where they are equal.
struct BestWay {
  float score;
  std::int8_t from;

  void offer(float other, int state) {
    if (other > score) *this = {other, static_cast<std::int8_t>(state)};
  }
};

// Score of ending with base i - 1, the last of frame f.
float endScore(const FramePosterior& last, int i, int f, float score) {
  const float reward = f == i % 3 ? kCodonReward * last.stop : 0.0f;
  return score - kEndCost + reward;
}

BestWay wayBehind(const PathScores& scores, const FramePosterior& last, int i) {
  BestWay best{scores[kBehind], kBehind};
  for (int f = 0; f < 3; ++f) {
    best.offer(endScore(last, i, f, scores[static_cast<std::size_t>(f)]), f);
  }
  return best;
}

BestWay wayIntoFrame(const PathScores& scores, const FramePosterior& now, int i, int f) {
  BestWay best{scores[static_cast<std::size_t>(f)], static_cast<std::int8_t>(f)};
  const int deletedFrom = upFrame(f), inserted = kInserted0 + f;
  best.offer(scores[static_cast<std::size_t>(deletedFrom)] - kChangeCost, deletedFrom);
  best.offer(scores[static_cast<std::size_t>(inserted)], inserted);
  if (f == i % 3) best.offer(kCodonReward * now.start - kEndCost, kBefore);
  best.score += now.frame[static_cast<std::size_t>(f)] - kCodingCost;
  return best;
}

void scorePaths(std::span<const FramePosterior> posteriors, PathTrace& trace, BestWay& end) {
  PathScores scores;
  scores.fill(-std::numeric_limits<float>::infinity());
  trace.from.resize(posteriors.size());
  for (int i = 0; i < static_cast<int>(posteriors.size()); ++i) {
    const FramePosterior& now = posteriors[static_cast<std::size_t>(i)];
    const FramePosterior& last = i == 0 ? now : posteriors[static_cast<std::size_t>(i - 1)];
    auto& from = trace.from[static_cast<std::size_t>(i)];
    PathScores next;
    for (int f = 0; f < 3; ++f) {
      const BestWay way = wayIntoFrame(scores, now, i, f);
      next[static_cast<std::size_t>(f)] = way.score;
      from[static_cast<std::size_t>(f)] = way.from;
      const int insertedFrom = downFrame(f);
      next[static_cast<std::size_t>(kInserted0 + f)] =
          scores[static_cast<std::size_t>(insertedFrom)] - kChangeCost;
      from[static_cast<std::size_t>(kInserted0 + f)] = static_cast<std::int8_t>(insertedFrom);
    }
    const BestWay behind = wayBehind(scores, last, i);
    next[kBehind] = behind.score;
    from[kBehind] = behind.from;
    scores = next;
  }
  end = wayBehind(scores, posteriors.back(), static_cast<int>(posteriors.size()));
}

// Posterior of this shift within kConfidenceReach bases, at most 1.
double confidenceOf(std::span<const FramePosterior> posteriors, Frameshift::Kind kind, int position,
                    int frame) {
  const int first = std::max(0, position - kConfidenceReach);
  const int last = std::min(static_cast<int>(posteriors.size()) - 1, position + kConfidenceReach);
  float sum = 0.0f;
  for (int i = first; i <= last; ++i) {
    const FramePosterior& p = posteriors[static_cast<std::size_t>(i)];
    sum += (kind == Frameshift::Kind::kInsertion ? p.inserted
                                                 : p.deleted)[static_cast<std::size_t>(frame)];
  }
  return std::min(sum, 1.0f);
}

}  // namespace

void framePosteriors(std::span<const StatePosterior> states, float factor,
                     std::vector<FramePosterior>& frames) {
  frames.resize(states.size());
  std::size_t phase0 = 0;  // frame in which base i is of phase 0: i mod 3
  for (std::size_t i = 0; i < states.size(); ++i) {
    const StateRow& p = states[i].state;
    FramePosterior& out = frames[i];
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t f = (phase0 + 3 - k) % 3;  // of a base of phase k, and behind one inserted
                                                   // after phase k
      out.frame[f] = ((p[kC0 + k] + p[kS0 + k]) + p[kE0 + k]) * factor;
      out.inserted[f] = p[kI0 + k] * factor;
      out.deleted[f] = states[i].deletion[k] * factor;
    }
    out.start = p[kS0] * factor;
    out.stop = p[kE2] * factor;
    phase0 = phase0 == 2 ? 0 : phase0 + 1;
  }
}

void findCodingPath(std::span<const FramePosterior> posteriors, PathTrace& trace, Call& call) {
  BestWay end;
  scorePaths(posteriors, trace, end);
  call.frame.assign(posteriors.size(), -1);
  call.frameshifts.clear();
  int state = end.from;
  for (int i = static_cast<int>(posteriors.size()) - 1; i >= 0 && state != kBefore; --i) {
    const int before = trace.from[static_cast<std::size_t>(i)][static_cast<std::size_t>(state)];
    if (state < kInserted0) {
      call.frame[static_cast<std::size_t>(i)] = static_cast<std::int8_t>(state);
      if (call.stop < 0) call.stop = i;
      call.start = i;
      if (before == upFrame(state)) {
        call.frameshifts.push_back({Frameshift::Kind::kDeletion, i});
      }
    } else if (state < kBehind) {
      call.frameshifts.push_back({Frameshift::Kind::kInsertion, i});
    }
    state = before;
  }
  std::reverse(call.frameshifts.begin(), call.frameshifts.end());
  for (Frameshift& shift : call.frameshifts) {
    const bool inserted = shift.kind == Frameshift::Kind::kInsertion;
    const auto at = static_cast<std::size_t>(inserted ? shift.position + 1 : shift.position);
    shift.confidence = confidenceOf(posteriors, shift.kind, shift.position, call.frame[at]);
  }
}

}  // namespace velto
