#include "training/hmm/network_parameters.h"

#include <algorithm>
#include <cmath>

namespace velto {
namespace {

constexpr double kMostScale = 3000.0;  // of hidden units: finer steps gain nothing

// Reads that begin before a start codon are preferred in decoding, which finds more start codons
// exactly; the decision, fitted afterwards, makes up for its effect on the odds.
constexpr float kUtr5Preference = 3.3333333f;
constexpr float kNoncodingPreference = 0.33333333f;
constexpr double kLog2E = 1.4426950408889634;

// Steps per 1.0 of the hidden units, so that no unit's sum over the offsets leaves its bound.
double hiddenScale(const NetworkShape& shape, const Parameters& p) {
  const NetworkLayout layout(shape);
  const std::size_t kmers = std::size_t{1} << (2 * shape.letters);
  double most = 0.0;
  for (std::size_t u = 0; u < layout.units(); ++u) {
    double sum = 0.0;
    for (std::size_t o = 0; o < shape.offsets.size(); ++o) {
      double largest = 0.0;
      for (std::size_t k = 0; k < kmers; ++k) {
        largest =
            std::max(largest, std::abs(static_cast<double>(p[layout.row(o * kmers + k) + u])));
      }
      sum += largest;
    }
    most = std::max(most, sum);
  }
  const double room = kMostRowSum - static_cast<double>(shape.offsets.size());  // for rounding
  return most > 0.0 ? std::min(kMostScale, room / most) : kMostScale;
}

double outputScale(const NetworkLayout& layout, const Parameters& p) {
  double most = 0.0;
  for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
    double sum = 0.0;
    for (std::size_t u = 0; u < layout.units(); ++u) {
      sum += std::abs(static_cast<double>(p[layout.output(kind) + u]));
    }
    most = std::max(most, sum);
  }
  const double room = kMostOutputSum - static_cast<double>(layout.units());
  return std::min(20000.0, room / std::max(most, 1e-3));
}

std::int16_t inSteps(float x, double scale) {
  const double step = std::round(static_cast<double>(x) * scale);
  return static_cast<std::int16_t>(std::clamp(step, -32767.0, 32767.0));
}

// Numbers [begin, end) in whole steps.
std::vector<std::int16_t> inSteps(const Parameters& p, std::size_t begin, std::size_t end,
                                  double scale) {
  std::vector<std::int16_t> steps;
  for (std::size_t i = begin; i < end; ++i) steps.push_back(inSteps(p[i], scale));
  return steps;
}

void storeRows(const Parameters& p, double scale, WindowNetwork& network) {
  network.clearRows();
  const float* next = p.data();
  for (std::size_t o = 0; o < network.offsets.size(); ++o) {
    for (int kmer = 0; kmer < network.kmers(); ++kmer) {
      for (std::int16_t& x : network.row(o, kmer)) x = inSteps(*next++, scale);
    }
  }
}

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
  const NetworkLayout layout(shape);
  const double hidden = hiddenScale(shape, p), output = outputScale(layout, p);
  WindowNetwork& network = model.network;
  network.letters = shape.letters;
  network.units = shape.units;
  network.offsets = shape.offsets;
  storeRows(p, hidden, network);
  network.bias = inSteps(p, layout.bias(0), layout.pair(0), hidden);
  network.dinucleotide = inSteps(p, layout.pair(0), layout.output(0), hidden);
  network.output = inSteps(p, layout.output(0), layout.outputBias(), output);
  for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
    network.outputBias[kind] = static_cast<float>(kLog2E * p[layout.outputBias() + kind]);
  }
  network.outputScale = static_cast<float>(kLog2E / (hidden * output));
  model.weights = pathWeights(p.data() + layout.pathFactor());
  model.weights.beginUtr5 *= kUtr5Preference;
  model.weights.beginNoncoding *= kNoncodingPreference;
}

}  // namespace velto
