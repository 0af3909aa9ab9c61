// Resamples of transcripts, and intervals of what was computed on them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/random.h"

namespace velto {

constexpr int kResamples = 1000;
constexpr double kIntervalTail = 0.025;  // share of resamples beyond each end of the interval

struct Interval {
  double low;
  double high;
};

// 95 % of the values lie inside; the ends are interpolated between neighbours. `sorted` is
// ascending and not empty.
Interval intervalOf(const std::vector<double>& sorted);

// Calls use(chosen) with kResamples lists of `size` places in a list of that size, drawn with
// replacement; `size` is above 0. The same seed gives the same places.
template <typename Use>
void forEachResample(std::size_t size, std::uint64_t seed, Use use) {
  std::vector<std::uint32_t> chosen(size);
  for (std::uint64_t resample = 0; resample < kResamples; ++resample) {
    Random random = Random::split(seed, resample);
    for (std::uint32_t& i : chosen) i = random.below(static_cast<std::uint32_t>(size));
    use(chosen);
  }
}

}  // namespace velto
