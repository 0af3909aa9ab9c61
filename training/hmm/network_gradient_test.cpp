#include "training/hmm/network_gradient.h"

#include <gtest/gtest.h>

#include "core/random.h"
#include "hmm/toy_model.h"
#include "simulation/synthetic_species.h"
#include "training/hmm/training_reads.h"

namespace velto {
namespace {

// A read with a start codon, a lost base, an unknown one, a gap of them, and its true states.
struct Example {
  Example() {
    species.add(2, 240, 45);
    const Transcript& t = species.coding[1];
    std::vector<TemplateError> errors = {{100, TemplateError::kDeletion, kUnknownBase},
                                         {130, TemplateError::kUnknown, kUnknownBase},
                                         {140, TemplateError::kSubstitution, 3}};
    for (int i = 150; i < 180; ++i) errors.push_back({i, TemplateError::kUnknown, kUnknownBase});
    read = applyErrors(t, wholeTranscript(t), errors);
    trueStates(read, masks);
    Random random(4);
    for (float& x : parameters) x = static_cast<float>(random.real() - 0.5);
  }

  double likelihood(const Parameters& at, Parameters* gradient = nullptr) {
    const LabelledLattice labelled{{read.bases, {}}, masks, {0.01, 0.01, 0.02}, tables, dropout};
    return NetworkGradient(shape).add(labelled, at, gradient);
  }

  NetworkShape shape{2, 16, {-3, 0, 2}};
  Parameters parameters = Parameters(NetworkLayout(shape).size());
  SyntheticSpecies species;
  SimulatedRead read;
  std::vector<StateMask> masks;
  HmmModel tables = toyModel();
  std::vector<float> dropout = {1.2f, 1, 1, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
};

TEST(NetworkGradient, IsTheSlopeOfTheLikelihood) {
  Example example;
  const NetworkLayout layout(example.shape);
  Parameters gradient(layout.size(), 0.0f);
  const double at = example.likelihood(example.parameters, &gradient);
  EXPECT_LT(at, 0.0);
  std::vector<std::size_t> chosen;
  for (std::size_t i = layout.bias(1); i < layout.size(); ++i) chosen.push_back(i);
  for (std::size_t i = 0; i < layout.bias(1); i += 5) chosen.push_back(i);
  double largest = 0.0;
  for (const std::size_t i : chosen) {
    constexpr float kStep = 5e-4f;  // small enough to pass few kinks of the units
    Parameters moved = example.parameters;
    moved[i] += kStep;
    const double above = example.likelihood(moved);
    moved[i] -= 2 * kStep;
    const double slope = (above - example.likelihood(moved)) / (2.0 * kStep);
    EXPECT_NEAR(gradient[i], slope, 0.04 + 0.02 * std::abs(slope)) << i;
    largest = std::max(largest, std::abs(slope));
  }
  EXPECT_GT(largest, 1.0);
}

TEST(NetworkGradient, AddsToWhatIsThere) {
  Example example;
  Parameters once(example.parameters.size(), 0.0f);
  example.likelihood(example.parameters, &once);
  Parameters twice = once;
  example.likelihood(example.parameters, &twice);
  for (std::size_t i = 0; i < once.size(); ++i) EXPECT_NEAR(twice[i], 2 * once[i], 1e-3f);
}

TEST(NetworkGradient, ImpossibleTruthTeachesNothing) {
  Example example;
  std::fill(example.masks.begin(), example.masks.end(), StateMask{0});
  Parameters gradient(example.parameters.size(), 0.0f);
  EXPECT_EQ(example.likelihood(example.parameters, &gradient), 0.0);
  EXPECT_EQ(gradient, Parameters(gradient.size(), 0.0f));
}

}  // namespace
}  // namespace velto
