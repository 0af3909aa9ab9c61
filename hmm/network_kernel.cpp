#include "hmm/network_kernel.h"

#include <algorithm>
#include <iterator>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "hmm/network_kernel.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "hmm/float_math.h"

HWY_BEFORE_NAMESPACE();
namespace velto::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using Sums = std::array<std::int32_t, kEmissionPlaces>;  // [EmissionKind], 0 behind

// Where the rows of a read's k-mers stand.
class RowPlaces {
 public:
  RowPlaces(const WindowNetwork& network, std::span<const int> kmers)
      : places_(kmers.size() + 2 * kMostOffset, kNone) {
    for (std::size_t o = 0; o < network.offsets.size(); ++o) {
      tables_[o] = {network.row(static_cast<int>(o), 0), kMostOffset + network.offsets[o]};
    }
    for (std::size_t i = 0; i < kmers.size(); ++i) {
      if (kmers[i] >= 0) places_[i + kMostOffset] = kmers[i] * network.units;
    }
  }

  // The row of offset o around base i; one of zeros where its k-mer is unknown or outside the read.
  const std::int16_t* row(std::size_t i, std::size_t o) const {
    const int place = places_[i + static_cast<std::size_t>(tables_[o].shift)];
    return place == kNone ? kZeros : tables_[o].rows + place;
  }

 private:
  static constexpr int kNone = -1;
  static constexpr std::int16_t kZeros[kMostUnits] = {};

  struct Table {
    const std::int16_t* rows;
    int shift;  // in places_, from the base
  };

  std::array<Table, kMostOffsets> tables_;  // [offset]
  std::vector<int> places_;                 // [base + kMostOffset] of its k-mer's row, or kNone
};

// Sums of the outputs over `kVectors` vectors of hidden units from unit u on, added to `sums`. All
// are whole numbers, so any order gives the same.
template <std::size_t kVectors>
HWY_ATTR void addUnits(const WindowNetwork& network, const RowPlaces& places, std::size_t i,
                       const std::int16_t* base, std::size_t u, Sums& sums) {
  const hn::CappedTag<std::int16_t, 16> d;
  const hn::RepartitionToWide<decltype(d)> d32;
  const std::size_t lanes = hn::Lanes(d);
  hn::Vec<decltype(d)> hidden[kVectors];
  for (std::size_t v = 0; v < kVectors; ++v) hidden[v] = hn::LoadU(d, base + u + v * lanes);
  const std::size_t offsets = network.offsets.size();
  for (std::size_t o = 0; o < offsets; ++o) {
    const std::int16_t* row = places.row(i, o) + u;
    for (std::size_t v = 0; v < kVectors; ++v) {
      hidden[v] = hn::Add(hidden[v], hn::LoadU(d, row + v * lanes));
    }
  }
  for (auto& h : hidden) h = hn::Max(h, hn::Zero(d));
  const auto units = static_cast<std::size_t>(network.units);
  const std::int16_t* weights = network.output.data() + u;
  for (std::size_t k = 0; k < kEmissionKinds; ++k, weights += units) {
    auto even = hn::Zero(d32), odd = hn::Zero(d32);
    for (std::size_t v = 0; v < kVectors; ++v) {
      even = hn::ReorderWidenMulAccumulate(d32, hidden[v], hn::LoadU(d, weights + v * lanes), even,
                                           odd);
    }
    sums[k] += hn::GetLane(hn::SumOfLanes(d32, hn::Add(even, odd)));
  }
}

template <std::size_t kVectors>
HWY_ATTR void sumBlock(const WindowNetwork& network, const RowPlaces& places, std::size_t first,
                       const std::int16_t* base, std::span<Sums> sums) {
  const std::size_t step = kVectors * hn::Lanes(hn::CappedTag<std::int16_t, 16>());
  for (std::size_t i = 0; i < sums.size(); ++i) {
    sums[i].fill(0);
    for (std::size_t u = 0; u < static_cast<std::size_t>(network.units); u += step) {
      addUnits<kVectors>(network, places, first + i, base, u, sums[i]);
    }
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

// As many vectors at a time as divide the units.
auto blockSummer(const WindowNetwork& network) {
  const std::size_t vectors =
      static_cast<std::size_t>(network.units) / hn::Lanes(hn::CappedTag<std::int16_t, 16>());
  if (vectors % 4 == 0) return sumBlock<4>;
  if (vectors % 3 == 0) return sumBlock<3>;
  return vectors % 2 == 0 ? sumBlock<2> : sumBlock<1>;
}

void fillFactors(const WindowNetwork& network, std::span<const int> kmers,
                 std::span<const Composition> blocks, std::vector<Factors>& factors) {
  factors.resize(kmers.size());
  const RowPlaces places(network, kmers);
  const auto sumBases = blockSummer(network);
  Factors bias{};
  std::copy(network.outputBias.begin(), network.outputBias.end(), bias.begin());
  std::array<std::int16_t, kMostUnits> base;
  std::array<Sums, kCompositionBlock> room;
  for (std::size_t first = 0; first < kmers.size(); first += kCompositionBlock) {
    basePart(network, blocks[first / kCompositionBlock], base);
    const auto sums =
        std::span(room).first(std::min<std::size_t>(kCompositionBlock, kmers.size() - first));
    sumBases(network, places, first, base.data(), sums);
    raiseFactors(bias, network.outputScale, sums, factors.data() + first);
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
