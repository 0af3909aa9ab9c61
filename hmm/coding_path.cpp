#include "hmm/coding_path.h"

#include <algorithm>
#include <limits>

namespace velto {
namespace {

using PathScores = std::array<float, kPathStates>;

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

// The frame whose codon ends with base i - 1 first, so that ways do not depend on where a read
// begins.
BestWay wayBehind(const PathScores& scores, const FramePosterior& last, int i) {
  BestWay best{scores[kBehind], kBehind};
  for (int k = 0; k < 3; ++k) {
    const int f = (i + k) % 3;
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
  const auto before = [&](int i, int state) {
    return trace.from[static_cast<std::size_t>(i)][static_cast<std::size_t>(state)];
  };
  const auto shifted = [&](Frameshift::Kind kind, int i, int f) {
    const FramePosterior& p = posteriors[static_cast<std::size_t>(i)];
    const bool inserted = kind == Frameshift::Kind::kInsertion;
    return (inserted ? p.inserted : p.deleted)[static_cast<std::size_t>(f)];
  };
  takePath(static_cast<int>(posteriors.size()), end.from, before, shifted, call);
}

}  // namespace velto
