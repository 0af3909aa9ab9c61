#include "simulation/error_model.h"

#include <algorithm>
#include <cmath>

namespace velto {
namespace {

// An extension this near to 1 would add bases without end.
constexpr double kLargestExtension = 0.9;
constexpr int kLargestSpread = 16;
constexpr int kLongestStretch = 1000000;  // mean, in bases
constexpr int kLargestQuality = 93;       // what FASTQ can write

struct Preset {
  std::string_view name;
  ErrorModel model;
};

constexpr ErrorModel even(ErrorRates rates) {
  ErrorModel model;
  model.rates = rates;
  return model;
}

// The uneven presets follow alignments of public reads; docs/simulate.md compares.
constexpr Preset kPresets[] = {
    {"clean", even({0.0, 0.0, 0.0, 0.0})},
    {"est", even({0.012, 0.005, 0.007, 0.002})},
    {"mild", even({0.008, 0.0015, 0.0025, 0.002})},
    {"nanopore", even({0.015, 0.010, 0.020, 0.0})},
    {"sanger-est",
     {.rates = {0.0063, 0.0041, 0.0025, 0.0},
      .insertionExtension = 0.08,
      .deletionExtension = 0.04,
      .insertionCopies = 0.5,
      .homopolymerSlope = 0.4,
      .readSpread = 3,
      .endRise = 19.0,
      .stretches = {.share = 0.1, .meanLength = 40, .factor = 10.0},
      .quality = {.mean = 40, .deviation = 8.0, .information = 0.0}}},
    {"ccs",
     {.rates = {0.0041, 0.0058, 0.0160, 0.0},
      .insertionExtension = 0.21,
      .deletionExtension = 0.06,
      .insertionCopies = 0.5,
      .homopolymerSlope = 0.8,
      .readSpread = 1,
      .stretches = {.share = 0.05, .meanLength = 20, .factor = 8.0},
      .quality = {.mean = 30, .deviation = 7.0, .information = 0.0}}},
    {"hifi",
     {.rates = {0.0004, 0.0012, 0.0008, 0.0},
      .insertionExtension = 0.08,
      .deletionExtension = 0.04,
      .insertionCopies = 0.5,
      .homopolymerSlope = 3.0,
      .readSpread = 2,
      .stretches = {.share = 0.02, .meanLength = 15, .factor = 30.0},
      .quality = {.mean = 40, .deviation = 7.0, .information = 0.62}}},
    {"nanopore-recent",
     {.rates = {0.0061, 0.0024, 0.0027, 0.0},
      .insertionExtension = 0.28,
      .deletionExtension = 0.32,
      .insertionCopies = 0.3,
      .homopolymerSlope = 0.5,
      .readSpread = 3,
      .stretches = {.share = 0.04, .meanLength = 20, .factor = 25.0},
      .quality = {.mean = 22, .deviation = 6.0, .information = 0.64}}},
    {"nanopore-r9",
     {.rates = {0.037, 0.015, 0.024, 0.0},
      .insertionExtension = 0.33,
      .deletionExtension = 0.36,
      .insertionCopies = 0.3,
      .homopolymerSlope = 0.85,
      .readSpread = 1,
      .stretches = {.share = 0.1, .meanLength = 20, .factor = 4.0},
      .quality = {.mean = 14, .deviation = 4.0, .information = 0.33}}},
    {"direct-rna",
     {.rates = {0.045, 0.025, 0.041, 0.0},
      .insertionExtension = 0.34,
      .deletionExtension = 0.36,
      .insertionCopies = 0.3,
      .homopolymerSlope = 0.7,
      .readSpread = 1,
      .stretches = {.share = 0.1, .meanLength = 20, .factor = 4.5},
      .quality = {.mean = 11, .deviation = 3.5, .information = 0.26}}},
};

bool isShare(double value) { return value >= 0.0 && value <= 1.0; }

bool isExtension(double value) { return value >= 0.0 && value <= kLargestExtension; }

bool isFactor(double value, double least) { return value >= least && value <= 1000.0; }

}  // namespace

bool ErrorRates::valid() const {
  return substitution >= 0.0 && insertion >= 0.0 && deletion >= 0.0 && unknown >= 0.0 &&
         sum() <= 1.0;
}

ErrorRates scaleIndels(ErrorRates rates, double factor) {
  rates.insertion *= factor;
  rates.deletion *= factor;
  return rates;
}

bool ErrorModel::valid() const {
  const bool lengths = isExtension(insertionExtension) && isExtension(deletionExtension);
  const bool places = isShare(insertionCopies) && isFactor(homopolymerSlope, 0.0) &&
                      readSpread >= 0 && readSpread <= kLargestSpread && isFactor(endRise, 0.0);
  const bool crowds = stretches.share >= 0.0 && stretches.share < 1.0 &&
                      stretches.meanLength >= 1 && stretches.meanLength <= kLongestStretch &&
                      isFactor(stretches.factor, 1.0);
  const bool qualities = quality.mean >= 0 && quality.mean <= kLargestQuality &&
                         isFactor(quality.deviation, 0.0) && isShare(quality.information);
  return rates.valid() && lengths && places && crowds && qualities;
}

std::optional<ErrorModel> presetErrors(std::string_view name) {
  for (const Preset& preset : kPresets) {
    if (preset.name == name) return preset.model;
  }
  return std::nullopt;
}

QualityModel qualitiesOf(const ErrorRates& rates) {
  constexpr double kLeastError = 1e-4, kDeviation = 5.0;
  const double phred = -10.0 * std::log10(std::max(rates.sum(), kLeastError));
  return {.mean = std::max(1, static_cast<int>(std::lround(phred))), .deviation = kDeviation};
}

std::vector<std::string> presetNames() {
  std::vector<std::string> names;
  for (const Preset& preset : kPresets) names.emplace_back(preset.name);
  return names;
}

}  // namespace velto
