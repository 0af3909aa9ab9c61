#include "hmm/read_groups.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

using Indexes = std::vector<std::size_t>;

// The groups of reads of these lengths.
std::vector<Indexes> groupsOf(const std::vector<std::size_t>& lengths) {
  const std::vector<short> codes(30000);
  std::vector<ReadView> reads;
  for (const std::size_t length : lengths) reads.push_back({std::span(codes).first(length)});
  const ReadGroups groups(reads);
  std::vector<Indexes> list;
  for (std::size_t g = 0; g < groups.size(); ++g) {
    list.emplace_back(groups[g].begin(), groups[g].end());
  }
  return list;
}

TEST(ReadGroups, EightReadsOfLikeLengthRunTogether) {
  const std::vector<Indexes> expected = {{2, 4, 6, 8, 10, 1, 3, 5}, {7, 9, 11, 0}};
  EXPECT_EQ(groupsOf({1, 20, 90, 20, 90, 20, 90, 20, 90, 20, 90, 20}), expected);
}

TEST(ReadGroups, FewerThanFourRunAlone) {
  const std::vector<Indexes> expected = {{2}, {1}, {0}};
  EXPECT_EQ(groupsOf({5, 6, 7}), expected);
  EXPECT_EQ(groupsOf({5, 6, 7, 8}).size(), 1U);
  EXPECT_TRUE(groupsOf({}).empty());
}

TEST(ReadGroups, ReadsOfMoreThan20000BasesRunAlone) {
  const std::vector<Indexes> expected = {{3}, {0, 1, 2, 4}};
  EXPECT_EQ(groupsOf({20000, 20000, 20000, 20001, 20000}), expected);
}

}  // namespace
}  // namespace velto
