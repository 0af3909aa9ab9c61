#include "hmm/group_lattice.h"

#include <gtest/gtest.h>

#include "hmm/read_groups.h"
#include "hmm/toy_reads.h"

namespace velto {
namespace {

void expectSame(const ErrorPosterior& one, const ErrorPosterior& other) {
  EXPECT_EQ(one.coding, other.coding);
  EXPECT_EQ(one.inserted, other.inserted);
  EXPECT_EQ(one.deleted, other.deleted);
}

// Runs groups of twelve reads, and each read alone.
void expectGroupsLikeSingleReads(bool useNetwork) {
  ToyReads toy(3);
  for (int i = 0; i < 11; ++i) toy.addCoding(10 + 3 * i, {0.02, 0.03});
  toy.addEven(40);
  const std::vector<ReadView> reads = toy.views();
  const HmmModel model = toyModel();
  const FileRates rates;
  GroupLattice together(model, rates, useNetwork), alone(model, rates, useNetwork);
  const ReadGroups groups(reads);
  for (std::size_t g = 0; g < groups.size(); ++g) {
    together.run(reads, groups[g]);
    for (std::size_t place = 0; place < groups[g].size(); ++place) {
      SCOPED_TRACE(testing::Message() << "group " << g << " place " << place);
      const std::span<const std::size_t> one = groups[g].subspan(place, 1);
      alone.run(reads, one);
      EXPECT_EQ(together.evidence(place).logOdds, alone.evidence(0).logOdds);
      EXPECT_EQ(together.evidence(place).logLikelihood, alone.evidence(0).logLikelihood);
      EXPECT_EQ(together.evidence(place).codingBases, alone.evidence(0).codingBases);
      for (std::size_t i = 0; i < reads[one.front()].codes.size(); ++i) {
        expectSame(together.errorPosterior(place, i), alone.errorPosterior(0, i));
      }
    }
  }
}

TEST(GroupLattice, RunsGroupsLikeSingleReads) {
  expectGroupsLikeSingleReads(true);
  expectGroupsLikeSingleReads(false);
}

}  // namespace
}  // namespace velto
