// Posteriors of a group of reads, in lanes where there are several.
#pragma once

#include <memory>
#include <span>

#include "hmm/read_decision.h"
#include "hmm/read_lattice.h"

namespace velto {

// Memory kept from group to group; for one thread at a time.
class GroupLattice {
 public:
  // Model and rates must outlive it. Without the network, the count tables alone emit.
  GroupLattice(const HmmModel& model, const FileRates& rates, bool useNetwork);
  ~GroupLattice();

  // Runs forward and backward over a group of ReadGroups, reads of one base or more.
  void run(std::span<const ReadView> reads, std::span<const std::size_t> group);

  // Of the read at a place of the last group.
  ReadEvidence evidence(std::size_t place) const;
  ErrorPosterior errorPosterior(std::size_t place, std::size_t base) const;

 private:
  const HmmModel& model_;
  const FileRates& rates_;
  const bool useNetwork_;
  ReadLattice alone_;
  struct Lanes;
  const std::unique_ptr<Lanes> lanes_;  // null in a build without vectors
};

}  // namespace velto
