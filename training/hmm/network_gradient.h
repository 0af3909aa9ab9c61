// Conditional likelihood of the true paths of one read, and its gradient.
#pragma once

#include <span>
#include <vector>

#include "hmm/read_lattice.h"
#include "training/hmm/network_parameters.h"

namespace velto {

// A read as the gradient sees it.
struct LabelledLattice {
  ReadView read;
  std::span<const StateMask> masks;  // the true states
  BaseErrorRates rates;
  const HmmModel& tables;          // its count tables; other parts are not read
  std::span<const float> dropout;  // [unit] factor of each hidden unit; all 1 when judging
};

// Works on one read after another. For one thread at a time.
class NetworkGradient {
 public:
  explicit NetworkGradient(const NetworkShape& shape);

  // log P(true paths | read) under the parameters; adds its gradient, unless that is null. 0, and
  // no gradient, where no path is left within the range of floats.
  double add(const LabelledLattice& labelled, const Parameters& parameters, Parameters* gradient);

 private:
  void runNetwork(const LabelledLattice& labelled, const Parameters& parameters);
  void listRows(std::size_t i);
  void baseParts(const Parameters& parameters);
  void addPathGradient(Parameters& gradient) const;
  void addNetworkGradient(const LabelledLattice& labelled, const Parameters& parameters,
                          Parameters& gradient);
  void addBlockGradient(std::size_t block, Parameters& gradient);
  Factors outputGradient(const LabelledLattice& labelled, std::size_t i) const;

  NetworkShape shape_;
  NetworkLayout layout_;
  ReadContext context_;
  std::vector<float> base_;    // [block][unit] part of the composition
  std::vector<float> hidden_;  // [base][unit] after dropout
  std::vector<Factors> factors_;
  std::vector<BaseEmission> emissions_;
  ForwardRows forward_;
  std::vector<StatePosterior> free_, true_;
  std::vector<std::size_t> rows_;      // rows that the base now looked at adds
  std::vector<float> hiddenGradient_;  // [unit]
  std::vector<float> blockGradient_;   // [unit] sum over a block's bases
};

}  // namespace velto
