// Labelled windows stored by feature, as boosting reads them.
#pragma once

#include <cstdint>
#include <vector>

#include "model/window_sample.h"
#include "training/frames/window_features.h"

namespace velto {

// Filled by one thread, then constant.
class WindowSet {
 public:
  using Index = std::uint32_t;
  static constexpr int kPairThresholds = 3;  // the thresholds of a pair's count: 0 to 2

  // Adds a counted window; `weight` is its share in the loss, above 0.
  void add(const smplTestData& counts, bool coding, float weight);

  // Sorts the windows by feature; to be called once, after the last window was added.
  void finish();

  std::size_t size() const { return coding_.size(); }
  bool coding(std::size_t window) const { return coding_[window] != 0; }
  float weight(std::size_t window) const { return weights_[window]; }
  void scaleWeight(std::size_t window, float factor) { weights_[window] *= factor; }

  // Bins of an amino-acid or codon feature (below kFirstPairFeature), one per window.
  const std::uint8_t* bins(int feature) const {
    return bins_.data() + static_cast<std::size_t>(feature) * size();
  }

  // Windows, ascending, in which the count of a pair is above the threshold.
  struct Range {
    const Index* first;
    const Index* last;
    const Index* begin() const { return first; }
    const Index* end() const { return last; }
    std::size_t size() const { return static_cast<std::size_t>(last - first); }
  };
  Range pairWindows(int pair, int threshold) const;

  // Windows, ascending, for which the answer is yes.
  std::vector<Index> yes(Stump stump) const;

 private:
  void addPairs(const smplTestData& counts);
  void transposeBins();
  void sortPairs();

  std::vector<char> coding_;
  std::vector<float> weights_;
  std::vector<std::uint8_t> bins_;  // by window while filling, then by feature
  std::vector<std::uint16_t>
      pairLists_;  // filling: kPairThresholds x pair + threshold, window after window
  std::vector<std::size_t> pairListEnds_;  // filling: [window], end in pairLists_
  std::vector<std::size_t> starts_;  // [kPairThresholds x pair + threshold], start in members_
  std::vector<Index> members_;       // windows, list after list
};

}  // namespace velto
