// What the network's training learns: weights of the window network and of where paths begin, enter
// a start codon and enter a stop codon.
#pragma once

#include <cstddef>
#include <vector>

#include "hmm/hmm_model.h"

namespace velto {

struct NetworkShape {
  int letters = 4;           // of the k-mers
  int units = 32;            // a multiple of 16, at most kMostUnits
  std::vector<int> offsets;  // of the k-mers' last bases

  std::size_t rows() const { return offsets.size() << (2 * letters); }
};

// Natural logarithms of the factors that are learnt for PathWeights.
enum PathFactor {
  kStartFactor,  // and the two behind it: one for each StartContext
  kStopFactor = kStartFactor + kStartContexts,
  kUtr5Factor,
  kCodingFactor,
  kUtr3Factor
};
constexpr std::size_t kPathFactors = kUtr3Factor + 1;

// All parameters as one list of floats, in sections: rows [offset][k-mer][unit], bias
// [class of G and C][unit], dinucleotides [pair][unit], outputs [EmissionKind][unit], output biases
// [EmissionKind], path factors [PathFactor]. Outputs are natural logarithms of factors.
class NetworkLayout {
 public:
  explicit NetworkLayout(const NetworkShape& shape)
      : units_(static_cast<std::size_t>(shape.units)), bias_(shape.rows() * units_) {}

  std::size_t units() const { return units_; }
  std::size_t row(std::size_t index) const { return index * units_; }
  std::size_t bias(std::size_t gcClass) const { return bias_ + gcClass * units_; }
  std::size_t pair(std::size_t index) const { return bias(kHmmGcClasses) + index * units_; }
  std::size_t output(std::size_t kind) const { return pair(kDinucleotides) + kind * units_; }
  std::size_t outputBias() const { return output(kEmissionKinds); }
  std::size_t pathFactor() const { return outputBias() + kEmissionKinds; }
  std::size_t size() const { return pathFactor() + kPathFactors; }

 private:
  std::size_t units_;
  std::size_t bias_;  // rows end here
};

using Parameters = std::vector<float>;

// Path weights under these factors, [PathFactor].
PathWeights pathWeights(const float* factors);

// Network and path weights as the model holds them: whole numbers, as large as their bounds allow.
void storeParameters(const NetworkShape& shape, const Parameters& parameters, HmmModel& model);

}  // namespace velto
