#include "hmm/network_kernel.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "hmm/network_kernel.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "hmm/network_kernel-inl.h"

HWY_BEFORE_NAMESPACE();
namespace velto::HWY_NAMESPACE {
namespace {

std::vector<std::int16_t> basePartsOf(const WindowNetwork& network,
                                      std::span<const Composition> blocks) {
  const auto units = static_cast<std::size_t>(network.units);
  std::vector<std::int16_t> parts(blocks.size() * units);
  for (std::size_t b = 0; b < blocks.size(); ++b) {
    basePartInVectors(network, blocks[b], parts.data() + b * units);
  }
  return parts;
}

// Behind the read's end, the last base fills the eight up.
HWY_ATTR void fillFactors(const WindowNetwork& network, std::span<const int> kmers,
                          std::span<const Composition> blocks, std::vector<Factors>& factors) {
  Factors ones;
  ones.fill(1.0f);
  factors.assign(kmers.size(), ones);
  RowPlaces places;
  places.fill(network, kmers, 0);
  const std::vector<std::int16_t> baseParts = basePartsOf(network, blocks);
  const NetworkKernel kernel(network);
  const auto units = static_cast<std::size_t>(network.units);
  for (std::size_t first = 0; first < kmers.size(); first += kBasesAtOnce) {
    NetworkBases bases;
    for (std::size_t b = 0; b < kBasesAtOnce; ++b) {
      const std::size_t i = std::min(first + b, kmers.size() - 1);
      bases[b] = {places.at(i), baseParts.data() + i / kCompositionBlock * units};
    }
    HWY_ALIGN FactorRows rows;
    kernel.run(bases, rows);
    for (std::size_t b = 0; b < std::min(kBasesAtOnce, kmers.size() - first); ++b) {
      for (std::size_t k = 0; k < kEmissionKinds; ++k) factors[first + b][k] = rows[k][b];
    }
  }
}

}  // namespace
}  // namespace velto::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velto {

HWY_EXPORT(fillFactors);

void networkFactorsInVectors(const WindowNetwork& network, std::span<const int> kmers,
                             std::span<const Composition> blocks, std::vector<Factors>& factors) {
  HWY_DYNAMIC_DISPATCH(fillFactors)(network, kmers, blocks, factors);
}

}  // namespace velto
#endif
