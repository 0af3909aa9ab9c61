#include "evaluation/shift_matching.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "core/random.h"

namespace velto {
namespace {

using Matches = std::vector<ShiftMatch>;

TEST(ShiftMatching, ReachIsInclusive) {
  EXPECT_EQ(matchShifts({100}, {115}, 15), (Matches{{100, 115}}));
  EXPECT_EQ(matchShifts({100}, {85}, 15), (Matches{{100, 85}}));
  EXPECT_TRUE(matchShifts({100}, {116}, 15).empty());
  EXPECT_TRUE(matchShifts({100}, {84}, 15).empty());
}

TEST(ShiftMatching, EmptyListsMatchNothing) {
  EXPECT_TRUE(matchShifts({}, {5}, 15).empty());
  EXPECT_TRUE(matchShifts({5}, {}, 15).empty());
}

TEST(ShiftMatching, OneCalledShiftServesOneTrueShiftOnly) {
  EXPECT_EQ(matchShifts({100, 104}, {103}, 15), (Matches{{104, 103}}));
  EXPECT_EQ(matchShifts({100}, {98, 101}, 15), (Matches{{100, 101}}));
}

TEST(ShiftMatching, MorePairsCountMoreThanTheNearestPair) {
  // Nearest first would pair 110 with 109 and leave 100 and 124 without a partner in reach.
  EXPECT_EQ(matchShifts({100, 110}, {109, 124}, 15), (Matches{{100, 109}, {110, 124}}));
}

TEST(ShiftMatching, NeighboursOfOneListMayReachBeyondThoseOfTheOther) {
  EXPECT_EQ(matchShifts({0, 14, 28}, {5, 40}, 15), (Matches{{0, 5}, {28, 40}}));
}

TEST(ShiftMatching, EqualPositionsArePairedOneByOne) {
  EXPECT_EQ(matchShifts({50, 50, 50}, {50, 50}, 0).size(), 2U);
}

TEST(ShiftMatching, ManyShiftsOfALongReadTakeNoMoreMemoryThanTheirNeighbours) {
  std::vector<int> known, called;
  for (int i = 0; i < 300'000; ++i) {
    known.push_back(200 * i);
    called.push_back(200 * i + i % 20);
  }
  const Matches matches = matchShifts(known, called, 15);
  EXPECT_EQ(matches.size(), 240'000U);  // 0 to 15 of the distances 0 to 19
  EXPECT_EQ(matches.back(), (ShiftMatch{200 * 299'995, 200 * 299'995 + 15}));
}

// All matchings, by trying for every true shift each free called one.
struct Best {
  int pairs = 0;
  long distance = 0;
};

void tryAll(const std::vector<int>& known, std::vector<int>& called, std::size_t i, int reach,
            Best now, Best& best) {
  if (i == known.size()) {
    if (now.pairs > best.pairs || (now.pairs == best.pairs && now.distance < best.distance)) {
      best = now;
    }
    return;
  }
  tryAll(known, called, i + 1, reach, now, best);
  for (int& position : called) {
    const int distance = std::abs(position - known[i]);
    if (position < 0 || distance > reach) continue;
    const int taken = position;
    position = -1000;
    tryAll(known, called, i + 1, reach, {now.pairs + 1, now.distance + distance}, best);
    position = taken;
  }
}

TEST(ShiftMatching, NoMatchingIsBetter) {
  Random random(7);
  for (int round = 0; round < 500; ++round) {
    std::vector<int> known(random.below(6)), called(random.below(6));
    for (int& p : known) p = static_cast<int>(random.below(60));
    for (int& p : called) p = static_cast<int>(random.below(60));
    std::sort(known.begin(), known.end());
    std::sort(called.begin(), called.end());
    Best best;
    std::vector<int> free = called;
    tryAll(known, free, 0, 15, {}, best);
    Best found;
    for (const ShiftMatch& match : matchShifts(known, called, 15)) {
      ++found.pairs;
      found.distance += std::abs(match.distance());
    }
    EXPECT_EQ(found.pairs, best.pairs) << "round " << round;
    EXPECT_EQ(found.distance, best.distance) << "round " << round;
  }
}

}  // namespace
}  // namespace velto
