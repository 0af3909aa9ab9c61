// One-to-one matching of called frameshifts with true ones.
#pragma once

#include <vector>

namespace velto {

// A called and a true frameshift taken for the same.
struct ShiftMatch {
  int known;                                       // position of the true shift
  int called;                                      // position of the called shift
  int distance() const { return called - known; }  // bases; negative: called too early
  bool operator==(const ShiftMatch& other) const {
    return known == other.known && called == other.called;
  }
};

// Pairs positions at most `reach` bases apart, each at most once: as many pairs as there can be,
// and among those matchings one with the smallest sum of distances. Both lists must ascend.
std::vector<ShiftMatch> matchShifts(const std::vector<int>& known, const std::vector<int>& called,
                                    int reach);

}  // namespace velto
