#include "simulation/error_model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace velto {
namespace {

TEST(ErrorModel, PresetsAreKnownByNameOnly) {
  EXPECT_FALSE(presetErrors("pacbio").has_value());
  EXPECT_DOUBLE_EQ(presetErrors("est")->rates.deletion, 0.007);
  EXPECT_DOUBLE_EQ(presetErrors("mild")->rates.insertion, 0.0015);
  EXPECT_DOUBLE_EQ(presetErrors("nanopore")->rates.unknown, 0.0);
  EXPECT_DOUBLE_EQ(presetErrors("clean")->rates.substitution, 0.0);
  EXPECT_DOUBLE_EQ(presetErrors("direct-rna")->rates.deletion, 0.041);
}

TEST(ErrorModel, EveryNamedPresetIsValid) {
  EXPECT_EQ(presetNames().size(), 10U);
  for (const std::string& name : presetNames()) EXPECT_TRUE(presetErrors(name)->valid()) << name;
}

TEST(ErrorModel, ScaledIndelsLeaveTheOtherRates) {
  const ErrorRates third = scaleIndels(presetErrors("est")->rates, 1.0 / 3.0);
  EXPECT_DOUBLE_EQ(third.insertion, 0.005 / 3.0);
  EXPECT_DOUBLE_EQ(third.deletion, 0.007 / 3.0);
  EXPECT_DOUBLE_EQ(third.substitution, 0.012);
  EXPECT_DOUBLE_EQ(third.unknown, 0.002);
}

TEST(ErrorModel, RatesMustBeSharesOfOne) {
  EXPECT_TRUE((ErrorRates{0.5, 0.25, 0.25, 0.0}.valid()));
  EXPECT_FALSE((ErrorRates{0.5, 0.25, 0.25, 0.25}.valid()));
  EXPECT_FALSE((ErrorRates{-0.1, 0.0, 0.0, 0.0}.valid()));
  EXPECT_FALSE((ErrorRates{std::nan(""), 0.0, 0.0, 0.0}.valid()));
}

TEST(ErrorModel, EveryMemberOutOfRangeIsInvalid) {
  const double nan = std::nan("");
  const ErrorModel wrong[] = {
      {.rates = {nan, 0.0, 0.0, 0.0}},
      {.insertionExtension = 1.0},
      {.deletionExtension = nan},
      {.insertionCopies = 1.1},
      {.homopolymerSlope = -1.0},
      {.readSpread = -1},
      {.readSpread = std::numeric_limits<int>::max()},
      {.endRise = nan},
      {.stretches = {.share = 1.0}},
      {.stretches = {.meanLength = 0}},
      {.stretches = {.meanLength = std::numeric_limits<int>::max()}},
      {.stretches = {.factor = 0.5}},
      {.quality = {.mean = 94}},
      {.quality = {.deviation = -1.0}},
      {.quality = {.information = nan}},
  };
  EXPECT_TRUE(ErrorModel{}.valid());
  for (const ErrorModel& model : wrong) EXPECT_FALSE(model.valid()) << &model - wrong;
}

TEST(ErrorModel, QualitiesWithoutPresetTellTheSumOfTheRates) {
  EXPECT_EQ(qualitiesOf({0.005, 0.002, 0.003, 0.0}).mean, 20);  // one error in a hundred bases
  EXPECT_EQ(qualitiesOf({0.0, 0.0, 0.0, 0.0}).mean, 40);
  EXPECT_EQ(qualitiesOf({0.5, 0.3, 0.1, 0.1}).mean, 1);
  EXPECT_EQ(qualitiesOf({0.5, 0.3, 0.1, 0.1}).information, 0.0);
}

}  // namespace
}  // namespace velto
