#include "training/fold_split.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace velto {
namespace {

std::vector<Transcript> transcripts(int count, int groups) {
  std::vector<Transcript> list;
  for (int i = 0; i < count; ++i) {
    Transcript t;
    t.name = "t" + std::to_string(i);
    t.group = "chr" + std::to_string(i % groups);
    t.bases.assign(100, 0);
    list.push_back(t);
  }
  return list;
}

std::set<std::string> groupsOf(const TranscriptPool& pool) {
  std::set<std::string> groups;
  for (const Transcript* t : pool.coding) groups.insert(t->group);
  for (const Transcript* t : pool.noncoding) groups.insert(t->group);
  return groups;
}

TEST(FoldSplit, GroupsStayTogetherAndPartsAreThreeToOneToOne) {
  const std::vector<Transcript> coding = transcripts(100, 20);
  const std::vector<Transcript> noncoding = transcripts(40, 20);
  const FoldSplit split = splitFolds(coding, noncoding);
  EXPECT_EQ(split.boosting.coding.size(), 60U);
  EXPECT_EQ(split.search.coding.size(), 20U);
  EXPECT_EQ(split.heldBack.coding.size(), 20U);
  std::map<std::string, int> seen;
  for (const TranscriptPool* pool : {&split.boosting, &split.search, &split.heldBack}) {
    for (const std::string& group : groupsOf(*pool)) ++seen[group];
  }
  EXPECT_EQ(seen.size(), 20U);
  for (const auto& [group, parts] : seen) EXPECT_EQ(parts, 1) << group;
}

TEST(FoldSplit, FewGroupsAreSplitByTranscript) {
  const std::vector<Transcript> coding = transcripts(50, 9);
  const FoldSplit split = splitFolds(coding, {});
  EXPECT_EQ(split.boosting.coding.size(), 30U);
  EXPECT_EQ(split.search.coding.size(), 10U);
  EXPECT_EQ(split.heldBack.coding.size(), 10U);
}

}  // namespace
}  // namespace velto
