#include "simulation/read_simulator.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace velto {
namespace {

using Error = TemplateError;
using Marks = std::vector<signed char>;
using Shifts = std::vector<std::pair<int, bool>>;  // position, whether inserted

bool isInsertion(const Frameshift& shift) { return shift.kind == Frameshift::Kind::kInsertion; }

Shifts shiftsOf(const SimulatedRead& read) {
  Shifts shifts;
  for (const Frameshift& shift : read.shifts) {
    shifts.emplace_back(shift.position, isInsertion(shift));
  }
  return shifts;
}

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
      simulateRead(example(), wholeTranscript(example()), ErrorModel{}, random);
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
  EXPECT_EQ(shiftsOf(read), (Shifts{{8, true}}));
  EXPECT_EQ(read.stop, 14);
}

TEST(ReadSimulator, InsertionInsideACodonSplitsIt) {
  // CC ATG A(C)AA GGG TAG TT.
  const SimulatedRead read = wholeWith({{6, Error::kInsertion, 3}});
  EXPECT_EQ(letters(read), "CCATGACAAGGGTAGTT");
  EXPECT_EQ(read.frame, (Marks{-1, -1, 2, 2, 2, 2, -1, 0, 0, 0, 0, 0, 0, 0, 0, -1, -1}));
  EXPECT_EQ(shiftsOf(read), (Shifts{{6, true}}));
}

TEST(ReadSimulator, LostBaseMovesTheFrameOneDownAtTheBaseBehindTheGap) {
  // The last A of AAA lost: CC ATG AA. GGG TAG TT.
  const SimulatedRead read = wholeWith({{7, Error::kDeletion, -1}});
  EXPECT_EQ(letters(read), "CCATGAAGGGTAGTT");
  EXPECT_EQ(read.frame, (Marks{-1, -1, 2, 2, 2, 2, 2, 1, 1, 1, 1, 1, 1, -1, -1}));
  EXPECT_EQ(shiftsOf(read), (Shifts{{7, false}}));
  EXPECT_EQ(read.stop, 12);
}

TEST(ReadSimulator, TwoNeighbouringLostBasesAreTwoShiftsAtOnePlace) {
  const SimulatedRead read = wholeWith({{6, Error::kDeletion, -1}, {7, Error::kDeletion, -1}});
  EXPECT_EQ(letters(read), "CCATGAGGGTAGTT");
  EXPECT_EQ(shiftsOf(read), (Shifts{{6, false}, {6, false}}));
  EXPECT_EQ(read.frame, (Marks{-1, -1, 2, 2, 2, 2, 0, 0, 0, 0, 0, 0, -1, -1}));
}

TEST(ReadSimulator, InsertedBasesBeforeOneTemplateBaseStandInTheirOrder) {
  // C and T before the first G, which is replaced by A: CC ATG AAA (CT) AGG TAG TT.
  const SimulatedRead read = wholeWith(
      {{8, Error::kInsertion, 3}, {8, Error::kInsertion, 1}, {8, Error::kSubstitution, 0}});
  EXPECT_EQ(letters(read), "CCATGAAACTAGGTAGTT");
  EXPECT_EQ(read.frame, (Marks{-1, -1, 2, 2, 2, 2, 2, 2, -1, -1, 1, 1, 1, 1, 1, 1, -1, -1}));
  EXPECT_EQ(shiftsOf(read), (Shifts{{8, true}, {9, true}}));
}

TEST(ReadSimulator, GapBeforeAnInsertedBaseIsPlacedAtThatBase) {
  const SimulatedRead read = wholeWith({{6, Error::kDeletion, -1}, {7, Error::kInsertion, 3}});
  EXPECT_EQ(letters(read), "CCATGACAGGGTAGTT");
  EXPECT_EQ(shiftsOf(read), (Shifts{{6, false}, {6, true}}));
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
  EXPECT_EQ(shiftsOf(read), (Shifts{{3, true}, {14, true}}));
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

TEST(ReadSimulator, FrameMarksChangeOnlyByTheListedShifts) {
  SCOPED_TRACE(testing::Message() << "seed " << kSeed);
  Random random(kSeed);
  const Transcript t = longTranscript(2000, random);
  for (int round = 0; round < 50; ++round) {
    const SimulatedRead read =
        simulateRead(t, wholeTranscript(t), {{0.1, 0.05, 0.05, 0.02}}, random);
    ASSERT_EQ(read.frame.size(), read.bases.size());
    int frame = read.frame[static_cast<std::size_t>(read.start)];
    std::size_t next = 0;
    for (int p = read.start; p <= read.stop; ++p) {
      bool inserted = false;
      for (; next < read.shifts.size() && read.shifts[next].position == p; ++next) {
        inserted |= isInsertion(read.shifts[next]);
        frame = (frame + (isInsertion(read.shifts[next]) ? 1 : 2)) % 3;
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
    return simulateRead(t, wholeTranscript(t), *presetErrors("est"), own).bases;
  };
  EXPECT_EQ(read(7), read(7));
  EXPECT_NE(read(7), read(8));
}

TEST(ReadSimulator, QualitiesComeWithTheModelAndLeaveTheBasesAlone) {
  Random random(kSeed);
  const Transcript t = longTranscript(300, random);
  ErrorModel model = *presetErrors("nanopore-r9");
  Random first(kSeed), second(kSeed);
  const SimulatedRead read = simulateRead(t, wholeTranscript(t), model, first);
  EXPECT_EQ(read.phred.size(), read.bases.size());
  model.quality = {};
  const SimulatedRead plain = simulateRead(t, wholeTranscript(t), model, second);
  EXPECT_TRUE(plain.phred.empty());
  EXPECT_EQ(plain.bases, read.bases);
  EXPECT_EQ(shiftsOf(plain), shiftsOf(read));
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
