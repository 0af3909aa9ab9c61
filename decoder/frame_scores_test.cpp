// 1. Layout by hand  2. Sliding against plain
#include "decoder/frame_scores.h"

#include <gtest/gtest.h>

#include <cstring>

#include "model/plain_engine.h"
#include "model/sliding_engine.h"
#include "tests/support/reads.h"

namespace velto {
namespace {

using test::repeated;

struct LaidOut {
  layout lay;
  std::vector<double> score[3];
};

LaidOut layOut(const ModelTables& tables, const std::string& letters, int width = 96) {
  const std::vector<short> codes = test::baseCodes(letters);
  const ModelView model{tables, width};
  const auto length = static_cast<int>(codes.size());
  LaidOut result;
  layOutFrames(model, codes.data(), length, SlidingEngine(model, codes.data(), length).scores(),
               result.lay, result.score);
  return result;
}

// Every window is coding with the score 2.
ModelTables alwaysCoding() {
  ModelTables tables;
  test::addConstant(tables, 2.0);
  return tables;
}

// ---- 1. Layout by hand

TEST(FrameScores, MarkEveryAtgOfEveryFrame) {
  const LaidOut r = layOut(ModelTables(), "ATGATGCATGNTGAT");
  EXPECT_EQ(r.lay.met[0], (std::vector<int>{-21, -21, -14, -14, -14}));
  EXPECT_EQ(r.lay.met[1], (std::vector<int>{-14, -14, -21, -14}));  // TGA TGC ATG NTG
  EXPECT_EQ(r.lay.met[2], (std::vector<int>{-14, -14, -14, -14}));  // GAT GCA TGN TGA
}

TEST(FrameScores, StopAtTheCentreCodonMarksTheWindowOnly) {
  // Half a window is 16 codons; the stop is codon 20 of frame 0.
  const LaidOut r = layOut(alwaysCoding(), repeated("GCC", 20) + "TAA" + repeated("GCC", 60));
  EXPECT_EQ(r.lay.cls[0][20], -100);
  EXPECT_EQ(r.score[0][20], -10.0);
  EXPECT_EQ(r.lay.cls[0][19], -10);
  EXPECT_EQ(r.lay.cls[0][21], -10);
  EXPECT_EQ(r.score[0][19], 2.0);
  EXPECT_EQ(r.lay.cls[1][20], -10);  // CTA, AAG in the other frames
}

TEST(FrameScores, StopWithAnUnknownBaseMarksNothing) {
  const LaidOut r = layOut(alwaysCoding(), repeated("GCC", 20) + "TAN" + repeated("GCC", 60));
  EXPECT_EQ(r.lay.cls[0][20], -10);
}

TEST(FrameScores, FirstHalfWindowIsFillerWithTheFirstScore) {
  const LaidOut r = layOut(alwaysCoding(), repeated("GCC", 60));
  for (size_t k = 0; k < 16; ++k) {
    EXPECT_EQ(r.lay.cls[2][k], -20);
    EXPECT_EQ(r.score[2][k], 2.0);
  }
  EXPECT_EQ(r.lay.cls[2][16], -10);
  const LaidOut stop = layOut(alwaysCoding(), repeated("GCC", 16) + "TAA" + repeated("GCC", 60));
  EXPECT_EQ(stop.score[0][0], -10.0);  // the first window has a stop at its centre
}

TEST(FrameScores, WindowsAtTheReadsEndRepeatTheLastScoredWindowOfWhateverFrame) {
  ModelTables tables;
  test::addAcid(tables, 0, 1.0, 1, 5);  // more than five Ala
  test::addConstant(tables, 0.25);
  // Frame 0 of 100 bases: windows at 0 and 3 begin before base 4, those behind repeat.
  const LaidOut r = layOut(tables, repeated("GCC", 33) + "G");
  EXPECT_EQ(r.score[0][16], 1.25);
  EXPECT_EQ(r.score[0][17], 1.25);
  EXPECT_EQ(r.score[0][18], 1.25);   // repeated
  EXPECT_EQ(r.score[1][16], -0.75);  // CCG: window at 1 is scored
  EXPECT_EQ(r.score[1][17], -0.75);
  EXPECT_EQ(r.lay.cls[0][18], -10);
  EXPECT_EQ(r.lay.cls[1][17], -1);
  // Of 97 bases only the window at base 0 is scored: frames 1 and 2 repeat frame 0.
  const LaidOut carried = layOut(tables, repeated("GCC", 32) + "G");
  EXPECT_EQ(carried.score[1][16], 1.25);
  EXPECT_EQ(carried.score[2][16], 1.25);
  EXPECT_EQ(carried.lay.cls[2][16], -10);
}

TEST(FrameScores, WindowStartingExactlyOneWidthBeforeTheEndIsNotScored) {
  const ModelTables tables = alwaysCoding();
  const ModelView model{tables, 96};
  const std::vector<short> codes = test::baseCodes(repeated("GCC", 40));
  EXPECT_TRUE(SlidingEngine(model, codes.data(), 96).scores().frame[0].empty());
  EXPECT_EQ(SlidingEngine(model, codes.data(), 97).scores().frame[0].size(), 1U);
  EXPECT_TRUE(SlidingEngine(model, codes.data(), 97).scores().frame[1].empty());
  EXPECT_EQ(SlidingEngine(model, codes.data(), 99).scores().frame[2].size(), 1U);
  EXPECT_EQ(SlidingEngine(model, codes.data(), 100).scores().frame[0].size(), 2U);
}

TEST(FrameScores, BeforeAnyScoredWindowTheClassIsNonCodingAndTheScoreZero) {
  const LaidOut r = layOut(alwaysCoding(), repeated("GCC", 32));  // 96 bases
  EXPECT_EQ(r.lay.cls[0][16], -1);
  EXPECT_EQ(r.score[0][16], 0.0);
}

TEST(FrameScores, StepsBehindTheLastWindowHaveNone) {
  // 180 bases: frame 0 ends at the window whose 18th codon would lie behind the read: of the 60
  // codons the windows from 43 on hold fewer than 18.
  const LaidOut r = layOut(alwaysCoding(), repeated("GCC", 60));
  ASSERT_EQ(r.lay.cls[0].size(), 60U);
  EXPECT_EQ(r.lay.cls[0][42 + 16], -10);
  EXPECT_EQ(r.lay.cls[0][43 + 16], -1000);
  EXPECT_EQ(r.score[0][43 + 16], -10.0);
}

TEST(FrameScores, StopAtTheLastCentreIsNotFollowedByAMissingWindow) {
  // The last window of frame 0 has its centre at the read's last codon, a stop.
  const LaidOut r = layOut(alwaysCoding(), repeated("GCC", 59) + "TAA");
  ASSERT_EQ(r.lay.cls[0].size(), 60U);
  EXPECT_EQ(r.lay.cls[0][59], -100);
}

TEST(FrameScores, EveryFrameHasAsManyClassesAsMarks) {
  for (int length = 54; length < 130; ++length) {
    const LaidOut r =
        layOut(alwaysCoding(), repeated("GAC", 60).substr(0, static_cast<size_t>(length)));
    for (int f = 0; f < 3; ++f) {
      EXPECT_EQ(r.lay.cls[f].size(), r.lay.met[f].size()) << length;
      EXPECT_EQ(r.score[f].size(), r.lay.cls[f].size()) << length;
    }
  }
}

TEST(FrameScores, ReadBelowHalfAWindowHasSeventeenClasses) {
  for (const int length : {3, 30, 50}) {
    const LaidOut r =
        layOut(alwaysCoding(), repeated("GAC", 60).substr(0, static_cast<size_t>(length)));
    for (int f = 0; f < 3; ++f) {
      EXPECT_EQ(r.lay.cls[f].size(), 17U) << length;
      EXPECT_EQ(r.lay.cls[f][16], -1000) << length;
      EXPECT_EQ(r.lay.cls[f][15], -20) << length;
    }
  }
}

TEST(FrameScores, ReadOfTwoBasesHasNoMarks) {
  const LaidOut r = layOut(alwaysCoding(), "AT");
  for (int f = 0; f < 3; ++f) {
    EXPECT_TRUE(r.lay.met[f].empty());
    ASSERT_EQ(r.lay.cls[f].size(), 17U);
    EXPECT_EQ(r.lay.cls[f][16], -1000);
  }
}

TEST(FrameScores, WindowOf196BasesHoldsSixtyFiveCodons) {
  // The 66th codon would be the only Lys of the first window.
  ModelTables tables;
  test::addAcid(tables, 8, 1.0, 1, 0);
  const std::string letters = repeated("GCC", 65) + "AAA" + repeated("GCC", 80);
  const LaidOut r = layOut(tables, letters, 196);
  EXPECT_EQ(r.score[0][32], -1.0);
  EXPECT_EQ(r.score[0][33], 1.0);
}

TEST(FrameScores, PairOfTheLastCodonReachesBehindTheWindow) {
  ModelTables tables;
  test::addPair(tables, 3, 0, 8, 1.0, 1, 0.5);  // Ala, and Lys four codons on
  for (auto& prior : tables.snglAcidPriproTable) prior[0] = 1.0;
  // Window 0 holds codons 0 to 31; codon 35 is the only Lys: fp = 3 / 95, f1 = 97 / 95 (32 Ala
  // are followed), f2 = 4 / 95: v = 0.73.
  const LaidOut r = layOut(tables, repeated("GCC", 35) + "AAA" + repeated("GCC", 40));
  EXPECT_EQ(r.score[0][16], 1.0);
  const LaidOut beyond = layOut(tables, repeated("GCC", 36) + "AAA" + repeated("GCC", 40));
  EXPECT_EQ(beyond.score[0][16], -1.0);
}

// ---- 2. Sliding against plain

void expectSameScores(const WindowScores& a, const WindowScores& b) {
  for (int f = 0; f < 3; ++f) {
    ASSERT_EQ(a.frame[f].size(), b.frame[f].size());
    for (size_t k = 0; k < a.frame[f].size(); ++k) {
      const double x = a.frame[f][k];
      const double y = b.frame[f][k];
      if (x != x && y != y) continue;
      ASSERT_EQ(std::memcmp(&x, &y, sizeof x), 0) << "frame " << f << " window " << k;
    }
  }
}

TEST(FrameScoresAtRandom, SlidingEqualsPlainToTheLastBit) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  ModelTables tables;
  for (int round = 0; round < 2000; ++round) {
    SCOPED_TRACE(testing::Message() << "read " << round);
    if (round % 4 == 0) {
      tables = round % 8 == 0 ? test::usualRandomModel(random) : test::wildRandomModel(random);
    }
    const int width = test::chance(random, 0.5) ? 96 : 196;
    const int length = test::randomInt(random, 1, width + 60);
    const double unknown = test::chance(random, 0.5) ? 0.0 : 0.05;
    const std::vector<short> codes = test::baseCodes(test::randomLetters(random, length, unknown));
    const ModelView model{tables, width};
    expectSameScores(SlidingEngine(model, codes.data(), length).scores(),
                     PlainEngine(model, codes.data(), length).scores());
    if (HasFatalFailure()) return;
  }
}

TEST(FrameScoresAtRandom, SlidingEqualsPlainOnLongReads) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  for (const int length : {800, 3001}) {
    const ModelTables tables = test::usualRandomModel(random);
    const std::vector<short> codes = test::baseCodes(test::randomLetters(random, length, 0.002));
    const ModelView model{tables, 196};
    expectSameScores(SlidingEngine(model, codes.data(), length).scores(),
                     PlainEngine(model, codes.data(), length).scores());
  }
}

}  // namespace
}  // namespace velto
