#include "hmm/network_kernel.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <string>
#include <vector>

#include "core/random.h"
#include "hmm/toy_model.h"

namespace velto {
namespace {

WindowNetwork randomNetwork(int units, const std::vector<int>& offsets, Random& random) {
  WindowNetwork network = neutralNetwork();
  network.letters = 3;
  network.units = units;
  network.offsets = offsets;
  const auto fillRow = [&random](auto row, int most) {
    for (auto& x : row) {
      const auto drawn = static_cast<int>(random.below(static_cast<std::uint32_t>(2 * most + 1)));
      x = static_cast<typename decltype(row)::value_type>(drawn - most);
    }
  };
  const auto fill = [&](std::vector<std::int16_t>& table, std::size_t size, int most) {
    table.resize(size);
    fillRow(std::span(table), most);
  };
  const auto count = static_cast<std::size_t>(units);
  network.clearRows();
  const int most = kMostRowSum / static_cast<int>(offsets.size());
  for (std::size_t o = 0; o < offsets.size(); ++o) {
    for (int kmer = 0; kmer < network.kmers(); ++kmer) fillRow(network.row(o, kmer), most);
  }
  fill(network.bias, kHmmGcClasses * count, kMostBasePart);
  fill(network.dinucleotide, kDinucleotides * count, 3000);
  fill(network.output, kEmissionKinds * count, kMostOutputSum / units);
  for (float& bias : network.outputBias) bias = static_cast<float>(random.real()) - 0.5f;
  network.outputScale = 3e-8f;
  return network;
}

std::vector<short> randomCodes(int length, Random& random) {
  std::vector<short> codes;
  for (int i = 0; i < length; ++i) codes.push_back(static_cast<short>(random.below(41)) / 10);
  for (short& code : codes) code = code == 4 ? kUnknownBase : code;
  return codes;
}

// Runs `check` once for each set of instructions that this processor has.
template <class Check>
void onEveryTarget(Check check) {
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::SetSupportedTargetsForTest(target);
    check();
  }
  hwy::SetSupportedTargetsForTest(0);
}

// Fewer and more offsets than are added between outputs.
const std::vector<int> kOffsets[] = {{-7, -1, 0, 4, 11},
                                     {-14, -9, -8, -5, -3, -2, -1, 0, 1, 3, 4, 7, 9, 10, 12}};

void expectEqualNetworks(const std::vector<int>& offsets) {
  Random random(11);
  for (const int units : {16, 32, 48, 64, 80, 128}) {
    const WindowNetwork network = randomNetwork(units, offsets, random);
    for (const int length : {1, 2, 7, 31, 32, 33, 127, 128, 129, 300}) {
      const std::vector<short> codes = randomCodes(length, random);
      ReadContext context;
      std::vector<Factors> plain, fast;
      context.index(codes);
      networkFactors(network, context, plain);
      onEveryTarget([&] {
        networkFactorsInVectors(network, context, fast);
        EXPECT_EQ(plain, fast) << units << " units, " << length << " bases";
      });
    }
  }
}

TEST(NetworkKernel, EqualsThePlainNetworkOnEverySetOfInstructions) {
  for (const std::vector<int>& offsets : kOffsets) {
    SCOPED_TRACE(std::to_string(offsets.size()) + " offsets");
    expectEqualNetworks(offsets);
  }
}

}  // namespace
}  // namespace velto
