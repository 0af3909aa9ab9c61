#include "hmm/read_choice.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

using Indexes = std::vector<std::size_t>;

TEST(ReadChoice, IsSpreadOverTheSample) {
  EXPECT_EQ(chosenIndexes(10, 4), (Indexes{0, 2, 5, 7}));
  EXPECT_EQ(chosenIndexes(1000, 2), (Indexes{0, 500}));
}

TEST(ReadChoice, TakesAllOfASmallSample) {
  EXPECT_EQ(chosenIndexes(3, 5), (Indexes{0, 1, 2}));
  EXPECT_EQ(chosenIndexes(0, 5), Indexes{});
}

TEST(ReadChoice, LeavesOutReadsWithoutBases) {
  const std::vector<short> bases = {0, 1, 2};
  const std::vector<ReadView> sample = {{bases, {}}, {bases, {}}, {}, {bases, {}}};
  EXPECT_EQ(chosenReads(sample, 2).size(), 1U);
  EXPECT_EQ(chosenReads(sample, 4).size(), 3U);
}

}  // namespace
}  // namespace velto
