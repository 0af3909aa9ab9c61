#include "training/hmm/training_reads.h"

#include <gtest/gtest.h>

#include <utility>

#include "core/base_code.h"
#include "core/letter_codes.h"
#include "simulation/synthetic_species.h"

namespace velto {
namespace {

constexpr StateMask bit(int state) { return static_cast<StateMask>(1U << state); }

Transcript mrna() {
  Transcript t;
  t.bases = baseCodes("CCATGGCAGCAGCAGCAGCAGCAGCAGCATAAGG");
  t.cdsStart = 2;
  t.cdsStop = 31;
  return t;
}

std::vector<StateMask> masksOf(const SimulatedRead& read) {
  std::vector<StateMask> masks;
  trueStates(read, masks);
  return masks;
}

TEST(TrainingReads, ErrorFreeReadsAreInOneStatePerBase) {
  const Transcript t = mrna();
  const auto masks = masksOf(applyErrors(t, wholeTranscript(t), {}));
  EXPECT_EQ(masks[1], bit(kU5));
  EXPECT_EQ(masks[2], bit(kS0));
  EXPECT_EQ(masks[4], bit(kS2));
  EXPECT_EQ(masks[5], bit(kC0));
  EXPECT_EQ(masks[6], bit(kC1));
  EXPECT_EQ(masks[28], bit(kC2));
  EXPECT_EQ(masks[29], bit(kE0));
  EXPECT_EQ(masks[31], bit(kE2));
  EXPECT_EQ(masks[32], bit(kU3));
}

TEST(TrainingReads, RegionsCutByTheReadBeginAndEndInAPhase) {
  const Transcript t = mrna();
  const auto masks = masksOf(applyErrors(t, {3, 28}, {}));  // TG... of the start to TA of the stop
  EXPECT_EQ(masks.front(), bit(kC1));
  EXPECT_EQ(masks.back(), bit(kC1));
}

TEST(TrainingReads, BasesNearAShiftAreFree) {
  const Transcript t = mrna();
  const auto masks =
      masksOf(applyErrors(t, wholeTranscript(t), {{16, TemplateError::kDeletion, kUnknownBase}}));
  for (int i = 0; i < 33; ++i) {
    EXPECT_EQ(masks[static_cast<std::size_t>(i)] == kAnyState, i >= 16 - 12 && i <= 16 + 12) << i;
  }
}

TEST(TrainingReads, MisreadStartCodonsAreFree) {
  const Transcript t = mrna();
  const auto one =
      masksOf(applyErrors(t, wholeTranscript(t), {{2, TemplateError::kSubstitution, 3}}));
  EXPECT_EQ(one[2], bit(kS0)) << "the model allows one wrong base";
  const auto two = masksOf(
      applyErrors(t, wholeTranscript(t),
                  {{2, TemplateError::kSubstitution, 3}, {3, TemplateError::kSubstitution, 3}}));
  EXPECT_EQ(two[2], kAnyState);
  const auto unknown =
      masksOf(applyErrors(t, wholeTranscript(t), {{30, TemplateError::kUnknown, kUnknownBase}}));
  EXPECT_EQ(unknown[30], kAnyState);
  EXPECT_EQ(unknown[2], bit(kS0));
}

TEST(TrainingReads, ReadsWithoutCodingBasesAreOfOneKind) {
  const Transcript t = mrna();
  EXPECT_EQ(masksOf(applyErrors(t, {32, 2}, {})), std::vector<StateMask>(2, bit(kUn)));
  Transcript other = mrna();
  other.cdsStart = other.cdsStop = -1;
  EXPECT_EQ(masksOf(applyErrors(other, {0, 3}, {})), std::vector<StateMask>(3, bit(kNC)));
}

// ---- Drawing

struct Species {
  Species() { made.add(30, 2000, 45), split = splitFolds(made.coding, made.noncoding); }
  std::vector<const TranscriptPool*> folds() const {
    std::vector<const TranscriptPool*> folds;
    for (const TranscriptPool& pool : split.training) folds.push_back(&pool);
    return folds;
  }
  SyntheticSpecies made;
  FoldSplit split;
};

TEST(TrainingReads, KindsAreDrawnByTheirShares) {
  const Species species;
  const ReadDrawer drawer(species.folds(), standardMixture());
  int coding = 0, antisense = 0, utr3 = 0;
  constexpr int kReads = 2000;
  for (int k = 0; k < kReads; ++k) {
    const TrainingRead drawn = drawer.draw(1, static_cast<std::uint64_t>(k));
    if (drawn.antisense) {
      ++antisense;
    } else if (drawn.read.isCoding()) {
      ++coding;
      EXPECT_GE(drawn.read.stop - drawn.read.start, 50);
    } else {
      utr3 += drawn.read.source->isCoding();
    }
  }
  EXPECT_NEAR(coding, 0.51 * kReads, 80);
  EXPECT_NEAR(antisense, 0.08 * kReads, 50);
  EXPECT_NEAR(utr3, 0.08 * kReads, 40);
}

TEST(TrainingReads, AntisenseReadsAreTheOtherStrandAndCodeNowhere) {
  const Species species;
  ReadMixture mixture = standardMixture();
  mixture.profiles = {{ErrorModel{}, 1.0}};
  mixture.antisense = 1.0;
  mixture.utr3 = mixture.coding = 0.0;
  const TrainingRead drawn = ReadDrawer(species.folds(), mixture).draw(1, 1);
  ASSERT_TRUE(drawn.antisense);
  const SimulatedRead& read = drawn.read;
  const auto first = read.source->bases.begin() + read.fragment.start;
  std::vector<short> sense(first, first + read.fragment.length);
  reverseComplement(sense);
  EXPECT_EQ(read.bases, sense);
  std::vector<StateMask> masks;
  trueStates(drawn, masks);
  EXPECT_EQ(masks, std::vector<StateMask>(read.bases.size(), bit(kNC)));
}

TEST(TrainingReads, AReadNamesTheFoldOfItsTranscript) {
  const Species species;
  const ReadDrawer drawer(species.folds(), standardMixture());
  for (std::uint64_t k = 0; k < 100; ++k) {
    const TrainingRead drawn = drawer.draw(1, k);
    const TranscriptPool& pool = species.split.training[drawn.fold];
    const auto& from = drawn.read.source->isCoding() ? pool.coding : pool.noncoding;
    EXPECT_NE(std::find(from.begin(), from.end(), drawn.read.source), from.end());
  }
}

TEST(TrainingReads, ShareOfTruncatedReadsIsThatOfFragmentsBehindTheStartCodon) {
  const Species species;
  ReadMixture mixture = standardMixture();
  mixture.wholeShare = 1.0;
  EXPECT_EQ(ReadDrawer(species.folds(), mixture).truncatedShare(1, 500), 0.01);
  mixture.antisense = mixture.wholeShare = 0.0;
  const ReadDrawer drawer(species.folds(), mixture);
  double coding = 0, behind = 0;
  for (std::uint64_t k = 0; k < 500; ++k) {
    const SimulatedRead read = drawer.draw(1, k).read;
    coding += read.isCoding();
    behind += read.isCoding() && read.fragment.start > read.source->cdsStart;
  }
  EXPECT_NEAR(drawer.truncatedShare(1, 500), behind / coding, 1e-4);
  EXPECT_GT(behind, 10);
  std::swap(mixture.antisense, mixture.coding);
  EXPECT_EQ(ReadDrawer(species.folds(), mixture).truncatedShare(1, 500), 0.01);
}

TEST(TrainingReads, DrawsDependOnSeedAndNumberAlone) {
  const Species species;
  const ReadDrawer drawer(species.folds(), standardMixture());
  const TrainingRead late = drawer.draw(5, 70);
  drawer.draw(5, 3);
  EXPECT_EQ(drawer.draw(5, 70).read.bases, late.read.bases);
  EXPECT_NE(drawer.draw(6, 70).read.bases, late.read.bases);
}

TEST(TrainingReads, RatesOfTheModelHaveFloors) {
  const Species species;
  ReadMixture mixture = standardMixture();
  mixture.profiles = {{ErrorModel{}, 1.0}};
  const TrainingRead drawn = ReadDrawer(species.folds(), mixture).draw(1, 1);
  EXPECT_EQ(drawn.rates.insertion, 5e-5);
  EXPECT_EQ(drawn.rates.deletion, 5e-5);
  EXPECT_EQ(drawn.rates.substitution, 0.001);
}

TEST(TrainingReads, WholeTranscriptsAreDrawnWhereWanted) {
  const Species species;
  ReadMixture mixture = standardMixture();
  mixture.coding = 1.0;
  mixture.antisense = mixture.utr3 = 0.0;
  mixture.wholeShare = 1.0;
  EXPECT_EQ(ReadDrawer(species.folds(), mixture).draw(1, 1).read.fragment.length, 2000);
  mixture.longestWhole = 1999;
  EXPECT_LE(ReadDrawer(species.folds(), mixture).draw(1, 1).read.fragment.length, 800);
}

}  // namespace
}  // namespace velto
