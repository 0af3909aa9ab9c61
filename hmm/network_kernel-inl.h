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

// One of the eight bases: where the rows around it begin, [offset of a k-mer's last base], and the
// base part of its block.
struct NetworkBase {
  const int* places;
  const std::int16_t* base;
};
using NetworkBases = std::array<NetworkBase, kBasesAtOnce>;

using BasesRow = std::array<float, kBasesAtOnce>;         // [base]
using FactorRows = std::array<BasesRow, kEmissionKinds>;  // [EmissionKind][base]

// Highway 1.0 has no vectors for a processor without SSSE3: loops stand for them there.
#if HWY_TARGET != HWY_SCALAR
constexpr std::size_t kVectorBytes = HWY_HAVE_SCALABLE ? 16 : std::min(HWY_MAX_BYTES, 64);

using RowTag = hn::FixedTag<std::int8_t, kVectorBytes>;
using HiddenTag = hn::FixedTag<std::int16_t, kVectorBytes / 2>;

// No more than the least number of units.
using UnitTag = hn::FixedTag<std::int16_t, std::min<std::size_t>(kVectorBytes, 32) / 2>;
using SumTag = hn::RepartitionToWide<UnitTag>;
using FourSums = hn::FixedTag<std::int32_t, 4>;

HWY_ATTR inline hn::Vec<FourSums> sumOfHalves(hn::Vec<SumTag> x) {
#if HWY_MAX_BYTES >= 32 && !HWY_HAVE_SCALABLE
  const FourSums d;
  return hn::Add(hn::LowerHalf(d, x), hn::UpperHalf(d, x));
#else
  return x;
#endif
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
  return sumOfHalves(hn::Add(lower, upper));
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
      : network_(network),
        units_(static_cast<std::size_t>(network.units)),
        rowsSize_(network.rowsOfOffset() * network.rowStride()) {}

  // networkFactors of eight bases.
  HWY_ATTR void run(const NetworkBases& bases, FactorRows& factors) const {
    HWY_ALIGN Sums sums;
    for (std::size_t four = 0; four < kBasesAtOnce; four += 4) {
      HWY_ALIGN Hidden hidden;
      for (std::size_t b = 0; b < 4; ++b) sumRows(bases[four + b], hidden[b]);
      for (std::size_t k = 0; k < kEmissionKinds; ++k) {
        sumOutputs(hidden, k, sums[k].data() + four);
      }
    }
    raise(sums, factors);
  }

 private:
  using Sums = std::array<std::array<std::int32_t, kBasesAtOnce>, kEmissionKinds>;
  using Hidden = std::int16_t[4][kMostUnits];  // [base][unit]

#if HWY_TARGET == HWY_SCALAR
  void sumRows(const NetworkBase& base, std::int16_t* hidden) const {
    std::copy_n(base.base, units_, hidden);
    const std::int8_t* rows = network_.rows.data();
    for (const int offset : network_.offsets) {
      const std::int8_t* row = rows + base.places[offset];
      for (std::size_t u = 0; u < units_; ++u) {
        hidden[u] = static_cast<std::int16_t>(hidden[u] + row[u]);
      }
      rows += rowsSize_;
    }
    for (std::size_t u = 0; u < units_; ++u) hidden[u] = std::max<std::int16_t>(0, hidden[u]);
  }

  void sumOutputs(const Hidden& hidden, std::size_t kind, std::int32_t* sums) const {
    const std::int16_t* weights = network_.output.data() + kind * units_;
    for (std::size_t b = 0; b < 4; ++b) {
      sums[b] = 0;
      for (std::size_t u = 0; u < units_; ++u) sums[b] += weights[u] * hidden[b][u];
    }
  }
#else
  // Hidden units of a base.
  HWY_ATTR void sumRows(const NetworkBase& base, std::int16_t* hidden) const {
    const RowTag d8;
    const hn::Half<RowTag> half;
    const HiddenTag d;
    const auto zero = hn::Zero(d);
    for (std::size_t u = 0; u < units_; u += kVectorBytes) {
      auto lower = hn::LoadU(d, base.base + u), upper = hn::LoadU(d, base.base + u + hn::Lanes(d));
      const std::int8_t* rows = network_.rows.data() + u;
      auto sum = hn::Zero(d8);
      for (const int offset : network_.offsets) {
        sum = hn::Add(sum, hn::LoadU(d8, rows + base.places[offset]));
        rows += rowsSize_;
      }
      lower = hn::Add(lower, hn::PromoteTo(d, hn::LowerHalf(half, sum)));
      upper = hn::Add(upper, hn::PromoteTo(d, hn::UpperHalf(half, sum)));
      hn::Store(hn::Max(lower, zero), d, hidden + u);
      hn::Store(hn::Max(upper, zero), d, hidden + u + hn::Lanes(d));
    }
  }

  // One output of four bases. All are whole numbers, so any order gives the same sum.
  HWY_ATTR void sumOutputs(const Hidden& hidden, std::size_t kind, std::int32_t* sums) const {
    const UnitTag d;
    const SumTag d32;
    const std::int16_t* weights = network_.output.data() + kind * units_;
    hn::Vec<SumTag> sum[4], odd[4];
    for (std::size_t b = 0; b < 4; ++b) sum[b] = odd[b] = hn::Zero(d32);
    for (std::size_t u = 0; u < units_; u += hn::Lanes(d)) {
      const auto w = hn::LoadU(d, weights + u);
      for (std::size_t b = 0; b < 4; ++b) {
        sum[b] = hn::ReorderWidenMulAccumulate(d32, hn::Load(d, hidden[b] + u), w, sum[b], odd[b]);
      }
    }
    for (std::size_t b = 0; b < 4; ++b) sum[b] = hn::Add(sum[b], odd[b]);
    hn::Store(sumsOf(sum), FourSums(), sums);
  }
#endif

  HWY_ATTR void raise(const Sums& sums, FactorRows& factors) const {
    const hn::CappedTag<float, kBasesAtOnce> d;
    const hn::RebindToSigned<decltype(d)> whole;
    const auto most = hn::Set(d, kMostLogFactor), least = hn::Set(d, -kMostLogFactor);
    const auto scale = hn::Set(d, network_.outputScale);
    for (std::size_t k = 0; k < kEmissionKinds; ++k) {
      const auto bias = hn::Set(d, network_.outputBias[k]);
      for (std::size_t b = 0; b < kBasesAtOnce; b += hn::Lanes(d)) {
        const auto sum = hn::ConvertTo(d, hn::LoadU(whole, sums[k].data() + b));
        const auto x = hn::Add(bias, hn::Mul(scale, sum));
        hn::StoreU(powersOfTwo(d, hn::Max(hn::Min(x, most), least)), d, factors[k].data() + b);
      }
    }
  }

  const WindowNetwork& network_;
  const std::size_t units_;
  const std::size_t rowsSize_;  // of an offset
};

}  // namespace
}  // namespace velto::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
