#include "training/hmm/network_parameters.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/random.h"
#include "hmm/hmm_model_file.h"
#include "hmm/read_lattice.h"
#include "hmm/toy_model.h"

namespace velto {
namespace {

Parameters randomParameters(const NetworkShape& shape, double spread) {
  Random random(8);
  Parameters p(NetworkLayout(shape).size());
  for (float& x : p) x = static_cast<float>(spread * (random.real() - 0.5));
  return p;
}

// Factor of one output at base i, straight from the parameters.
double factorOf(const NetworkShape& shape, const Parameters& p, const std::vector<short>& codes,
                int i, std::size_t kind) {
  const NetworkLayout layout(shape);
  ReadContext context;
  context.index(codes);
  double output = p[layout.outputBias() + kind];
  for (std::size_t u = 0; u < layout.units(); ++u) {
    double unit = p[layout.bias(static_cast<std::size_t>(context.blocks[0].gcClass())) + u];
    for (int pair = 0; pair < kDinucleotides; ++pair) {
      unit += p[layout.pair(static_cast<std::size_t>(pair)) + u] * context.blocks[0].input(pair);
    }
    for (std::size_t o = 0; o < shape.offsets.size(); ++o) {
      const int end = i + shape.offsets[o];
      if (end < 0 || end >= static_cast<int>(codes.size())) continue;
      const int kmer = context.kmer(static_cast<std::size_t>(end), shape.letters);
      if (kmer < 0) continue;
      const std::size_t index = (o << (2 * shape.letters)) + static_cast<std::size_t>(kmer);
      unit += p[layout.row(index) + u];
    }
    output += p[layout.output(kind) + u] * std::max(0.0, unit);
  }
  return std::exp(output);
}

TEST(NetworkParameters, StoredNetworkGivesTheSameFactors) {
  const NetworkShape shape{2, 32, {-2, 0, 1}};
  const Parameters p = randomParameters(shape, 1.0);
  HmmModel model = toyModel();
  storeParameters(shape, p, model);
  const auto codes = codesOf("ATGCNATTGCA");
  ReadLattice lattice;
  lattice.run(model, {}, {codes, {}}, true);
  for (int i = 0; i < static_cast<int>(codes.size()); ++i) {
    for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
      const double expected = factorOf(shape, p, codes, i, kind);
      EXPECT_NEAR(lattice.factors[static_cast<std::size_t>(i)][kind] / expected, 1.0, 0.04);
    }
  }
}

TEST(NetworkParameters, HugeWeightsKeepTheBoundsOfTheFile) {
  const NetworkShape shape{3, 16, {-4, -2, 0, 2, 4}};
  HmmModel model = toyModel();
  storeParameters(shape, randomParameters(shape, 500.0), model);
  model.network.outputBias.fill(0.0f);
  model.weights = toyModel().weights;
  HmmModel read;
  EXPECT_EQ(readHmmModel(hmmModelText(model), read).reason, "");
}

TEST(NetworkParameters, PathFactorsMultiplyTheirWeights) {
  const float none[kPathFactors] = {}, some[kPathFactors] = {1, 1.5f, 0, 2, 3, 4, 5};
  const PathWeights plain = pathWeights(none), scaled = pathWeights(some);
  EXPECT_NEAR(scaled.start[kOpenFrame] / plain.start[kOpenFrame], std::exp(1.0), 1e-5);
  EXPECT_NEAR(scaled.start[kAfterStop] / plain.start[kAfterStop], std::exp(1.5), 1e-5);
  EXPECT_EQ(scaled.start[kAfterStart], plain.start[kAfterStart]);
  EXPECT_NEAR(scaled.stop / plain.stop, std::exp(2.0), 1e-5);
  EXPECT_NEAR(scaled.beginUtr5 / plain.beginUtr5, std::exp(3.0), 1e-4);
  EXPECT_NEAR(scaled.beginCoding / plain.beginCoding, std::exp(4.0), 1e-4);
  EXPECT_NEAR(scaled.beginUtr3 / plain.beginUtr3, std::exp(5.0), 1e-3);
  EXPECT_EQ(scaled.beginNoncoding, plain.beginNoncoding);
  EXPECT_EQ(scaled.stayUtr5, plain.stayUtr5);
}

}  // namespace
}  // namespace velto
