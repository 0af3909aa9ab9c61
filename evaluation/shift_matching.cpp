#include "evaluation/shift_matching.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <span>

namespace velto {
namespace {

using Positions = std::span<const int>;

// The worth of a matching: more pairs first, then a smaller sum of distances.
struct Worth {
  int pairs = 0;
  long distance = 0;  // bases, summed

  bool operator<(const Worth& other) const {
    return pairs != other.pairs ? pairs < other.pairs : distance > other.distance;
  }
  bool operator==(const Worth& other) const {
    return pairs == other.pairs && distance == other.distance;
  }
};

// best(i, j): the worth of matching the first i known with the first j called positions. On a line
// some best matching has no crossing pairs, hence
//   best(i, j) = max( best(i - 1, j), best(i, j - 1),
//                     best(i - 1, j - 1) + pair of known i - 1 and called j - 1 if in reach )
class MatchTable {
 public:
  MatchTable(Positions known, Positions called, int reach)
      : known_(known),
        called_(called),
        reach_(reach),
        width_(called.size() + 1),
        cells_((known.size() + 1) * width_) {
    for (std::size_t i = 1; i <= known.size(); ++i) {
      for (std::size_t j = 1; j <= called.size(); ++j) {
        cell(i, j) = std::max(cell(i - 1, j), cell(i, j - 1));
        if (inReach(i, j)) cell(i, j) = std::max(cell(i, j), paired(i, j));
      }
    }
  }

  std::vector<ShiftMatch> matches() {
    std::vector<ShiftMatch> found;
    std::size_t i = known_.size();
    std::size_t j = called_.size();
    while (i > 0 && j > 0) {
      if (cell(i, j) == cell(i - 1, j)) {
        --i;
      } else if (cell(i, j) == cell(i, j - 1)) {
        --j;
      } else {
        found.push_back({known_[--i], called_[--j]});
      }
    }
    std::reverse(found.begin(), found.end());
    return found;
  }

 private:
  Worth& cell(std::size_t i, std::size_t j) { return cells_[i * width_ + j]; }
  int distance(std::size_t i, std::size_t j) const {
    return std::abs(known_[i - 1] - called_[j - 1]);
  }
  bool inReach(std::size_t i, std::size_t j) const { return distance(i, j) <= reach_; }
  Worth paired(std::size_t i, std::size_t j) {
    const Worth before = cell(i - 1, j - 1);
    return {before.pairs + 1, before.distance + distance(i, j)};
  }

  const Positions known_;
  const Positions called_;
  const int reach_;
  const std::size_t width_;
  std::vector<Worth> cells_;  // [known][called]
};

// How many positions of each list stand together.
struct Neighbours {
  std::size_t known = 0;
  std::size_t called = 0;
};

// The first positions of both lists, which are not empty, up to a gap that is wider than `reach`:
// none of them can pair with a later one.
Neighbours firstNeighbours(Positions known, Positions called, int reach) {
  Neighbours taken;
  int last = std::min(known.front(), called.front());
  const auto takeNext = [&](Positions positions, std::size_t& count) {
    if (count == positions.size() || positions[count] - last > reach) return false;
    last = std::max(last, positions[count++]);
    return true;
  };
  bool grows = true;
  while (grows) grows = takeNext(known, taken.known) || takeNext(called, taken.called);
  return taken;
}

}  // namespace

// Neighbours by neighbours, since a table of the whole of a long read would fill the memory.
std::vector<ShiftMatch> matchShifts(const std::vector<int>& known, const std::vector<int>& called,
                                    int reach) {
  std::vector<ShiftMatch> matches;
  Positions knownLeft = known, calledLeft = called;
  while (!knownLeft.empty() && !calledLeft.empty()) {
    const Neighbours next = firstNeighbours(knownLeft, calledLeft, reach);
    const std::vector<ShiftMatch> found =
        MatchTable(knownLeft.first(next.known), calledLeft.first(next.called), reach).matches();
    matches.insert(matches.end(), found.begin(), found.end());
    knownLeft = knownLeft.subspan(next.known);
    calledLeft = calledLeft.subspan(next.called);
  }
  return matches;
}

}  // namespace velto
