#include "hmm/read_lattice.h"

#ifdef VELTO_HIGHWAY
#include "hmm/network_kernel.h"
#endif

namespace velto {
namespace {

#ifdef VELTO_HIGHWAY
constexpr auto fillNetworkFactors = networkFactorsInVectors;
#else
constexpr auto fillNetworkFactors = networkFactors;
#endif

}  // namespace

void ReadLattice::prepare(const HmmModel& model, const FileRates& rates, const ReadView& read,
                          bool useNetwork) {
  context.index(read.codes);
  factors.clear();
  if (useNetwork) fillNetworkFactors(model.network, context, factors);
  emit(model, model.weights, read, rates, context, factors, emissions);
}

void ReadLattice::run(const HmmModel& model, const FileRates& rates, const ReadView& read,
                      bool useNetwork) {
  prepare(model, rates, read, useNetwork);
  const LatticeView lattice{model.weights, emissions};
  runForward(lattice, forward);
  runBackward(lattice, forward, posteriors);
}

}  // namespace velto
