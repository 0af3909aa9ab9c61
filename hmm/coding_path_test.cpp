#include "hmm/coding_path.h"

#include <gtest/gtest.h>

#include <functional>

#include "core/random.h"

namespace velto {
namespace {

FramePosterior inFrame(int frame, float p = 0.95f) {
  FramePosterior posterior{};
  if (frame >= 0) posterior.frame[static_cast<std::size_t>(frame)] = p;
  return posterior;
}

std::vector<FramePosterior> framesOf(const std::vector<int>& frames) {
  std::vector<FramePosterior> posteriors;
  for (const int frame : frames) posteriors.push_back(inFrame(frame));
  return posteriors;
}

Call callOf(const std::vector<FramePosterior>& posteriors) {
  Call call;
  PathTrace trace;
  findCodingPath(posteriors, trace, call);
  return call;
}

TEST(CodingPath, CallsTheBasesThatAreMoreLikelyCodingThanNot) {
  const Call call = callOf(framesOf({-1, -1, 2, 2, 2, 2, -1, -1}));
  EXPECT_EQ(call.start, 2);
  EXPECT_EQ(call.stop, 5);
  EXPECT_EQ(call.frame, (std::vector<std::int8_t>{-1, -1, 2, 2, 2, 2, -1, -1}));
  EXPECT_TRUE(call.frameshifts.empty());
}

TEST(CodingPath, ALostBaseTurnsToTheFrameBelow) {
  auto posteriors = framesOf({2, 2, 2, 2, 1, 1, 1, 1});
  posteriors[4].deleted[1] = 0.5f;
  posteriors[5].deleted[1] = 0.25f;
  posteriors[5].deleted[0] = 0.1f;
  const Call call = callOf(posteriors);
  ASSERT_EQ(call.frameshifts.size(), 1U);
  EXPECT_EQ(call.frameshifts[0].kind, Frameshift::Kind::kDeletion);
  EXPECT_EQ(call.frameshifts[0].position, 4);
  EXPECT_FLOAT_EQ(static_cast<float>(call.frameshifts[0].confidence), 0.75f);
}

TEST(CodingPath, AnInsertedBaseBelongsToNoFrame) {
  auto posteriors = framesOf({0, 0, 0, 0, -1, 1, 1, 1, 1});
  posteriors[4].inserted[1] = 0.9f;
  const Call call = callOf(posteriors);
  ASSERT_EQ(call.frameshifts.size(), 1U);
  EXPECT_EQ(call.frameshifts[0].kind, Frameshift::Kind::kInsertion);
  EXPECT_EQ(call.frameshifts[0].position, 4);
  EXPECT_FLOAT_EQ(static_cast<float>(call.frameshifts[0].confidence), 0.9f);
  EXPECT_EQ(call.frame[4], -1);
  EXPECT_EQ(call.frame[5], 1);
}

TEST(CodingPath, ConfidenceLooksEightBasesAround) {
  std::vector<FramePosterior> posteriors = framesOf(std::vector<int>(40, 2));
  for (std::size_t i = 20; i < 40; ++i) posteriors[i] = inFrame(1);
  posteriors[12].deleted[1] = 0.25f;
  posteriors[28].deleted[1] = 0.5f;
  posteriors[11].deleted[1] = posteriors[29].deleted[1] = 0.1f;
  EXPECT_FLOAT_EQ(static_cast<float>(callOf(posteriors).frameshifts[0].confidence), 0.75f);
}

TEST(CodingPath, ShortDisturbancesAreNotWorthAShift) {
  const Call call = callOf(framesOf({0, 0, 0, 0, 1, 0, 0, 0, 0}));
  EXPECT_TRUE(call.frameshifts.empty());
  EXPECT_EQ(call.frame[4], 0);
}

TEST(CodingPath, AStartCodonPullsTheBeginning) {
  auto posteriors = framesOf({1, 1, 1, 1, 1, 1, 1, 1, 1, 1});
  EXPECT_EQ(callOf(posteriors).start, 1);
  posteriors[4].start = 0.5f;  // base 4 begins a codon of frame 1
  EXPECT_EQ(callOf(posteriors).start, 4);
}

TEST(CodingPath, BeginsWithTheFirstWholeCodonOfAFragment) {
  EXPECT_EQ(callOf(framesOf({0, 0, 0, 0, 0, 0})).start, 0);
  EXPECT_EQ(callOf(framesOf({1, 1, 1, 1, 1, 1})).start, 1);
  EXPECT_EQ(callOf(framesOf({2, 2, 2, 2, 2, 2})).start, 2);
}

TEST(CodingPath, AStopCodonPullsTheEnd) {
  auto posteriors = framesOf({1, 1, 1, 1, 1, 1, 1, 1, 1, 1});
  EXPECT_EQ(callOf(posteriors).stop, 9);
  posteriors[6].stop = 0.5f;  // base 6 ends a codon of frame 1
  EXPECT_EQ(callOf(posteriors).stop, 6);
}

TEST(CodingPath, ThereIsAlwaysARegion) {
  for (int length = 1; length < 9; ++length) {
    const Call call = callOf(framesOf(std::vector<int>(static_cast<std::size_t>(length), -1)));
    EXPECT_GE(call.start, 0);
    EXPECT_GE(call.stop, call.start);
    EXPECT_EQ(call.frame.size(), static_cast<std::size_t>(length));
  }
}

TEST(CodingPath, FramesComeFromPhases) {
  std::vector<StatePosterior> states(5);
  states[4].state[kC1] = 0.25f;  // phase 1 at base 4: its codon begins at base 3
  states[4].state[kI2] = 0.5f;   // inserted after phase 2: the next base, 5, is of phase 0
  states[4].deletion[2] = 0.125f;
  states[4].state[kS0] = 0.0625f;
  states[4].state[kE2] = 0.03125f;
  std::vector<FramePosterior> frames;
  framePosteriors(states, 2.0f, frames);
  EXPECT_EQ(frames[4].frame[0], 0.5f);
  EXPECT_EQ(frames[4].inserted[2], 1.0f);
  EXPECT_EQ(frames[4].deleted[2], 0.25f);
  EXPECT_EQ(frames[4].start, 0.125f);
  EXPECT_EQ(frames[4].stop, 0.0625f);
  EXPECT_EQ(frames[4].frame[1], 0.125f) << "start codon at base 4";
  EXPECT_EQ(frames[4].frame[2], 0.0625f) << "stop codon from base 2";
}

// ---- All paths

// The score of the best call of a read, found by trying them all: each base is before (-1), in
// frame 0 to 2, inserted before frame 0 to 2 (3 to 5), or behind (6).
double bestByTrial(const std::vector<FramePosterior>& p) {
  double best = -1e9;
  const int length = static_cast<int>(p.size());
  std::function<void(int, int, double)> follow = [&](int i, int state, double score) {
    const auto leave = [&](int f) {
      const double reward = i % 3 == f ? 12.0 * p[static_cast<std::size_t>(i - 1)].stop : 0.0;
      return score - 0.5 + reward;
    };
    if (i == length) {
      if (state == 6) best = std::max(best, score);
      if (state >= 0 && state < 3) best = std::max(best, leave(state));
      return;
    }
    const FramePosterior& now = p[static_cast<std::size_t>(i)];
    const auto gain = [&](int f) { return now.frame[static_cast<std::size_t>(f)] - 0.35; };
    if (state == -1) {
      follow(i + 1, -1, score);
      follow(i + 1, i % 3, score - 0.5 + gain(i % 3) + 12.0 * now.start);
    } else if (state < 3) {
      follow(i + 1, state, score + gain(state));
      follow(i + 1, (state + 2) % 3, score - 0.5 + gain((state + 2) % 3));
      follow(i + 1, 3 + (state + 1) % 3, score - 0.5);
      follow(i + 1, 6, leave(state));
    } else if (state < 6) {
      follow(i + 1, state - 3, score + gain(state - 3));
    } else {
      follow(i + 1, 6, score);
    }
  };
  follow(0, -1, 0.0);
  return best;
}

double scoreOf(const Call& call, const std::vector<FramePosterior>& p) {
  double score = -1.0 - 0.5 * static_cast<double>(call.frameshifts.size());
  for (int i = call.start; i <= call.stop; ++i) {
    const int f = call.frame[static_cast<std::size_t>(i)];
    if (f >= 0) score += p[static_cast<std::size_t>(i)].frame[static_cast<std::size_t>(f)] - 0.35;
  }
  const auto start = static_cast<std::size_t>(call.start),
             stop = static_cast<std::size_t>(call.stop);
  EXPECT_EQ(call.start % 3, call.frame[start]);
  score += 12.0 * p[start].start;
  if ((call.stop + 1) % 3 == call.frame[stop]) score += 12.0 * p[stop].stop;
  return score;
}

TEST(CodingPath, NoOtherCallScoresHigher) {
  Random random(11);
  for (int trial = 0; trial < 300; ++trial) {
    std::vector<FramePosterior> posteriors(1 + random.below(7));
    for (FramePosterior& p : posteriors) {
      for (float& x : p.frame) x = static_cast<float>(random.real());
      p.start = static_cast<float>(0.1 * random.real());
      p.stop = static_cast<float>(0.1 * random.real());
    }
    EXPECT_NEAR(scoreOf(callOf(posteriors), posteriors), bestByTrial(posteriors), 1e-4) << trial;
  }
}

}  // namespace
}  // namespace velto
