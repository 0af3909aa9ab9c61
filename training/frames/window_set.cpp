#include "training/frames/window_set.h"

#include <algorithm>

namespace velto {
namespace {

constexpr int kMaxBin = 255;

std::uint8_t asBin(int value) { return static_cast<std::uint8_t>(std::min(value, kMaxBin)); }

}  // namespace

void WindowSet::add(const smplTestData& counts, bool coding, float weight) {
  coding_.push_back(coding ? 1 : 0);
  weights_.push_back(weight);
  for (int acid = 0; acid < kAminoAcids; ++acid) {
    bins_.push_back(asBin(counts.snglAcidCnt[acid]));
  }
  for (int codon = 0; codon < kCodonCodes; ++codon) {
    const int first = codon / 16, second = codon / 4 % 4, third = codon % 4;
    const int acid = ReadData::CodonTable(first, second, third);
    bins_.push_back(
        asBin(usageBin(codon, counts.codonCnt[first][second][third], counts.snglAcidCnt[acid])));
  }
  addPairs(counts);
}

void WindowSet::addPairs(const smplTestData& counts) {
  const short* count = &counts.pairAcidCnt[0][0][0];
  for (int pair = 0; pair < kPairCodes; ++pair) {
    const int thresholds = std::min<int>(count[pair], kPairThresholds);
    for (int threshold = 0; threshold < thresholds; ++threshold) {
      pairLists_.push_back(static_cast<std::uint16_t>(kPairThresholds * pair + threshold));
    }
  }
  pairListEnds_.push_back(pairLists_.size());
}

void WindowSet::finish() {
  transposeBins();
  sortPairs();
}

void WindowSet::transposeBins() {
  constexpr std::size_t features = kFirstPairFeature;
  std::vector<std::uint8_t> byFeature(bins_.size());
  for (std::size_t window = 0; window < size(); ++window) {
    for (std::size_t feature = 0; feature < features; ++feature) {
      byFeature[feature * size() + window] = bins_[window * features + feature];
    }
  }
  bins_.swap(byFeature);
}

void WindowSet::sortPairs() {
  starts_.assign(kPairThresholds * kPairCodes + 1, 0);
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

WindowSet::Range WindowSet::pairWindows(int pair, int threshold) const {
  const auto list = static_cast<std::size_t>(kPairThresholds * pair + threshold);
  return {members_.data() + starts_[list], members_.data() + starts_[list + 1]};
}

std::vector<WindowSet::Index> WindowSet::yes(Stump stump) const {
  if (stump.feature >= kFirstPairFeature) {
    const Range range = pairWindows(stump.feature - kFirstPairFeature, stump.threshold);
    return {range.begin(), range.end()};
  }
  std::vector<Index> windows;
  const std::uint8_t* bin = bins(stump.feature);
  for (std::size_t window = 0; window < size(); ++window) {
    if (bin[window] > stump.threshold) windows.push_back(static_cast<Index>(window));
  }
  return windows;
}

}  // namespace velto
