#include "training/fold_split.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>

namespace velto {
namespace {

constexpr std::size_t kHeldBackFold = kTrainingFolds;
constexpr std::size_t kFolds = kTrainingFolds + 1;
constexpr std::size_t kMinGroups = 10;

struct Group {
  std::string name;
  long bases = 0;
};

// The groups, largest first.
std::vector<Group> groupsBySize(const std::vector<const std::vector<Transcript>*>& sets,
                                std::string Transcript::*key) {
  std::map<std::string, long> bases;
  for (const auto* set : sets) {
    for (const Transcript& transcript : *set) bases[transcript.*key] += transcript.length();
  }
  std::vector<Group> groups;
  for (const auto& [name, count] : bases) groups.push_back({name, count});
  std::stable_sort(groups.begin(), groups.end(),
                   [](const Group& a, const Group& b) { return a.bases > b.bases; });
  return groups;
}

// Gives each group, largest first, to the fold that is smallest so far.
std::map<std::string, std::size_t> foldOfGroup(const std::vector<Group>& groups) {
  std::map<std::string, std::size_t> folds;
  std::array<long, kFolds> bases{};
  for (const Group& group : groups) {
    const auto smallest =
        static_cast<std::size_t>(std::min_element(bases.begin(), bases.end()) - bases.begin());
    bases[smallest] += group.bases;
    folds[group.name] = smallest;
  }
  return folds;
}

TranscriptPool& partOf(FoldSplit& split, std::size_t fold) {
  return fold == kHeldBackFold ? split.heldBack : split.training[fold];
}

void append(const std::vector<const Transcript*>& more, std::vector<const Transcript*>& list) {
  list.insert(list.end(), more.begin(), more.end());
}

}  // namespace

TranscriptPool FoldSplit::trainingPool(std::size_t without) const {
  TranscriptPool pool;
  for (std::size_t fold = 0; fold < kTrainingFolds; ++fold) {
    if (fold == without) continue;
    append(training[fold].coding, pool.coding);
    append(training[fold].noncoding, pool.noncoding);
  }
  return pool;
}

FoldSplit splitFolds(const std::vector<Transcript>& coding,
                     const std::vector<Transcript>& noncoding) {
  std::string Transcript::*key = &Transcript::group;
  std::vector<Group> groups = groupsBySize({&coding, &noncoding}, key);
  if (groups.size() < kMinGroups) {
    key = &Transcript::name;
    groups = groupsBySize({&coding, &noncoding}, key);
  }
  const std::map<std::string, std::size_t> folds = foldOfGroup(groups);
  FoldSplit split;
  for (const Transcript& t : coding) partOf(split, folds.at(t.*key)).coding.push_back(&t);
  for (const Transcript& t : noncoding) partOf(split, folds.at(t.*key)).noncoding.push_back(&t);
  return split;
}

}  // namespace velto
