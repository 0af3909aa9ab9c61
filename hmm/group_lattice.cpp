#include "hmm/group_lattice.h"

namespace velto {

#ifdef VELTO_HIGHWAY
GroupLattice::GroupLattice(const HmmModel& model, const FileRates& rates, bool useNetwork)
    : model_(model), rates_(rates), useNetwork_(useNetwork), lanes_(model, rates, useNetwork) {}

void GroupLattice::run(std::span<const ReadView> reads, std::span<const std::size_t> group) {
  isAlone_ = group.size() == 1;
  if (isAlone_) return alone_.run(model_, rates_, reads[group.front()], useNetwork_);
  lanes_.runForward(reads, group);
  lanes_.lattice.runBackward();
}

ReadEvidence GroupLattice::evidence(std::size_t place) const {
  return isAlone_ ? alone_.evidence() : lanes_.lattice.evidence(place);
}

ErrorPosterior GroupLattice::errorPosterior(std::size_t place, std::size_t base) const {
  return isAlone_ ? errorPosteriorOf(alone_.posteriors[base])
                  : lanes_.lattice.errorPosterior(place, base);
}
#else
GroupLattice::GroupLattice(const HmmModel& model, const FileRates& rates, bool useNetwork)
    : model_(model), rates_(rates), useNetwork_(useNetwork) {}

void GroupLattice::run(std::span<const ReadView> reads, std::span<const std::size_t> group) {
  alone_.run(model_, rates_, reads[group.front()], useNetwork_);
}

ReadEvidence GroupLattice::evidence(std::size_t) const { return alone_.evidence(); }

ErrorPosterior GroupLattice::errorPosterior(std::size_t, std::size_t base) const {
  return errorPosteriorOf(alone_.posteriors[base]);
}
#endif

}  // namespace velto
