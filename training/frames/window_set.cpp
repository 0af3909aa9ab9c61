#include "training/frames/window_set.h"

#include <algorithm>

namespace velto {
namespace {

constexpr int kMostLevel = 255;

std::uint8_t asLevel(int value) { return static_cast<std::uint8_t>(std::min(value, kMostLevel)); }

}  // namespace

void WindowSet::add(const smplTestData& counts, bool coding, float weight) {
  coding_.push_back(coding ? 1 : 0);
  weights_.push_back(weight);
  for (int acid = 0; acid < kAminoAcids; ++acid) {
    levels_.push_back(asLevel(counts.snglAcidCnt[acid]));
  }
  for (int codon = 0; codon < kCodonCodes; ++codon) {
    const int first = codon / 16, second = codon / 4 % 4, third = codon % 4;
    const int acid = ReadData::CodonTable(first, second, third);
    levels_.push_back(asLevel(
        shareLevel(codon, counts.codonCnt[first][second][third], counts.snglAcidCnt[acid])));
  }
  addPairs(counts);
}

void WindowSet::addPairs(const smplTestData& counts) {
  const short* count = &counts.pairAcidCnt[0][0][0];
  for (int pair = 0; pair < kPairCodes; ++pair) {
    const int cuts = std::min<int>(count[pair], kPairCuts);
    for (int cut = 0; cut < cuts; ++cut) {
      pairLists_.push_back(static_cast<std::uint16_t>(kPairCuts * pair + cut));
    }
  }
  pairListEnds_.push_back(pairLists_.size());
}

void WindowSet::finish() {
  transposeLevels();
  sortPairs();
}

void WindowSet::transposeLevels() {
  constexpr std::size_t features = kFirstPairFeature;
  std::vector<std::uint8_t> byFeature(levels_.size());
  for (std::size_t window = 0; window < size(); ++window) {
    for (std::size_t feature = 0; feature < features; ++feature) {
      byFeature[feature * size() + window] = levels_[window * features + feature];
    }
  }
  levels_.swap(byFeature);
}

void WindowSet::sortPairs() {
  starts_.assign(kPairCuts * kPairCodes + 1, 0);
  for (const std::uint16_t list : pairLists_) ++starts_[list + 1U];
  for (std::size_t list = 1; list < starts_.size(); ++list) starts_[list] += starts_[list - 1];
  members_.resize(pairLists_.size());
  std::vector<std::size_t> next(starts_.begin(), starts_.end() - 1);
  std::size_t entry = 0;
  for (std::size_t window = 0; window < size(); ++window) {
    for (; entry < pairListEnds_[window]; ++entry) {
      members_[next[pairLists_[entry]]++] = static_cast<Index>(window);
    }
  }
  std::vector<std::uint16_t>().swap(pairLists_);
  std::vector<std::size_t>().swap(pairListEnds_);
}

WindowSet::Range WindowSet::pairWindows(int pair, int cut) const {
  const auto list = static_cast<std::size_t>(kPairCuts * pair + cut);
  return {members_.data() + starts_[list], members_.data() + starts_[list + 1]};
}

std::vector<WindowSet::Index> WindowSet::yes(WindowQuestion question) const {
  if (question.feature >= kFirstPairFeature) {
    const Range range = pairWindows(question.feature - kFirstPairFeature, question.cut);
    return {range.begin(), range.end()};
  }
  std::vector<Index> windows;
  const std::uint8_t* level = levels(question.feature);
  for (std::size_t window = 0; window < size(); ++window) {
    if (level[window] > question.cut) windows.push_back(static_cast<Index>(window));
  }
  return windows;
}

}  // namespace velto
