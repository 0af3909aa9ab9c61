#include "evaluation/shift_matching.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace velto {
namespace {

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
  MatchTable(const std::vector<int>& known, const std::vector<int>& called, int reach)
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

  const std::vector<int>& known_;
  const std::vector<int>& called_;
  const int reach_;
  const std::size_t width_;
  std::vector<Worth> cells_;  // [known][called]
};

}  // namespace

std::vector<ShiftMatch> matchShifts(const std::vector<int>& known, const std::vector<int>& called,
                                    int reach) {
  return MatchTable(known, called, reach).matches();
}

}  // namespace velto
