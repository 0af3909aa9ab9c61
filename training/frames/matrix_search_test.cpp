#include "training/frames/matrix_search.h"

#include <gtest/gtest.h>
#include <tbb/global_control.h>

#include "decoder/decode_frames.h"
#include "decoder/placed_call.h"
#include "model/sliding_engine.h"
#include "simulation/synthetic_species.h"

namespace velto {
namespace {

const SyntheticSpecies& species() {
  static const SyntheticSpecies made = [] {
    SyntheticSpecies s;
    s.add(12, 900, 50);
    return s;
  }();
  return made;
}

// A vote that favours windows with few C in third places, roughly.
Vote simpleVote() {
  Vote vote;
  vote.bias = 4.0;
  for (int codon = 3; codon < kCodonCodes; codon += 4) {
    vote.stumps.push_back({{kFirstCodonFeature + codon, 5}, -0.4 - 0.00317 * codon});
  }
  return vote;
}

SimulatedRead readOf(const Transcript& transcript, std::uint64_t seed) {
  Random random(seed);
  return simulateRead(transcript, wholeTranscript(transcript), *presetErrors("est"), random);
}

// The same figures by the decoder itself.
EvaluationCounts countByDecoder(const SimulatedRead& read, const BinnedVote& vote, double shift,
                                const double (&matrix)[16]) {
  ModelTables tables;
  vote.write(96, shift, tables);
  CodedRead codons;
  codons.assign(read.bases.data(), read.length());
  SlidingEngine votes({tables, 96}, read.bases.data(), read.length());
  FrameScratch scratch;
  const TracedPath traced =
      decodeFrames({matrix, 96}, codons, read.length(), votes, false, scratch);
  Call call;
  callPath(scratch.path, traced.score, read.length(), call);
  return countRegion({read.frame, read.start, read.stop, read.startInside, read.stopInside},
                     call.frame, call.start, call.stop);
}

TEST(MatrixSearch, FastDecodingAgreesWithTheDecoderUnderOneMatrixAfterAnother) {
  const BinnedVote vote(simpleVote());
  Random random(3);
  long called = 0;
  for (std::uint64_t k = 0; k < 100; ++k) {
    const auto& pool = k % 4 == 0 ? species().noncoding : species().coding;
    const SimulatedRead read = readOf(pool[k % pool.size()], k);
    const ScoredRead scored(read, vote, 96);
    for (int turn = 0; turn < 4; ++turn) {
      TiedMatrix numbers;
      for (std::size_t i = 0; i < TiedMatrix::kNumbers; ++i) {
        numbers.number(i) *= 0.5 + random.real();
      }
      numbers.gate *= 0.5;
      const double shift = roundedToFile(random.real() - 0.5);
      double matrix[16];
      numbers.fill(matrix);
      const EvaluationCounts fast = scored.decode(matrix, shift);
      const EvaluationCounts plain = countByDecoder(read, vote, shift, matrix);
      EXPECT_EQ(fast.called, plain.called) << k << ' ' << turn;
      EXPECT_EQ(fast.inFrame, plain.inFrame) << k << ' ' << turn;
      EXPECT_EQ(fast.bothExact, plain.bothExact) << k << ' ' << turn;
      called += plain.called;
    }
  }
  EXPECT_GT(called, 20000);
}

GroupReads searchReads() {
  static const BinnedVote vote(simpleVote());
  GroupReads reads;
  std::uint64_t seed = 0;
  for (SearchReads& ofClass : reads) {
    for (int preset = 0; preset < kSearchPresets; ++preset) {
      const auto& pool = preset == kNoncodingReads ? species().noncoding : species().coding;
      for (const Transcript& t : pool) {
        ofClass.ofPreset[preset].emplace_back(readOf(t, ++seed), vote, 96);
      }
    }
  }
  return reads;
}

double valueOf(const GroupReads& reads, const TiedMatrix& numbers) {
  double matrix[16];
  numbers.fill(matrix);
  PresetCounts sum;
  for (std::size_t gc = 0; gc < kGcClasses; ++gc) {
    const PresetCounts counts = countReads(reads[gc], matrix, numbers.shifts[gc]);
    for (std::size_t p = 0; p < kSearchPresets; ++p) sum[p] += counts[p];
  }
  return searchValue(sum, SearchObjective());
}

TEST(MatrixSearch, FoundNumbersAreNoWorseThanTheFirstCandidate) {
  const auto reads = searchReads();
  const TiedMatrix found = searchMatrix(
      reads, {.generations = 4, .earlyFraction = 1.0, .lateGenerations = 1, .steps = 20}, 1);
  EXPECT_GE(valueOf(reads, found), valueOf(reads, TiedMatrix()));
}

TEST(MatrixSearch, LongWalkIsNoWorseThanItsFirstStep) {
  const auto reads = searchReads();
  const TiedMatrix first = searchMatrix(
      reads, {.generations = 4, .earlyFraction = 1.0, .lateGenerations = 1, .steps = 1}, 1);
  const TiedMatrix last = searchMatrix(
      reads, {.generations = 4, .earlyFraction = 1.0, .lateGenerations = 1, .steps = 600}, 1);
  EXPECT_GE(valueOf(reads, last), valueOf(reads, first));
}

TEST(MatrixSearch, ResultDoesNotDependOnTheThreads) {
  const auto reads = searchReads();
  const TiedMatrix many = searchMatrix(
      reads, {.generations = 2, .earlyFraction = 0.5, .lateGenerations = 1, .steps = 20}, 9);
  const tbb::global_control one(tbb::global_control::max_allowed_parallelism, 1);
  TiedMatrix single = searchMatrix(
      reads, {.generations = 2, .earlyFraction = 0.5, .lateGenerations = 1, .steps = 20}, 9);
  TiedMatrix other = many;
  for (std::size_t i = 0; i < TiedMatrix::kNumbers; ++i) {
    EXPECT_EQ(single.number(i), other.number(i));
  }
}

TEST(MatrixSearch, ShiftsOfClassesWithoutReadsStayTogether) {
  const TiedMatrix found =
      searchMatrix(GroupReads(),
                   {.generations = 10, .earlyFraction = 1.0, .lateGenerations = 2, .steps = 40}, 5);
  for (const double shift : found.shifts) EXPECT_EQ(shift, found.shifts[0]);
}

TEST(MatrixSearch, CallsOfNoncodingReadsBeyondTheFreeOnesCost) {
  SearchObjective objective;
  objective.freeCalls = 0.2;
  objective.callCost = 0.5;
  PresetCounts counts;
  counts[kNoncodingReads].noncodingReads = 100;
  counts[kNoncodingReads].noncodingCalled = 20;
  EXPECT_DOUBLE_EQ(searchValue(counts, objective), 0.0);
  counts[kNoncodingReads].noncodingCalled = 50;
  EXPECT_DOUBLE_EQ(searchValue(counts, objective), -0.15);
  objective.freeCalls = 0.0;
  EXPECT_DOUBLE_EQ(searchValue(counts, objective), -0.25);
}

TEST(MatrixSearch, ValueIsTheWeightedMeanOverThePresets) {
  SearchObjective objective;
  objective.presetWeights[kEstReads] = 0.5;
  objective.presetWeights[kMildReads] = 0.25;
  objective.presetWeights[kCleanReads] = 0.25;
  objective.frameF1 = 0.25;
  objective.frameRecall = 0.25;
  objective.correlation = 0.5;
  objective.exactBonus = 0.2;
  PresetCounts counts;
  EvaluationCounts& est = counts[kEstReads];
  est.bases = 400;
  est.coding = 100;
  est.called = 100;
  est.both = 75;
  est.inFrame = 50;
  EvaluationCounts& clean = counts[kCleanReads];
  clean.reads = 10;
  clean.bothExact = 5;
  // Frame F1 100 / 200; frame recall 50 / 100; correlation (75 x 275 - 25 x 25) / (100 x 300).
  EXPECT_DOUBLE_EQ(searchValue(counts, objective),
                   0.5 * (0.25 * 0.5 + 0.25 * 0.5 + 0.5 * 2.0 / 3.0) + 0.2 * 0.5);
}

TEST(TiedMatrix, FillsTheMatrixByStateNowAndBefore) {
  TiedMatrix numbers;
  double matrix[16];
  numbers.fill(matrix);
  EXPECT_EQ(matrix[4 * 0 + 0], numbers.stay);
  EXPECT_EQ(matrix[4 * 0 + 1], numbers.change);
  EXPECT_EQ(matrix[4 * 1 + 0], numbers.change);
  EXPECT_EQ(matrix[4 * 1 + 1], numbers.empty);
  EXPECT_EQ(matrix[4 * 1 + 2], numbers.opening);
  EXPECT_EQ(matrix[4 * 0 + 3], numbers.crossing);
  EXPECT_EQ(matrix[4 * 3 + 1], numbers.ending);
  EXPECT_EQ(matrix[4 * 3 + 2], numbers.gate);
}

}  // namespace
}  // namespace velto
