#include "hmm/read_lattice.h"

namespace velto {

void ReadLattice::run(const HmmModel& model, const FileRates& rates, const ReadView& read,
                      bool useNetwork) {
  indexContexts(read.codes, fiveMers);
  indexStartContexts(read.codes, contexts);
  compose(read.codes, blocks);
  factors.clear();
  if (useNetwork) {
    indexKmers(read.codes, model.network.letters, kmers);
    networkFactors(model.network, kmers, blocks, factors);
  }
  emit(model, model.weights, read, rates, fiveMers, contexts, blocks, factors, emissions);
  const LatticeView lattice{model.weights, emissions};
  runForward(lattice, forward);
  runBackward(lattice, forward, posteriors);
}

}  // namespace velto
