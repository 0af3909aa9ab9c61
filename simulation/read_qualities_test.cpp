#include "simulation/read_qualities.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <vector>

#include "simulation/read_simulator.h"

namespace velto {
namespace {

using Error = TemplateError;

constexpr std::uint64_t kSeed = 20240611;

// Means over many reads of the values of each base.
std::vector<double> means(int length, const std::vector<Error>& errors, const QualityModel& model) {
  constexpr int kReads = 5000;
  std::vector<double> mean(static_cast<std::size_t>(length), 0.0);
  for (std::uint64_t index = 0; index < kReads; ++index) {
    Random random = Random::split(kSeed, index);
    const std::vector<std::uint8_t> phred = drawQualities(length, errors, model, random);
    EXPECT_EQ(phred.size(), mean.size());
    for (std::size_t i = 0; i < mean.size(); ++i) mean[i] += phred[i] / double{kReads};
  }
  return mean;
}

void expectNear(const std::vector<double>& found, const std::vector<double>& expected) {
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_NEAR(found[i], expected[i], 0.3) << i;
}

TEST(ReadQualities, WithoutInformationAllAreTheMean) {
  Random random(kSeed), untouched(kSeed);
  EXPECT_EQ(drawQualities(3, {{1, Error::kInsertion, 0}}, {21, 5.0, 0.0}, random),
            (std::vector<std::uint8_t>{21, 21, 21}));
  EXPECT_EQ(random.next(), untouched.next());
}

TEST(ReadQualities, WrongBaseIsLowestAndItsNeighboursHalfAsLow) {
  // Information 1: three deviations of 4 below the mean, then 6, 3, 1.5 of them.
  expectNear(means(6, {{2, Error::kSubstitution, 0}}, {40, 4.0, 1.0}), {37, 34, 28, 34, 37, 38.5});
  expectNear(means(6, {{2, Error::kUnknown, -1}}, {40, 4.0, 0.5}), {38.5, 37, 34, 37, 38.5, 39.25});
}

TEST(ReadQualities, InsertedBasesAreLowestThemselves) {
  expectNear(means(6, {{2, Error::kInsertion, 0}, {2, Error::kInsertion, 1}}, {40, 4.0, 1.0}),
             {37, 34, 28, 28, 34, 37});
}

TEST(ReadQualities, BothBasesBesideLostOnesAreLowest) {
  // Template bases 2 and 3 lost: read bases 1 and 2 stand beside the gap.
  expectNear(means(5, {{2, Error::kDeletion, -1}, {3, Error::kDeletion, -1}}, {40, 4.0, 1.0}),
             {34, 28, 28, 34, 37});
}

TEST(ReadQualities, ErrorsBehindIndelsAreFoundAtTheirPlaceInTheRead) {
  // One base more before template base 1, so template base 5 is read base 6.
  expectNear(means(8, {{1, Error::kInsertion, 0}, {5, Error::kSubstitution, 0}}, {40, 4.0, 1.0}),
             {34, 28, 34, 37, 37, 34, 28, 34});
}

TEST(ReadQualities, LossesAtTheEndsAndOfAllBasesAreSurvived) {
  expectNear(means(2, {{0, Error::kDeletion, -1}, {3, Error::kDeletion, -1}}, {40, 4.0, 1.0}),
             {28, 28});
  EXPECT_TRUE(means(0, {{0, Error::kDeletion, -1}}, {40, 4.0, 1.0}).empty());
}

TEST(ReadQualities, ValuesStayWithinWhatFastqWrites) {
  for (const QualityModel& model : {QualityModel{4, 50.0, 1.0}, QualityModel{93, 50.0, 1.0}}) {
    Random random(kSeed);
    for (const std::uint8_t value : drawQualities(1000, {}, model, random)) {
      ASSERT_GE(value, 2);
      ASSERT_LE(value, 93);
    }
  }
}

// Counts of the lesser quality of two neighbours, by that value.
struct NeighbourCounts {
  std::vector<double> atGaps = std::vector<double>(94, 0.0);
  std::vector<double> elsewhere = std::vector<double>(94, 0.0);

  void add(const std::vector<Error>& errors, const std::vector<std::uint8_t>& phred) {
    std::vector<bool> gap(phred.size() + 1);
    int shift = 0;
    for (const Error& e : errors) {
      if (e.kind == Error::kDeletion) gap[static_cast<std::size_t>(e.offset + shift--)] = true;
      if (e.kind == Error::kInsertion) ++shift;
    }
    for (std::size_t i = 1; i < phred.size(); ++i) {
      (gap[i] ? atGaps : elsewhere)[std::min(phred[i - 1], phred[i])] += 1.0;
    }
  }

  // Probability that a value at a gap is below one elsewhere, ties counting half.
  double areaUnderCurve() const {
    double won = 0.0, gaps = 0.0, others = 0.0;
    for (std::size_t q = atGaps.size(); q-- > 0;) {
      won += atGaps[q] * (others + elsewhere[q] / 2.0);
      gaps += atGaps[q];
      others += elsewhere[q];
    }
    return won / (gaps * others);
  }
};

double areaUnderCurve(const ErrorModel& model) {
  Random bases(kSeed);
  Transcript t;
  for (int i = 0; i < 1000; ++i) t.bases.push_back(static_cast<short>(bases.below(4)));
  NeighbourCounts counts;
  for (std::uint64_t index = 0; index < 2000; ++index) {
    Random random = Random::split(kSeed, index);
    const std::vector<Error> errors = drawErrors(t, wholeTranscript(t), model, random);
    const int length = applyErrors(t, wholeTranscript(t), errors).length();
    counts.add(errors, drawQualities(length, errors, model.quality, random));
  }
  return counts.areaUnderCurve();
}

TEST(ReadQualities, PresetsTellAsMuchAboutGapsAsRealReads) {
  EXPECT_NEAR(areaUnderCurve(*presetErrors("hifi")), 0.94, 0.02);
  EXPECT_NEAR(areaUnderCurve(*presetErrors("nanopore-recent")), 0.94, 0.02);
  EXPECT_NEAR(areaUnderCurve(*presetErrors("nanopore-r9")), 0.74, 0.02);
  EXPECT_NEAR(areaUnderCurve(*presetErrors("direct-rna")), 0.68, 0.02);
}

}  // namespace
}  // namespace velto
