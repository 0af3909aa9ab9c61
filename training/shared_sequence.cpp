#include "training/shared_sequence.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

#include "core/base_code.h"

namespace velto {
namespace {

constexpr int kStretch = 31;  // bases; two bits each fit a word
constexpr std::uint64_t kStretchMask = (std::uint64_t{1} << (2 * kStretch)) - 1;
constexpr std::size_t kMaxOwners = 20;

struct Stretch {
  std::uint64_t bases;
  std::size_t owner;
  bool operator<(const Stretch& other) const {
    return bases != other.bases ? bases < other.bases : owner < other.owner;
  }
  bool operator==(const Stretch& other) const {
    return bases == other.bases && owner == other.owner;
  }
};

// One stretch in four, whatever its place.
bool isLookedAt(std::uint64_t bases) { return (bases * 0x9e3779b97f4a7c15U) >> 62 == 0; }

void addStretches(const Transcript& transcript, std::size_t owner, std::vector<Stretch>& list) {
  std::uint64_t bases = 0;
  int known = 0;
  for (const short code : transcript.bases) {
    known = isKnownBase(code) ? known + 1 : 0;
    bases = ((bases << 2) | static_cast<std::uint64_t>(code & 3)) & kStretchMask;
    if (known >= kStretch && isLookedAt(bases)) list.push_back({bases, owner});
  }
}

// Union of sets by their first members.
class Sets {
 public:
  explicit Sets(std::size_t count) : parent_(count) {
    std::iota(parent_.begin(), parent_.end(), std::size_t{0});
  }

  std::size_t of(std::size_t member) {
    while (parent_[member] != member) member = parent_[member] = parent_[parent_[member]];
    return member;
  }

  void join(std::size_t a, std::size_t b) {
    a = of(a);
    b = of(b);
    parent_[std::max(a, b)] = std::min(a, b);
  }

 private:
  std::vector<std::size_t> parent_;
};

}  // namespace

std::vector<std::size_t> sharedSequenceGroups(const std::vector<const Transcript*>& transcripts) {
  std::vector<Stretch> list;
  for (std::size_t i = 0; i < transcripts.size(); ++i) addStretches(*transcripts[i], i, list);
  std::sort(list.begin(), list.end());
  list.erase(std::unique(list.begin(), list.end()), list.end());
  Sets sets(transcripts.size());
  for (std::size_t first = 0, last; first < list.size(); first = last) {
    last = first + 1;
    while (last < list.size() && list[last].bases == list[first].bases) ++last;
    if (last - first > kMaxOwners) continue;
    for (std::size_t i = first + 1; i < last; ++i) sets.join(list[first].owner, list[i].owner);
  }
  std::vector<std::size_t> groups(transcripts.size());
  for (std::size_t i = 0; i < groups.size(); ++i) groups[i] = sets.of(i);
  return groups;
}

}  // namespace velto
