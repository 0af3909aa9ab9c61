#include "simulation/read_simulator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

namespace velto {
namespace {

using Error = TemplateError;
using Marks = std::vector<signed char>;
using Shifts = std::vector<FrameShift>;

constexpr std::uint64_t kSeed = 20240611;

Transcript transcriptOf(const char* description, const std::string& letters) {
  return parseTranscript("t", description, letters, TranscriptKind::kCoding).transcript;
}

// CC ATG AAA GGG TAG TT: coding region at 2 to 13.
const Transcript& example() {
  static const Transcript transcript = transcriptOf("CDS=3-14", "CCATGAAAGGGTAGTT");
  return transcript;
}

std::string letters(const SimulatedRead& read) {
  std::string text;
  for (const short base : read.bases) text += base < 0 ? 'N' : "ATGC"[base];
  return text;
}

SimulatedRead wholeWith(const std::vector<Error>& errors) {
  return applyErrors(example(), wholeTranscript(example()), errors);
}

TEST(ReadSimulator, ReadWithoutErrorsIsTheTemplateWithItsFrame) {
  Random random(kSeed);
  const SimulatedRead read =
      simulateRead(example(), wholeTranscript(example()), ErrorRates{}, random);
  EXPECT_EQ(letters(read), "CCATGAAAGGGTAGTT");
  EXPECT_EQ(read.frame, (Marks{-1, -1, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, -1, -1}));
  EXPECT_EQ(read.start, 2);
  EXPECT_EQ(read.stop, 13);
  EXPECT_TRUE(read.startInside);
  EXPECT_TRUE(read.stopInside);
  EXPECT_TRUE(read.shifts.empty());
  EXPECT_EQ(read.source, &example());
}

TEST(ReadSimulator, FragmentThatCutsBothEndsKeepsTheFrameOfItsOwnPositions) {
  // From the T of ATG to the T of TAG: TG AAA GGG T; the next whole codon begins at 2.
  const SimulatedRead read = applyErrors(example(), {3, 9}, {});
  EXPECT_EQ(letters(read), "TGAAAGGGT");
  EXPECT_EQ(read.frame, (Marks{2, 2, 2, 2, 2, 2, 2, 2, 2}));
  EXPECT_EQ(read.start, 0);
  EXPECT_EQ(read.stop, 8);
  EXPECT_FALSE(read.startInside);
  EXPECT_FALSE(read.stopInside);
}

TEST(ReadSimulator, FragmentOutsideTheRegionHasNoTruth) {
  const SimulatedRead read = applyErrors(example(), {14, 2}, {});
  EXPECT_EQ(letters(read), "TT");
  EXPECT_EQ(read.start, -1);
  EXPECT_EQ(read.stop, -1);
  EXPECT_EQ(read.frame, (Marks{-1, -1}));
}

TEST(ReadSimulator, InsertedBaseMovesTheFrameOneUpAtItsOwnPosition) {
  // C before the first G: CC ATG AAA (C) GGG TAG TT.
  const SimulatedRead read = wholeWith({{8, Error::kInsertion, 3}});
  EXPECT_EQ(letters(read), "CCATGAAACGGGTAGTT");
  EXPECT_EQ(read.frame, (Marks{-1, -1, 2, 2, 2, 2, 2, 2, -1, 0, 0, 0, 0, 0, 0, -1, -1}));
  EXPECT_EQ(read.shifts, (Shifts{{8, true}}));
  EXPECT_EQ(read.stop, 14);
}

TEST(ReadSimulator, InsertionInsideACodonSplitsIt) {
  // CC ATG A(C)AA GGG TAG TT.
  const SimulatedRead read = wholeWith({{6, Error::kInsertion, 3}});
  EXPECT_EQ(letters(read), "CCATGACAAGGGTAGTT");
  EXPECT_EQ(read.frame, (Marks{-1, -1, 2, 2, 2, 2, -1, 0, 0, 0, 0, 0, 0, 0, 0, -1, -1}));
  EXPECT_EQ(read.shifts, (Shifts{{6, true}}));
}

TEST(ReadSimulator, LostBaseMovesTheFrameOneDownAtTheBaseBehindTheGap) {
  // The last A of AAA lost: CC ATG AA. GGG TAG TT.
  const SimulatedRead read = wholeWith({{7, Error::kDeletion, -1}});
  EXPECT_EQ(letters(read), "CCATGAAGGGTAGTT");
  EXPECT_EQ(read.frame, (Marks{-1, -1, 2, 2, 2, 2, 2, 1, 1, 1, 1, 1, 1, -1, -1}));
  EXPECT_EQ(read.shifts, (Shifts{{7, false}}));
  EXPECT_EQ(read.stop, 12);
}

TEST(ReadSimulator, TwoNeighbouringLostBasesAreTwoShiftsAtOnePlace) {
  const SimulatedRead read = wholeWith({{6, Error::kDeletion, -1}, {7, Error::kDeletion, -1}});
  EXPECT_EQ(letters(read), "CCATGAGGGTAGTT");
  EXPECT_EQ(read.shifts, (Shifts{{6, false}, {6, false}}));
  EXPECT_EQ(read.frame, (Marks{-1, -1, 2, 2, 2, 2, 0, 0, 0, 0, 0, 0, -1, -1}));
}

TEST(ReadSimulator, GapBeforeAnInsertedBaseIsPlacedAtThatBase) {
  const SimulatedRead read = wholeWith({{6, Error::kDeletion, -1}, {7, Error::kInsertion, 3}});
  EXPECT_EQ(letters(read), "CCATGACAGGGTAGTT");
  EXPECT_EQ(read.shifts, (Shifts{{6, false}, {6, true}}));
  EXPECT_EQ(read.frame, (Marks{-1, -1, 2, 2, 2, 2, -1, 2, 2, 2, 2, 2, 2, 2, -1, -1}));
}

TEST(ReadSimulator, IndelsOutsideTheRegionAreNoShifts) {
  // Before the A of ATG, the first C, and the first T behind the region.
  const SimulatedRead read =
      wholeWith({{0, Error::kDeletion, -1}, {2, Error::kInsertion, 2}, {14, Error::kInsertion, 2}});
  EXPECT_EQ(letters(read), "CGATGAAAGGGTAGGTT");
  EXPECT_TRUE(read.shifts.empty());
  EXPECT_EQ(read.start, 2);
  EXPECT_EQ(read.stop, 13);
  EXPECT_TRUE(read.startInside);
  EXPECT_TRUE(read.stopInside);
}

TEST(ReadSimulator, LossOfTheRegionsOutermostBasesIsNoShift) {
  const SimulatedRead read = wholeWith({{2, Error::kDeletion, -1}, {13, Error::kDeletion, -1}});
  EXPECT_EQ(letters(read), "CCTGAAAGGGTATT");
  EXPECT_TRUE(read.shifts.empty());
  EXPECT_EQ(read.start, 2);
  EXPECT_EQ(read.stop, 11);
  EXPECT_EQ(read.frame[2], 1);  // the T is second of its codon, which would begin at 1
  EXPECT_FALSE(read.startInside);
  EXPECT_FALSE(read.stopInside);
}

TEST(ReadSimulator, InsertionInsideTheStartOrStopCodonBreaksIt) {
  const SimulatedRead read = wholeWith({{3, Error::kInsertion, 0}, {13, Error::kInsertion, 0}});
  EXPECT_EQ(letters(read), "CCAATGAAAGGGTAAGTT");
  EXPECT_FALSE(read.startInside);
  EXPECT_FALSE(read.stopInside);
  EXPECT_EQ(read.shifts, (Shifts{{3, true}, {14, true}}));
}

TEST(ReadSimulator, SubstitutedAndUnknownBasesKeepFrameAndEnds) {
  const SimulatedRead read = wholeWith({{3, Error::kSubstitution, 3}, {12, Error::kUnknown, -1}});
  EXPECT_EQ(letters(read), "CCACGAAAGGGTNGTT");
  EXPECT_TRUE(read.startInside);
  EXPECT_TRUE(read.stopInside);
  EXPECT_EQ(read.frame, wholeWith({}).frame);
}

// A coding transcript of `codons` codons between 100 bases on either side.
Transcript longTranscript(int codons, Random& random) {
  Transcript t;
  const auto add = [&](int count) {
    for (int i = 0; i < count; ++i) t.bases.push_back(static_cast<short>(random.below(4)));
  };
  add(3 * codons + 200);
  t.cdsStart = 100;
  t.cdsStop = 3 * codons + 99;
  return t;
}

// Share of `count` in `n` draws lies within four standard deviations of `rate`.
void expectRate(double rate, long count, long n) {
  const double mean = rate * static_cast<double>(n);
  const double sigma = std::sqrt(mean * (1.0 - rate));
  EXPECT_NEAR(static_cast<double>(count), mean, 4.0 * sigma) << "rate " << rate;
}

TEST(ReadSimulator, EachKindOfErrorOccursAtItsRate) {
  SCOPED_TRACE(testing::Message() << "seed " << kSeed);
  Random random(kSeed);
  const Transcript t = longTranscript(700000, random);
  for (const char* preset : {"est", "mild", "nanopore"}) {
    SCOPED_TRACE(preset);
    const ErrorRates rates = *presetRates(preset);
    long count[4] = {};
    long added[4] = {};
    for (const Error& e : drawErrors(t, wholeTranscript(t), rates, random)) {
      ++count[e.kind];
      if (e.kind == Error::kInsertion) ++added[e.base];
      if (e.kind == Error::kSubstitution) {
        ASSERT_NE(e.base, t.bases[static_cast<std::size_t>(e.offset)]);
      }
    }
    expectRate(rates.substitution, count[Error::kSubstitution], t.length());
    expectRate(rates.insertion, count[Error::kInsertion], t.length());
    expectRate(rates.deletion, count[Error::kDeletion], t.length());
    expectRate(rates.unknown, count[Error::kUnknown], t.length());
    for (const long of : added) expectRate(0.25, of, count[Error::kInsertion]);
  }
}

TEST(ReadSimulator, FrameMarksChangeOnlyByTheListedShifts) {
  SCOPED_TRACE(testing::Message() << "seed " << kSeed);
  Random random(kSeed);
  const Transcript t = longTranscript(2000, random);
  for (int round = 0; round < 50; ++round) {
    const SimulatedRead read = simulateRead(t, wholeTranscript(t), {0.1, 0.05, 0.05, 0.02}, random);
    ASSERT_EQ(read.frame.size(), read.bases.size());
    int frame = read.frame[static_cast<std::size_t>(read.start)];
    std::size_t next = 0;
    for (int p = read.start; p <= read.stop; ++p) {
      bool inserted = false;
      for (; next < read.shifts.size() && read.shifts[next].position == p; ++next) {
        inserted |= read.shifts[next].insertion;
        frame = (frame + (read.shifts[next].insertion ? 1 : 2)) % 3;
      }
      ASSERT_EQ(read.frame[static_cast<std::size_t>(p)], inserted ? -1 : frame) << p;
    }
    ASSERT_EQ(next, read.shifts.size());
  }
}

TEST(ReadSimulator, SameSeedGivesTheSameReadAndAnotherIndexAnother) {
  Random random(kSeed);
  const Transcript t = longTranscript(300, random);
  const auto read = [&](std::uint64_t index) {
    Random own = Random::split(kSeed, index);
    return simulateRead(t, wholeTranscript(t), *presetRates("est"), own).bases;
  };
  EXPECT_EQ(read(7), read(7));
  EXPECT_NE(read(7), read(8));
}

TEST(ReadSimulator, PresetsAreKnownByNameOnly) {
  EXPECT_FALSE(presetRates("pacbio").has_value());
  EXPECT_DOUBLE_EQ(presetRates("est")->deletion, 0.007);
  EXPECT_DOUBLE_EQ(presetRates("mild")->insertion, 0.0015);
  EXPECT_DOUBLE_EQ(presetRates("nanopore")->unknown, 0.0);
  EXPECT_DOUBLE_EQ(presetRates("clean")->substitution, 0.0);
}

TEST(ReadSimulator, ScaledIndelsLeaveTheOtherRates) {
  const ErrorRates third = scaleIndels(*presetRates("est"), 1.0 / 3.0);
  EXPECT_DOUBLE_EQ(third.insertion, 0.005 / 3.0);
  EXPECT_DOUBLE_EQ(third.deletion, 0.007 / 3.0);
  EXPECT_DOUBLE_EQ(third.substitution, 0.012);
  EXPECT_DOUBLE_EQ(third.unknown, 0.002);
}

TEST(ReadSimulator, RatesMustBeSharesOfOne) {
  EXPECT_TRUE((ErrorRates{0.5, 0.25, 0.25, 0.0}.valid()));
  EXPECT_FALSE((ErrorRates{0.5, 0.25, 0.25, 0.25}.valid()));
  EXPECT_FALSE((ErrorRates{-0.1, 0.0, 0.0, 0.0}.valid()));
  EXPECT_FALSE((ErrorRates{std::nan(""), 0.0, 0.0, 0.0}.valid()));
}

TEST(ReadSimulator, FragmentsStayInsideAndReachBothEndsOfTheirRange) {
  Random random(kSeed);
  bool first = false, last = false, shortest = false, longest = false;
  for (int i = 0; i < 2000; ++i) {
    const Fragment f = sampleFragment(example(), {5, 8}, random);
    ASSERT_GE(f.start, 0);
    ASSERT_LE(f.start + f.length, example().length());
    first |= f.start == 0;
    last |= f.start + f.length == example().length();
    shortest |= f.length == 5;
    longest |= f.length == 8;
    ASSERT_TRUE(f.length >= 5 && f.length <= 8);
  }
  EXPECT_TRUE(first && last && shortest && longest);
}

TEST(ReadSimulator, FragmentLongerThanTheTranscriptIsAllOfIt) {
  Random random(kSeed);
  const Fragment f = sampleFragment(example(), {300, 800}, random);
  EXPECT_EQ(f.start, 0);
  EXPECT_EQ(f.length, 16);
}

}  // namespace
}  // namespace velto
