#include "training/hmm/count_tables.h"

#include <gtest/gtest.h>

#include "simulation/synthetic_species.h"

namespace velto {
namespace {

Transcript transcriptOf(const std::string& letters, int cdsStart = -1, int cdsStop = -1) {
  Transcript t;
  t.bases = baseCodes(letters);
  t.cdsStart = cdsStart;
  t.cdsStop = cdsStop;
  return t;
}

TEST(CountTables, EveryPlaceHasItsKind) {
  const Transcript t = transcriptOf("CCATGGCATAAGG", 2, 10);
  const std::vector<int> expected = {kUtr5, kUtr5, -1, -1, -1, 0, 1, 2, -1, -1, -1, kUtr3, kUtr3};
  for (int i = 0; i < t.length(); ++i) {
    EXPECT_EQ(emissionKindAt(t, i), expected[static_cast<std::size_t>(i)]) << i;
  }
  EXPECT_EQ(emissionKindAt(transcriptOf("ACGT"), 2), kNoncodingRead);
}

TEST(CountTables, NothingCountedIsEven) {
  HmmModel model;
  TranscriptCounts().fillTables(model);
  EXPECT_FLOAT_EQ(model.emission(0, 0)[kPhase1], 0.25f);
  EXPECT_FLOAT_EQ(model.stopShare[0], 0.333333f);
  EXPECT_FLOAT_EQ(model.kozak[4][2], 1.0f);
}

// 4001 A in a row give 3997 5-mers AAAAA, all of the lowest bin of G and C, which weighs
// exp(-(0.35 - 0.24)^2 / 2 / 0.03^2) = 0.001206 in the lowest class and nothing in the others.
TEST(CountTables, LongContextsArePulledToShorterOnes) {
  TranscriptCounts counts;
  counts.add(transcriptOf(std::string(4001, 'A')));
  HmmModel model;
  counts.fillTables(model);
  const double n = 3997;
  double p = 0.25, pooled = 1.0;
  for (int order = 0; order < 5; ++order) p = (n + 300 * p) / (n + 300);
  pooled = p;
  EXPECT_NEAR(model.emission(3, 0)[kNoncodingRead], pooled, 1e-4);
  EXPECT_NEAR(model.emission(3, 1)[kNoncodingRead], (1 - pooled) / 3, 1e-4);
  EXPECT_NEAR(model.emission(3, 4)[kNoncodingRead], (n + 75) / (n + 300), 1e-4)
      << "contexts that were never seen have the probability without a context";
  EXPECT_FLOAT_EQ(model.emission(3, 0)[kUtr5], 0.25f);
}

TEST(CountTables, UnknownBasesBreakContexts) {
  TranscriptCounts with, without;
  with.add(transcriptOf("AAAANAAAA"));
  HmmModel a, b;
  with.fillTables(a);
  without.fillTables(b);
  EXPECT_EQ(a.emissions, b.emissions);
}

TEST(CountTables, RowsAreProbabilities) {
  SyntheticSpecies species;
  species.add(20, 900, 45);
  TranscriptCounts counts;
  for (const Transcript& t : species.coding) counts.add(t);
  for (const Transcript& t : species.noncoding) counts.add(t);
  HmmModel model;
  counts.fillTables(model);
  for (int g = 0; g < kHmmGcClasses; ++g) {
    for (int context = 0; context < kFiveMers; context += 4) {
      for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
        float sum = 0.0f;
        for (int b = 0; b < 4; ++b) sum += model.emission(g, context + b)[kind];
        ASSERT_NEAR(sum, 1.0f, 4e-6f) << g << " " << context << " " << kind;
      }
    }
  }
  // The species has no C in third places.
  EXPECT_LT(model.emission(1, 3)[kPhase2], 0.1f);
  EXPECT_GT(model.emission(1, 3)[kPhase1], 0.1f);
}

TEST(CountTables, StopCodonsAreCountedOneByOne) {
  TranscriptCounts counts;
  for (int i = 0; i < 7; ++i) counts.add(transcriptOf("ATGTAA", 0, 5));
  for (int i = 0; i < 3; ++i) counts.add(transcriptOf("ATGTAG", 0, 5));
  for (int i = 0; i < 17; ++i) counts.add(transcriptOf("ATGTGA", 0, 5));
  HmmModel model;
  counts.fillTables(model);
  EXPECT_NEAR(model.stopShare[0], 8.0 / 30, 1e-6);
  EXPECT_NEAR(model.stopShare[1], 4.0 / 30, 1e-6);
  EXPECT_NEAR(model.stopShare[2], 18.0 / 30, 1e-6);
}

TEST(CountTables, KozakPlacesAreRatiosToTheirSurroundings) {
  TranscriptCounts counts;
  for (int i = 0; i < 50; ++i) counts.add(transcriptOf("TTTTTTGTTATGCCCCTAA", 9, 18));
  HmmModel model;
  counts.fillTables(model);
  // Position -3: always G, though 5' UTRs have one G in five counted bases (the last five of nine).
  const double share = 55.0 / 70, expected = (50 + 5.0) / (5 * 50 + 20.0);
  EXPECT_NEAR(model.kozak[6][2], std::min(4.0, share / expected), 1e-5);
  EXPECT_NEAR(model.kozak[6][0], (5.0 / 70) / (5.0 / 270), 1e-5);
}

TEST(CountTables, CountsAddUp) {
  SyntheticSpecies species;
  species.add(4, 600, 45);
  TranscriptCounts all, first, second;
  for (const Transcript& t : species.coding) all.add(t);
  first.add(species.coding[0]);
  for (std::size_t i = 1; i < 4; ++i) second.add(species.coding[i]);
  first += second;
  HmmModel a, b;
  all.fillTables(a);
  first.fillTables(b);
  EXPECT_EQ(a.emissions, b.emissions);
  EXPECT_EQ(a.kozak, b.kozak);
  EXPECT_EQ(a.stopShare, b.stopShare);
}

}  // namespace
}  // namespace velto
