#include "hmm/group_lattice.h"

#ifdef VELTO_HIGHWAY
#include "hmm/read_lanes.h"
#endif

namespace velto {

#ifdef VELTO_HIGHWAY
struct GroupLattice::Lanes {
  ReadLanes reads;
  bool ran;  // the last group, which was of several reads
};

GroupLattice::GroupLattice(const HmmModel& model, const FileRates& rates, bool useNetwork)
    : model_(model),
      rates_(rates),
      useNetwork_(useNetwork),
      lanes_(new Lanes{ReadLanes(model, rates, useNetwork), false}) {}

void GroupLattice::run(std::span<const ReadView> reads, std::span<const std::size_t> group) {
  lanes_->ran = group.size() > 1;
  if (!lanes_->ran) return alone_.run(model_, rates_, reads[group.front()], useNetwork_);
  lanes_->reads.runForward(reads, group);
  lanes_->reads.lattice.runBackward();
}

ReadEvidence GroupLattice::evidence(std::size_t place) const {
  return lanes_->ran ? lanes_->reads.lattice.evidence(place) : alone_.evidence();
}

ErrorPosterior GroupLattice::errorPosterior(std::size_t place, std::size_t base) const {
  return lanes_->ran ? lanes_->reads.lattice.errorPosterior(place, base)
                     : errorPosteriorOf(alone_.posteriors[base]);
}
#else
struct GroupLattice::Lanes {};

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

GroupLattice::~GroupLattice() = default;

}  // namespace velto
