#include "decoder/placed_call.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

using Kind = Frameshift::Kind;

constexpr double kFound = 5.0;

Call callOf(const std::vector<int>& path, double score, int length) {
  Call call;
  callPath(path, score, length, call);
  EXPECT_EQ(call.score, score);
  return call;
}

std::vector<int> frames(const Call& call) { return {call.frame.begin(), call.frame.end()}; }

void expectOneShift(const Call& call, Kind kind, int position) {
  ASSERT_EQ(call.frameshifts.size(), 1U);
  EXPECT_EQ(call.frameshifts[0].kind, kind);
  EXPECT_EQ(call.frameshifts[0].position, position);
}

TEST(PlacedCall, BasesOfThePathsCodonsAreCalledInTheirFrame) {
  // Steps 1 and 2 in frame 1: codons at bases 4 to 6 and 7 to 9.
  const Call call = callOf({-1, 1, 1, -1}, kFound, 12);
  EXPECT_TRUE(call.coding);
  EXPECT_EQ(call.start, 4);
  EXPECT_EQ(call.stop, 9);
  EXPECT_EQ(frames(call), (std::vector<int>{-1, -1, -1, -1, 1, 1, 1, 1, 1, 1, -1, -1}));
  EXPECT_TRUE(call.frameshifts.empty());
}

TEST(PlacedCall, InsertedBaseIsNotCalledAndTheFrameChangesBehindIt) {
  // Frame 0, codons 0-2 and 3-5; base 6 inserted; frame 1, codons 7-9 and 10-12.
  const Call call = callOf({0, 0, 1, 1, -1}, kFound, 14);
  expectOneShift(call, Kind::kInsertion, 6);
  EXPECT_EQ(frames(call), (std::vector<int>{0, 0, 0, 0, 0, 0, -1, 1, 1, 1, 1, 1, 1, -1}));
}

TEST(PlacedCall, InsertionFromFrameTwoToNoughtKeepsTheOldCodonWhole) {
  // Frame 2, codon 2-4 of step 0; step 1 in frame 0: base 5 is inserted, codons go on at 6.
  const Call call = callOf({2, 0, 0, -1}, kFound, 9);
  expectOneShift(call, Kind::kInsertion, 5);
  EXPECT_EQ(frames(call), (std::vector<int>{-1, -1, 2, 2, 2, -1, 0, 0, 0}));
}

TEST(PlacedCall, BasesOfACodonCutByADeletionKeepTheOldFrame) {
  // Frame 0 up to base 5; bases 6 and 7 lost their third base; frame 2 from base 8.
  const Call call = callOf({0, 0, 2, 2, -1}, kFound, 14);
  expectOneShift(call, Kind::kDeletion, 8);
  EXPECT_EQ(frames(call), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0, 2, 2, 2, 2, 2, 2}));
}

TEST(PlacedCall, ScoreOfMinusNineCallsNothing) {
  const Call call = callOf({0, 0, 1, 1, -1}, -9.0, 14);
  EXPECT_FALSE(call.coding);
  EXPECT_EQ(call.start, -1);
  EXPECT_EQ(call.stop, -1);
  EXPECT_TRUE(call.frame.empty());
  EXPECT_TRUE(call.frameshifts.empty());
}

TEST(PlacedCall, FramesEndWithTheRead) {
  // Step 1 in frame 2 would reach base 7 of a read of seven bases.
  const Call call = callOf({2, 2, -1}, kFound, 7);
  EXPECT_EQ(call.stop, 7);
  EXPECT_EQ(frames(call), (std::vector<int>{-1, -1, 2, 2, 2, 2, 2}));
}

}  // namespace
}  // namespace velto
