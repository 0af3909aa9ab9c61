#include "hmm/window_network.h"

#include <gtest/gtest.h>

#include <cmath>

#include "hmm/toy_model.h"

namespace velto {
namespace {

std::vector<Factors> factorsOf(const WindowNetwork& network, const std::vector<short>& codes) {
  ReadContext context;
  std::vector<Factors> factors;
  context.index(codes);
  networkFactors(network, context, factors);
  return factors;
}

TEST(WindowNetwork, SaysNothingWithoutWeights) {
  for (const Factors& factors : factorsOf(neutralNetwork(), codesOf("ATGNCA"))) {
    for (const float factor : factors) EXPECT_EQ(factor, 1.0f);
  }
}

// Unit 0 sees the base itself (T: 100) and the next one (G: 50); output 2 adds 0.01 a step and 0.5.
TEST(WindowNetwork, AddsTheRowsAroundABase) {
  WindowNetwork network = neutralNetwork();
  network.offsets = {0, 1};
  network.clearRows();
  network.row(0, 1)[0] = 100;
  network.row(1, 2)[0] = 50;
  network.output[2 * 16] = 10;
  network.outputBias[2] = 0.5f;
  const auto factors = factorsOf(network, codesOf("TGT"));
  EXPECT_NEAR(factors[0][2], std::exp2(0.5 + 0.01 * 150), 1e-5);
  EXPECT_NEAR(factors[1][2], std::exp2(0.5), 1e-6);
  EXPECT_NEAR(factors[2][2], std::exp2(0.5 + 0.01 * 100), 1e-5);
  EXPECT_EQ(factors[0][0], 1.0f);
}

TEST(WindowNetwork, UnitsBelowZeroAreSilent) {
  WindowNetwork network = neutralNetwork();
  network.row(0, 1)[3] = -100;
  network.output[3] = 10;
  EXPECT_EQ(factorsOf(network, codesOf("T"))[0][0], 1.0f);
}

TEST(WindowNetwork, CompositionMovesTheUnitsOfABlock) {
  WindowNetwork network = neutralNetwork();
  network.bias[1 * 16] = 20;  // reads of half G and C are of class 2, of none of class 0
  network.bias[0] = 7;
  network.dinucleotide[0] = 10;  // AA, all pairs: input 7.5
  network.output[0] = 1;
  const auto factors = factorsOf(network, codesOf("AAAAA"));
  EXPECT_NEAR(factors[0][0], std::exp2(0.001 * (7 + 75)), 1e-6);
}

TEST(WindowNetwork, FactorsAreCut) {
  WindowNetwork network = neutralNetwork();
  network.row(0, 0)[0] = 100;
  network.output[0] = 30000;
  network.output[16] = -30000;
  network.outputScale = 1.0f;
  const auto factors = factorsOf(network, codesOf("A"));
  EXPECT_EQ(factors[0][0], std::exp2(14.0f));
  EXPECT_EQ(factors[0][1], std::exp2(-14.0f));
}

}  // namespace
}  // namespace velto
