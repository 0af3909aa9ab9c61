// The window network of eight bases at once, for the set of instructions that is being compiled;
// included once for each of them.
#include <hwy/highway.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <span>
#include <vector>

#include "hmm/float_math.h"
#include "hmm/window_network.h"

#if defined(VELTO_NETWORK_KERNEL_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef VELTO_NETWORK_KERNEL_INL_H
#undef VELTO_NETWORK_KERNEL_INL_H
#else
#define VELTO_NETWORK_KERNEL_INL_H
#endif

HWY_BEFORE_NAMESPACE();
namespace velto::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr std::size_t kBasesAtOnce = 8;

// Eight bases: where the rows around them begin, and the base parts of their blocks.
struct NetworkBases {
  const std::uint32_t* places;  // [step x offset of a k-mer's last base + base]
  std::ptrdiff_t step;
  std::array<const std::int16_t*, kBasesAtOnce> parts;  // [base]
};

constexpr std::size_t kFactors = kEmissionKinds * kBasesAtOnce;
using OutputSums = std::array<std::int32_t, kFactors>;  // [EmissionKind][base]
using FactorRows = std::array<float, kFactors>;         // [EmissionKind][base]

// Highway 1.0 has no vectors for a processor without SSSE3: loops stand for them there.
#if HWY_TARGET == HWY_SCALAR
constexpr std::size_t kUnitsAtOnce = 16;
#else
constexpr std::size_t kUnitsAtOnce = HWY_HAVE_SCALABLE ? 16 : std::min(HWY_MAX_BYTES, 64);

using RowTag = hn::FixedTag<std::int8_t, kUnitsAtOnce>;
// Units come in sixteens.
using UnitTag = hn::FixedTag<std::int16_t, std::min<std::size_t>(kUnitsAtOnce / 2, 16)>;
using SumTag = hn::RepartitionToWide<UnitTag>;
using FourSums = hn::FixedTag<std::int32_t, 4>;

// Lane by lane the sum of a vector's parts of four lanes.
template <class D>
HWY_ATTR hn::Vec<FourSums> sumOfFours(D d, hn::Vec<D> x) {
  if constexpr (hn::MaxLanes(d) == 4) {
    return x;
  } else {
    const hn::Half<D> half;
    return sumOfFours(half, hn::Add(hn::LowerHalf(half, x), hn::UpperHalf(half, x)));
  }
}

// The sums of the lanes of four vectors.
HWY_ATTR inline hn::Vec<FourSums> sumsOf(const hn::Vec<SumTag> (&x)[4]) {
  const SumTag d;
  const hn::RepartitionToWide<SumTag> pairs;
  const auto first =
      hn::Add(hn::InterleaveLower(d, x[0], x[1]), hn::InterleaveUpper(d, x[0], x[1]));
  const auto last = hn::Add(hn::InterleaveLower(d, x[2], x[3]), hn::InterleaveUpper(d, x[2], x[3]));
  const auto a = hn::BitCast(pairs, first), b = hn::BitCast(pairs, last);
  const auto lower = hn::BitCast(d, hn::InterleaveLower(pairs, a, b));
  const auto upper = hn::BitCast(d, hn::InterleaveUpper(pairs, a, b));
  return sumOfFours(d, hn::Add(lower, upper));
}
#endif

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

class NetworkKernel {
 public:
  HWY_ATTR explicit NetworkKernel(const WindowNetwork& network)
      : network_(network), units_(static_cast<std::size_t>(network.units)) {
    for (std::size_t k = 0; k < kEmissionKinds; ++k) {
      std::fill_n(outputBias_ + k * kBasesAtOnce, kBasesAtOnce, network.outputBias[k]);
    }
  }

  // Sums of the outputs of eight bases, before scale and bias. Not a part of its callers, which
  // would leave it too few registers.
  HWY_NOINLINE HWY_ATTR void sumOutputs(const NetworkBases& bases, OutputSums& sums) const {
    sums.fill(0);
    for (std::size_t u = 0; u < units_; u += kUnitsAtOnce) {
      HWY_ALIGN RowSums rows;
      sumRows(bases, u, rows);
      addOutputs(bases, u, rows, sums);
    }
  }

  // The factors that the sums stand for.
  HWY_ATTR void raise(const OutputSums& sums, FactorRows& factors) const {
    const hn::CappedTag<float, 16> d;
    const hn::RebindToSigned<decltype(d)> whole;
    const auto most = hn::Set(d, kMostLogFactor), least = hn::Set(d, -kMostLogFactor);
    const auto scale = hn::Set(d, network_.outputScale);
    for (std::size_t i = 0; i < kFactors; i += hn::Lanes(d)) {
      const auto sum = hn::ConvertTo(d, hn::LoadU(whole, sums.data() + i));
      const auto x = hn::Add(hn::LoadU(d, outputBias_ + i), hn::Mul(scale, sum));
      hn::StoreU(powersOfTwo(d, hn::Max(hn::Min(x, most), least)), d, factors.data() + i);
    }
  }

 private:
  using RowSums = std::int8_t[kBasesAtOnce][kUnitsAtOnce];  // [base][unit]

#if HWY_TARGET == HWY_SCALAR
  // Sums of the rows of units from `first` on.
  void sumRows(const NetworkBases& bases, std::size_t first, RowSums& sums) const {
    for (std::size_t b = 0; b < kBasesAtOnce; ++b) {
      std::fill_n(sums[b], kUnitsAtOnce, std::int8_t{0});
      const std::int8_t* rows = network_.rows.data() + first;
      for (const int offset : network_.offsets) {
        const std::int8_t* row = rows + bases.places[offset * bases.step + static_cast<int>(b)];
        for (std::size_t u = 0; u < kUnitsAtOnce; ++u) {
          sums[b][u] = static_cast<std::int8_t>(sums[b][u] + row[u]);
        }
        rows += network_.rowsSize();
      }
    }
  }

  // What these units add to the outputs.
  void addOutputs(const NetworkBases& bases, std::size_t first, const RowSums& rows,
                  OutputSums& sums) const {
    for (std::size_t i = 0; i < kFactors; ++i) {
      const std::int16_t* weights = network_.output.data() + i / kBasesAtOnce * units_ + first;
      const std::int16_t* part = bases.parts[i % kBasesAtOnce] + first;
      const std::int8_t* row = rows[i % kBasesAtOnce];
      for (std::size_t u = 0; u < kUnitsAtOnce; ++u) {
        sums[i] += weights[u] * std::max(0, part[u] + row[u]);
      }
    }
  }
#else
  // Sums of the rows of units from `first` on.
  HWY_ATTR void sumRows(const NetworkBases& bases, std::size_t first, RowSums& sums) const {
    const RowTag d;
    hn::Vec<RowTag> sum[kBasesAtOnce];
    for (auto& x : sum) x = hn::Zero(d);
    const std::int8_t* rows = network_.rows.data() + first;
    for (const int offset : network_.offsets) {
      const std::uint32_t* places = bases.places + offset * bases.step;
      for (std::size_t b = 0; b < kBasesAtOnce; ++b) {
        sum[b] = hn::Add(sum[b], hn::LoadU(d, rows + places[b]));
      }
      rows += network_.rowsSize();
    }
    for (std::size_t b = 0; b < kBasesAtOnce; ++b) hn::Store(sum[b], d, sums[b]);
  }

  // What these units add to the outputs.
  HWY_ATTR void addOutputs(const NetworkBases& bases, std::size_t first, const RowSums& rows,
                           OutputSums& sums) const {
    switch (std::min(units_ - first, kUnitsAtOnce) / 16) {
      case 1:
        return addOutputsOf<1>(bases, first, rows, sums);
      case 2:
        return addOutputsOf<2>(bases, first, rows, sums);
      case 3:
        return addOutputsOf<3>(bases, first, rows, sums);
      default:
        return addOutputsOf<4>(bases, first, rows, sums);
    }
  }

  // Four bases at a time. All are whole numbers, so any order gives the same sum.
  template <std::size_t kSixteens>
  HWY_ATTR void addOutputsOf(const NetworkBases& bases, std::size_t first, const RowSums& rows,
                             OutputSums& sums) const {
    const UnitTag d;
    const SumTag d32;
    const FourSums fourSums;
    constexpr std::size_t kLanesOfUnits = hn::MaxLanes(UnitTag());
    constexpr std::size_t kVectors = kSixteens * 16 / kLanesOfUnits;
    for (std::size_t four = 0; four < kBasesAtOnce; four += 4) {
      hn::Vec<UnitTag> hidden[4][kVectors];
      for (std::size_t b = 0; b < 4; ++b) {
        for (std::size_t v = 0; v < kVectors; ++v) {
          const std::size_t u = v * kLanesOfUnits;
          hidden[b][v] = hiddenUnits(rows[four + b] + u, bases.parts[four + b] + first + u);
        }
      }
      const std::int16_t* weights = network_.output.data() + first;
      for (std::size_t k = 0; k < kEmissionKinds; ++k, weights += units_) {
        hn::Vec<SumTag> sum[4];
        for (std::size_t b = 0; b < 4; ++b) {
          auto even = hn::Zero(d32), odd = hn::Zero(d32);
          for (std::size_t v = 0; v < kVectors; ++v) {
            const auto weight = hn::LoadU(d, weights + v * kLanesOfUnits);
            even = hn::ReorderWidenMulAccumulate(d32, hidden[b][v], weight, even, odd);
          }
          sum[b] = hn::Add(even, odd);
        }
        std::int32_t* out = sums.data() + k * kBasesAtOnce + four;
        hn::Store(hn::Add(hn::Load(fourSums, out), sumsOf(sum)), fourSums, out);
      }
    }
  }

  HWY_ATTR static hn::Vec<UnitTag> hiddenUnits(const std::int8_t* rows, const std::int16_t* part) {
    const UnitTag d;
    const hn::Rebind<std::int8_t, UnitTag> narrow;
    const auto sum = hn::PromoteTo(d, hn::LoadU(narrow, rows));
    return hn::Max(hn::Add(sum, hn::LoadU(d, part)), hn::Zero(d));
  }
#endif

  const WindowNetwork& network_;
  const std::size_t units_;
  float outputBias_[kFactors];  // [EmissionKind][base]
};

}  // namespace
}  // namespace velto::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
