#include "training/hmm/network_gradient.h"

#include <algorithm>
#include <cmath>

#include "core/base_code.h"
#include "hmm/float_math.h"

namespace velto {
namespace {

constexpr float kLog2E = 1.44269504f;

// Units are worked on in parts of this size, which fit into vector registers.
constexpr std::size_t kPart = 16;

// sum of rows into `units`, part by part.
void addRows(const float* parameters, std::span<const std::size_t> rows, std::size_t units,
             const float* base, float* sums) {
  for (std::size_t from = 0; from < units; from += kPart) {
    float part[kPart];
    for (std::size_t u = 0; u < kPart; ++u) part[u] = base[from + u];
    for (const std::size_t row : rows) {
      const float* weights = parameters + row + from;
      for (std::size_t u = 0; u < kPart; ++u) part[u] += weights[u];
    }
    for (std::size_t u = 0; u < kPart; ++u) sums[from + u] = part[u];
  }
}

float dotProduct(const float* a, const float* b, std::size_t units) {
  float part[kPart] = {};
  for (std::size_t from = 0; from < units; from += kPart) {
    for (std::size_t u = 0; u < kPart; ++u) part[u] += a[from + u] * b[from + u];
  }
  float sum = 0.0f;
  for (const float x : part) sum += x;
  return sum;
}

void addTimes(const float* __restrict x, float factor, std::size_t units, float* __restrict sums) {
  for (std::size_t u = 0; u < units; ++u) sums[u] += factor * x[u];
}

// Gradient before dropout and rectifier from that behind them.
void passRelu(const float* __restrict hidden, const float* __restrict dropout, std::size_t units,
              float* __restrict gradient) {
  for (std::size_t u = 0; u < units; ++u) {
    const float open = hidden[u] > 0.0f ? 1.0f : 0.0f;
    gradient[u] *= open * dropout[u];
  }
}

void addTo(std::span<const std::size_t> rows, const float* x, std::size_t units, float* gradient) {
  for (const std::size_t row : rows) {
    for (std::size_t from = 0; from < units; from += kPart) {
      float* __restrict sums = gradient + row + from;
      const float* __restrict part = x + from;
      for (std::size_t u = 0; u < kPart; ++u) sums[u] += part[u];
    }
  }
}

}  // namespace

NetworkGradient::NetworkGradient(const NetworkShape& shape)
    : shape_(shape),
      layout_(shape),
      hiddenGradient_(layout_.units()),
      blockGradient_(layout_.units()) {}

double NetworkGradient::add(const LabelledLattice& labelled, const Parameters& parameters,
                            Parameters* gradient) {
  runNetwork(labelled, parameters);
  HmmModel const& tables = labelled.tables;
  const PathWeights weights = pathWeights(parameters.data() + layout_.pathFactor());
  const FileRates rates(labelled.rates, {});
  emit(tables, weights, labelled.read, rates, context_, factors_, emissions_);
  const LatticeView anyPath{weights, emissions_}, truePaths{weights, emissions_, labelled.masks};
  runForward(anyPath, forward_);
  const double all = logLikelihood(forward_);
  if (gradient != nullptr) runBackward(anyPath, forward_, free_);
  runForward(truePaths, forward_);
  const double known = logLikelihood(forward_);
  if (!std::isfinite(known) || !std::isfinite(all)) return 0.0;
  if (gradient != nullptr) {
    runBackward(truePaths, forward_, true_);
    addPathGradient(*gradient);
    addNetworkGradient(labelled, parameters, *gradient);
  }
  return known - all;
}

void NetworkGradient::listRows(std::size_t i) {
  rows_.clear();
  const std::size_t kmers = std::size_t{1} << (2 * shape_.letters);
  for (std::size_t o = 0; o < shape_.offsets.size(); ++o) {
    const int end = static_cast<int>(i) + shape_.offsets[o];
    if (end < 0 || end >= static_cast<int>(context_.length())) continue;
    const int kmer = context_.kmer(static_cast<std::size_t>(end), shape_.letters);
    if (kmer >= 0) rows_.push_back(layout_.row(o * kmers + static_cast<std::size_t>(kmer)));
  }
}

void NetworkGradient::baseParts(const Parameters& parameters) {
  const std::size_t units = layout_.units();
  base_.resize(context_.blocks.size() * units);
  for (std::size_t b = 0; b < context_.blocks.size(); ++b) {
    float* part = base_.data() + b * units;
    const auto gcClass = static_cast<std::size_t>(context_.blocks[b].gcClass());
    std::copy_n(parameters.data() + layout_.bias(gcClass), units, part);
    for (std::size_t pair = 0; pair < kDinucleotides; ++pair) {
      addTimes(parameters.data() + layout_.pair(pair),
               context_.blocks[b].input(static_cast<int>(pair)), units, part);
    }
  }
}

void NetworkGradient::runNetwork(const LabelledLattice& labelled, const Parameters& parameters) {
  const std::size_t length = labelled.read.codes.size(), units = layout_.units();
  context_.index(labelled.read.codes);
  baseParts(parameters);
  hidden_.resize(length * units);
  factors_.resize(length);
  for (std::size_t i = 0; i < length; ++i) {
    float* hidden = hidden_.data() + i * units;
    listRows(i);
    addRows(parameters.data(), rows_, units, base_.data() + i / kCompositionBlock * units, hidden);
    for (std::size_t u = 0; u < units; ++u) {
      hidden[u] = std::max(hidden[u], 0.0f) * labelled.dropout[u];
    }
    for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
      const float output = parameters[layout_.outputBias() + kind] +
                           dotProduct(parameters.data() + layout_.output(kind), hidden, units);
      factors_[i][kind] = powerOfTwo(std::clamp(kLog2E * output, -kMostLogFactor, kMostLogFactor));
    }
  }
}

// Of a path factor: expected uses of its weight, among the true paths less among all.
void NetworkGradient::addPathGradient(Parameters& gradient) const {
  float* factors = gradient.data() + layout_.pathFactor();
  const auto more = [&](std::size_t i, HmmState s) {
    return true_[i].state[s] - free_[i].state[s];
  };
  for (std::size_t i = 0; i < true_.size(); ++i) {
    factors[kStartFactor + static_cast<int>(context_.starts[i])] += more(i, kS0);
    factors[kStopFactor] += more(i, kE0);
  }
  factors[kCodingFactor] += more(0, kC0) + more(0, kC1) + more(0, kC2);
  factors[kUtr5Factor] += more(0, kU5);
  factors[kUtr3Factor] += more(0, kUn);
}

// Of the logarithm of each factor of base i.
Factors NetworkGradient::outputGradient(const LabelledLattice& labelled, std::size_t i) const {
  const StateRow &known = true_[i].state, &all = free_[i].state;
  Factors slope{};
  if (context_.isInGap(i)) return slope;
  const bool isKnown = isKnownBase(labelled.read.codes[i]);
  const int gcClass = context_.blocks[i / kCompositionBlock].gcClass();
  const EmissionRow& row = labelled.tables.emission(gcClass, context_.fiveMers[i]);
  for (int k = 0; k < 3; ++k) {
    const auto phase = static_cast<std::size_t>(k);
    const float share = isKnown ? errorFreeShare(row, k, factors_[i][phase],
                                                 static_cast<float>(labelled.rates.substitution))
                                : 1.0f;
    slope[phase] = share * (known[kC0 + phase] - all[kC0 + phase]);
  }
  slope[kUtr5] = known[kU5] - all[kU5];
  slope[kUtr3] = (known[kU3] - all[kU3]) + (known[kUn] - all[kUn]);
  slope[kNoncodingRead] = known[kNC] - all[kNC];
  return slope;
}

void NetworkGradient::addNetworkGradient(const LabelledLattice& labelled,
                                         const Parameters& parameters, Parameters& gradient) {
  constexpr float kNegligible = 1e-4f;  // slopes that are not worth their rows
  const std::size_t length = true_.size(), units = layout_.units();
  for (std::size_t i = 0; i < length; ++i) {
    if (i % kCompositionBlock == 0) std::fill(blockGradient_.begin(), blockGradient_.end(), 0.0f);
    const Factors slope = outputGradient(labelled, i);
    float largest = 0.0f;
    for (const float x : slope) largest = std::max(largest, std::abs(x));
    if (largest > kNegligible) {
      const float* hidden = hidden_.data() + i * units;
      std::fill(hiddenGradient_.begin(), hiddenGradient_.end(), 0.0f);
      for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
        gradient[layout_.outputBias() + kind] += slope[kind];
        addTimes(hidden, slope[kind], units, gradient.data() + layout_.output(kind));
        addTimes(parameters.data() + layout_.output(kind), slope[kind], units,
                 hiddenGradient_.data());
      }
      passRelu(hidden, labelled.dropout.data(), units, hiddenGradient_.data());
      addTimes(hiddenGradient_.data(), 1.0f, units, blockGradient_.data());
      listRows(i);
      addTo(rows_, hiddenGradient_.data(), units, gradient.data());
    }
    if ((i + 1) % kCompositionBlock == 0 || i + 1 == length) {
      addBlockGradient(i / kCompositionBlock, gradient);
    }
  }
}

void NetworkGradient::addBlockGradient(std::size_t block, Parameters& gradient) {
  const std::size_t units = layout_.units();
  const auto gcClass = static_cast<std::size_t>(context_.blocks[block].gcClass());
  addTimes(blockGradient_.data(), 1.0f, units, gradient.data() + layout_.bias(gcClass));
  for (std::size_t pair = 0; pair < kDinucleotides; ++pair) {
    addTimes(blockGradient_.data(), context_.blocks[block].input(static_cast<int>(pair)), units,
             gradient.data() + layout_.pair(pair));
  }
}

}  // namespace velto
