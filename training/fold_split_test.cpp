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

TEST(FoldSplit, GroupsStayTogetherAndPartsAreOfOneSize) {
  const std::vector<Transcript> coding = transcripts(100, 20);
  const std::vector<Transcript> noncoding = transcripts(40, 20);
  const FoldSplit split = splitFolds(coding, noncoding);
  std::vector<const TranscriptPool*> parts{&split.heldBack};
  for (const TranscriptPool& fold : split.training) parts.push_back(&fold);
  std::map<std::string, int> seen;
  for (const TranscriptPool* part : parts) {
    EXPECT_EQ(part->coding.size(), 20U);
    EXPECT_EQ(part->noncoding.size(), 8U);
    for (const std::string& group : groupsOf(*part)) ++seen[group];
  }
  EXPECT_EQ(seen.size(), 20U);
  for (const auto& [group, count] : seen) EXPECT_EQ(count, 1) << group;
}

TEST(FoldSplit, FewGroupsAreSplitByTranscript) {
  const std::vector<Transcript> coding = transcripts(50, 9);
  const FoldSplit split = splitFolds(coding, {});
  for (const TranscriptPool& fold : split.training) EXPECT_EQ(fold.coding.size(), 10U);
  EXPECT_EQ(split.heldBack.coding.size(), 10U);
}

TEST(FoldSplit, TrainingPoolLeavesOneFoldOut) {
  const std::vector<Transcript> coding = transcripts(100, 20);
  const FoldSplit split = splitFolds(coding, {});
  const std::set<std::string> leftOut = groupsOf(split.training[2]);
  const std::set<std::string> others = groupsOf(split.trainingPool(2));
  EXPECT_EQ(others.size(), 12U);
  for (const std::string& group : leftOut) EXPECT_EQ(others.count(group), 0U);
  EXPECT_EQ(split.trainingPool().coding.size(), 80U);
}

}  // namespace
}  // namespace velto
