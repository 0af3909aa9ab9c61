#include "training/hmm/network_parameters.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace velto {
namespace {

constexpr double kMostScale = 3000.0;  // of hidden units: finer steps gain nothing
constexpr double kLeastOutput = 1e-3;  // of the largest sum: outputs of zeros have a scale too

// The decision, fitted afterwards, makes up for the effects of preferences on the odds.
constexpr float kNoncodingPreference = 0.33333333f;
constexpr double kLog2E = 1.4426950408889634;

// The network in whole steps, as large as the bounds of the model allow.
class Steps {
 public:
  Steps(const NetworkShape& shape, const Parameters& p) : shape_(shape), layout_(shape), p_(p) {
    for (std::size_t u = 0; u < layout_.units(); ++u) hidden_.push_back(hiddenScale(u));
    output_ = outputScale();
  }

  void store(WindowNetwork& network) const {
    network.clearRows();
    for (std::size_t o = 0; o < network.offsets.size(); ++o) {
      for (int kmer = 0; kmer < network.kmers(); ++kmer) {
        const std::span<std::int8_t> row = network.row(o, kmer);
        const std::size_t first = layout_.row(rowOf(o, static_cast<std::size_t>(kmer)));
        for (std::size_t u = 0; u < row.size(); ++u) {
          row[u] = inSteps<std::int8_t>(p_[first + u] * hidden_[u]);
        }
      }
    }
    network.bias = inputs(layout_.bias(0), layout_.pair(0));
    network.dinucleotide = inputs(layout_.pair(0), layout_.output(0));
    network.output.clear();
    for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
      for (std::size_t u = 0; u < layout_.units(); ++u) {
        network.output.push_back(inSteps<std::int16_t>(outputOf(kind, u) * output_));
      }
      network.outputBias[kind] = static_cast<float>(kLog2E * p_[layout_.outputBias() + kind]);
    }
    network.outputScale = static_cast<float>(kLog2E / output_);
  }

 private:
  template <class Number>
  static Number inSteps(double x) {
    constexpr double kMost = std::numeric_limits<Number>::max();
    return static_cast<Number>(std::clamp(std::round(x), -kMost, kMost));
  }

  std::size_t rowOf(std::size_t offset, std::size_t kmer) const {
    return (offset << (2 * shape_.letters)) + kmer;
  }

  // Steps per 1.0 of a hidden unit, so that no sum of its rows leaves its bound.
  double hiddenScale(std::size_t u) const {
    const auto offsets = static_cast<double>(shape_.offsets.size());
    const double room = kMostRowSum - offsets / 2.0;  // for rounding
    double sum = 0.0;
    for (std::size_t o = 0; o < shape_.offsets.size(); ++o) sum += largestOf(o, u);
    return std::min(kMostScale, room / sum);
  }

  double largestOf(std::size_t offset, std::size_t u) const {
    float largest = 0.0f;
    for (std::size_t row = rowOf(offset, 0); row < rowOf(offset + 1, 0); ++row) {
      largest = std::max(largest, std::abs(p_[layout_.row(row) + u]));
    }
    return largest;
  }

  // Of a step of the hidden unit.
  double outputOf(std::size_t kind, std::size_t u) const {
    return p_[layout_.output(kind) + u] / hidden_[u];
  }

  double outputScale() const {
    double most = kLeastOutput;
    for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
      double sum = 0.0;
      for (std::size_t u = 0; u < layout_.units(); ++u) {
        const double weight = std::abs(outputOf(kind, u));
        sum += weight;
        most = std::max(most, 2.0 * weight);  // sixteen bits hold half of the largest sum
      }
      most = std::max(most, sum);
    }
    return (kMostOutputSum - static_cast<double>(layout_.units())) / most;
  }

  // Numbers [begin, end) in steps of their hidden units.
  std::vector<std::int16_t> inputs(std::size_t begin, std::size_t end) const {
    std::vector<std::int16_t> steps;
    for (std::size_t i = begin; i < end; ++i) {
      steps.push_back(inSteps<std::int16_t>(p_[i] * hidden_[(i - begin) % layout_.units()]));
    }
    return steps;
  }

  const NetworkShape& shape_;
  const NetworkLayout layout_;
  const Parameters& p_;
  std::vector<double> hidden_;  // [unit] steps per 1.0
  double output_ = 0.0;         // steps per 1.0
};

}  // namespace

PathWeights pathWeights(const float* factors) {
  constexpr double kStart = 0.05, kStop = 0.02;
  constexpr double kCoding = 0.55, kUtr5 = 0.3, kNoncoding = 0.3, kUtr3 = 0.1;
  const auto times = [&](double share, int factor) {
    return static_cast<float>(share * std::exp(static_cast<double>(factors[factor])));
  };
  PathWeights weights;
  for (int context = 0; context < kStartContexts; ++context) {
    weights.start[static_cast<std::size_t>(context)] = times(kStart, kStartFactor + context);
  }
  weights.stop = times(kStop, kStopFactor);
  weights.stayUtr5 = static_cast<float>(1.0 - 0.1 * kStart);
  weights.beginCoding = times(kCoding / 3.0, kCodingFactor);
  weights.beginUtr5 = times(kUtr5, kUtr5Factor);
  weights.beginNoncoding = static_cast<float>(kNoncoding);
  weights.beginUtr3 = times(kUtr3, kUtr3Factor);
  weights.beginStart = static_cast<float>(0.005 / kStart);
  return weights;
}

void storeParameters(const NetworkShape& shape, const Parameters& p, HmmModel& model) {
  WindowNetwork& network = model.network;
  network.letters = shape.letters;
  network.units = shape.units;
  network.offsets = shape.offsets;
  Steps(shape, p).store(network);
  model.weights = pathWeights(p.data() + NetworkLayout(shape).pathFactor());
  model.weights.beginUtr5 *= kUtr5Preference;
  model.weights.beginNoncoding *= kNoncodingPreference;
}

}  // namespace velto
