#include "hmm/network_kernel.h"

#include <algorithm>
#include <iterator>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "hmm/network_kernel.cpp"
#include <hwy/foreach_target.h>
#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include "hmm/float_math.h"

HWY_BEFORE_NAMESPACE();
namespace velto::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// The hidden units of one base: a base part and the rows to add to it.
struct UnitRows {
  const std::int16_t* base = nullptr;  // [unit]
  std::array<const std::int16_t*, kMostOffsets> row;
  std::size_t rows = 0;
};

// The rows of the k-mers around base i.
void collectRows(const WindowNetwork& network, std::span<const int> kmers, int i, UnitRows& units) {
  units.rows = 0;
  for (std::size_t o = 0; o < network.offsets.size(); ++o) {
    const int end = i + network.offsets[o];
    if (end < 0 || end >= static_cast<int>(kmers.size())) continue;
    const int kmer = kmers[static_cast<std::size_t>(end)];
    if (kmer < 0) continue;
    units.row[units.rows] = network.row(static_cast<int>(o), kmer);
    hwy::Prefetch(units.row[units.rows++]);
  }
}

// Sums of the outputs over the hidden units; they are whole numbers, the same in any order.
HWY_ATTR void sumOutputs(const WindowNetwork& network, const UnitRows& units, std::int32_t* sums) {
  const hn::CappedTag<std::int16_t, 16> d16;
  const hn::RepartitionToWide<decltype(d16)> d32;
  const auto count = static_cast<std::size_t>(network.units);
  hn::Vec<decltype(d32)> even[kEmissionKinds], odd[kEmissionKinds];
  for (std::size_t k = 0; k < kEmissionKinds; ++k) even[k] = odd[k] = hn::Zero(d32);
  for (std::size_t u = 0; u < count; u += hn::Lanes(d16)) {
    auto hidden = hn::LoadU(d16, units.base + u);
    for (std::size_t r = 0; r < units.rows; ++r) {
      hidden = hn::Add(hidden, hn::LoadU(d16, units.row[r] + u));
    }
    hidden = hn::Max(hidden, hn::Zero(d16));
    for (std::size_t k = 0; k < kEmissionKinds; ++k) {
      const auto weights = hn::LoadU(d16, network.output.data() + k * count + u);
      even[k] = hn::ReorderWidenMulAccumulate(d32, hidden, weights, even[k], odd[k]);
    }
  }
  for (std::size_t k = 0; k < kEmissionKinds; ++k) {
    sums[k] = hn::GetLane(hn::SumOfLanes(d32, hn::Add(even[k], odd[k])));
  }
}

// powerOfTwo, operation by operation.
template <class D, class V>
HWY_ATTR V powersOfTwo(D d, V x) {
  const hn::RebindToSigned<D> bits;
  const auto rounded = hn::Add(x, hn::Set(d, kPowerRounder));
  const auto rest = hn::Sub(x, hn::Sub(rounded, hn::Set(d, kPowerRounder)));
  auto p = hn::Set(d, kPowerTerms[0]);
  for (std::size_t t = 1; t < std::size(kPowerTerms); ++t) {
    p = hn::Add(hn::Mul(p, rest), hn::Set(d, kPowerTerms[t]));
  }
  const auto power = hn::ShiftLeft<23>(hn::BitCast(bits, rounded));
  return hn::BitCast(d, hn::Add(hn::BitCast(bits, p), power));
}

using Sums = std::array<std::int32_t, kEmissionPlaces>;  // [EmissionKind], 0 behind

HWY_ATTR void raiseFactors(const Factors& bias, float outputScale, std::span<const Sums> sums,
                           Factors* factors) {
  const hn::CappedTag<float, kEmissionPlaces> d;
  const hn::RebindToSigned<decltype(d)> whole;
  const auto most = hn::Set(d, kMostLogFactor), least = hn::Set(d, -kMostLogFactor);
  const auto scale = hn::Set(d, outputScale);
  for (std::size_t i = 0; i < sums.size(); ++i) {
    for (std::size_t k = 0; k < kEmissionPlaces; k += hn::Lanes(d)) {
      const auto sum = hn::ConvertTo(d, hn::LoadU(whole, sums[i].data() + k));
      const auto x = hn::Add(hn::LoadU(d, bias.data() + k), hn::Mul(scale, sum));
      hn::StoreU(powersOfTwo(d, hn::Max(hn::Min(x, most), least)), d, factors[i].data() + k);
    }
  }
}

void fillFactors(const WindowNetwork& network, std::span<const int> kmers,
                 std::span<const Composition> blocks, std::vector<Factors>& factors) {
  factors.resize(kmers.size());
  Factors bias{};
  std::copy(network.outputBias.begin(), network.outputBias.end(), bias.begin());
  std::array<std::int16_t, kMostUnits> base;
  constexpr std::size_t kAhead = 8;
  std::array<UnitRows, kAhead> units;
  for (UnitRows& u : units) u.base = base.data();
  std::array<Sums, kCompositionBlock> sums{};
  for (std::size_t first = 0; first < kmers.size(); first += kCompositionBlock) {
    basePart(network, blocks[first / kCompositionBlock], base);
    const std::size_t count = std::min<std::size_t>(kCompositionBlock, kmers.size() - first);
    for (std::size_t i = 0; i < count; i += kAhead) {
      const std::size_t end = std::min(count, i + kAhead);
      for (std::size_t j = i; j < end; ++j) {
        collectRows(network, kmers, static_cast<int>(first + j), units[j - i]);
      }
      for (std::size_t j = i; j < end; ++j) sumOutputs(network, units[j - i], sums[j].data());
    }
    raiseFactors(bias, network.outputScale, std::span(sums).first(count), factors.data() + first);
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
