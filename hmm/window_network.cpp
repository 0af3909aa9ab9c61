#include "hmm/window_network.h"

#include <algorithm>

#include "hmm/float_math.h"

namespace velto {
namespace {

using Units = std::array<std::int16_t, kMostUnits>;

std::int16_t roundedAndCut(float value) {
  const auto rounded = static_cast<int>(value < 0.0f ? value - 0.5f : value + 0.5f);
  return static_cast<std::int16_t>(std::clamp(rounded, -kMostBasePart, kMostBasePart));
}

// Adds the rows of the k-mers around base i. No sum leaves 16 bits: see kMostRowSum, kMostBasePart.
void addRows(const WindowNetwork& network, const ReadContext& context, int i, Units& units) {
  const auto count = static_cast<std::size_t>(network.units);
  for (std::size_t o = 0; o < network.offsets.size(); ++o) {
    const int end = i + network.offsets[o];
    if (end < 0 || end >= static_cast<int>(context.length())) continue;
    const int kmer = context.kmer(static_cast<std::size_t>(end), network.letters);
    if (kmer < 0) continue;
    const std::int8_t* row = network.row(o, kmer);
    for (std::size_t u = 0; u < count; ++u) {
      units[u] = static_cast<std::int16_t>(units[u] + row[u]);
    }
  }
}

float factor(const WindowNetwork& network, std::size_t kind, const Units& units) {
  const auto count = static_cast<std::size_t>(network.units);
  const std::int16_t* weights = network.output.data() + kind * count;
  int sum = 0;
  for (std::size_t u = 0; u < count; ++u) sum += weights[u] * std::max<int>(0, units[u]);
  const float logFactor = network.outputBias[kind] + network.outputScale * static_cast<float>(sum);
  return powerOfTwo(std::clamp(logFactor, -kMostLogFactor, kMostLogFactor));
}

}  // namespace

void basePart(const WindowNetwork& network, const Composition& composition,
              std::span<std::int16_t> units) {
  const auto count = static_cast<std::size_t>(network.units);
  const std::int16_t* bias =
      network.bias.data() + static_cast<std::size_t>(composition.gcClass()) * count;
  std::array<float, kMostUnits> sums;
  for (std::size_t u = 0; u < count; ++u) sums[u] = static_cast<float>(bias[u]);
  for (int pair = 0; pair < kDinucleotides; ++pair) {
    const float input = composition.input(pair);
    const std::int16_t* weights =
        network.dinucleotide.data() + static_cast<std::size_t>(pair) * count;
    for (std::size_t u = 0; u < count; ++u) sums[u] += static_cast<float>(weights[u]) * input;
  }
  for (std::size_t u = 0; u < count; ++u) units[u] = roundedAndCut(sums[u]);
}

void networkFactors(const WindowNetwork& network, const ReadContext& context,
                    std::vector<Factors>& factors) {
  factors.resize(context.length());
  Units base, units;
  for (std::size_t i = 0; i < context.length(); ++i) {
    if (i % kCompositionBlock == 0) basePart(network, context.blocks[i / kCompositionBlock], base);
    units = base;
    addRows(network, context, static_cast<int>(i), units);
    factors[i].fill(1.0f);
    for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
      factors[i][kind] = factor(network, kind, units);
    }
  }
}

}  // namespace velto
