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
// Steps of so many eights of bases follow each other, so that none waits for the step before.
constexpr std::size_t kEightsAtOnce = 16;

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

#if HWY_TARGET != HWY_SCALAR
using RowSums = std::int8_t[4][kUnitsAtOnce];  // [base][unit]

// Adds up the rows of units from `first` on around four bases, offset by offset: between steps,
// which wait for memory, a processor computes other things.
class RowAdder {
 public:
  HWY_ATTR RowAdder(const WindowNetwork& network, std::size_t first, const NetworkBases& bases,
                    std::size_t four)
      : rows_(network.rows.data() + first),
        rowsSize_(network.rowsSize()),
        offset_(network.offsets.data()),
        end_(offset_ + network.offsets.size()),
        places_(bases.places + four),
        placeStep_(bases.step) {
    for (auto& x : sum_) x = hn::Zero(RowTag());
  }

  // Adds the rows of the next offset, if there is one.
  HWY_INLINE HWY_ATTR void step() {
    if (offset_ == end_) return;
    const std::uint32_t* places = places_ + *offset_++ * placeStep_;
    for (std::size_t b = 0; b < 4; ++b) {
      sum_[b] = hn::Add(sum_[b], hn::LoadU(RowTag(), rows_ + places[b]));
    }
    rows_ += rowsSize_;
  }

  // Adds all other rows.
  HWY_INLINE HWY_ATTR void finish(RowSums& sums) {
    while (offset_ != end_) step();
    for (std::size_t b = 0; b < 4; ++b) hn::Store(sum_[b], RowTag(), sums[b]);
  }

 private:
  hn::Vec<RowTag> sum_[4];
  const std::int8_t* rows_;  // of the next offset
  const std::size_t rowsSize_;
  const int* offset_;
  const int* const end_;
  const std::uint32_t* const places_;
  const std::ptrdiff_t placeStep_;
};
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

  // Factors of the bases, eight by eight, at most kEightsAtOnce of them.
  HWY_ATTR void run(std::span<const NetworkBases> eights, FactorRows* factors) const {
    HWY_ALIGN OutputSums sums[kEightsAtOnce];
    for (std::size_t u = 0; u < units_; u += kUnitsAtOnce) addOutputs(eights, u, sums);
    for (std::size_t i = 0; i < eights.size(); ++i) raise(sums[i], factors[i]);
  }

 private:
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

#if HWY_TARGET == HWY_SCALAR
  using RowSums = std::int8_t[kBasesAtOnce][kUnitsAtOnce];  // [base][unit]

  // What the units from `first` on add to the outputs, which the first units set. Inlined, it takes
  // twice the time.
  HWY_NOINLINE void addOutputs(std::span<const NetworkBases> eights, std::size_t first,
                               OutputSums* sums) const {
    for (const NetworkBases& bases : eights) {
      RowSums rows = {};
      sumRows(bases, first, rows);
      if (first == 0) sums->fill(0);
      addOutputsOf(bases, first, rows, *sums);
      ++sums;
    }
  }

  void sumRows(const NetworkBases& bases, std::size_t first, RowSums& sums) const {
    for (std::size_t b = 0; b < kBasesAtOnce; ++b) {
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

  void addOutputsOf(const NetworkBases& bases, std::size_t first, const RowSums& rows,
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
  // What the units from `first` on add to the outputs, which the first units set: four bases at a
  // time, while the rows of the next four are added up. Not a part of its callers, which would
  // leave it too few registers.
  template <std::size_t kSixteens = kUnitsAtOnce / 16>
  HWY_NOINLINE HWY_ATTR void addOutputs(std::span<const NetworkBases> eights, std::size_t first,
                                        OutputSums* sums) const {
    if constexpr (kSixteens > 1) {
      const bool areFewer = units_ - first < kSixteens * 16;
      if (areFewer) return addOutputs<kSixteens - 1>(eights, first, sums);
    }
    HWY_ALIGN RowSums rows;
    RowAdder(network_, first, eights.front(), 0).finish(rows);
    for (std::size_t i = 0; i < eights.size(); ++i) {
      RowAdder last(network_, first, eights[i], 4);
      addOutputsOf<kSixteens>(eights[i], 0, first, rows, last, sums[i]);
      last.finish(rows);
      RowAdder next(network_, first, eights[std::min(i + 1, eights.size() - 1)], 0);
      addOutputsOf<kSixteens>(eights[i], 4, first, rows, next, sums[i]);
      next.finish(rows);
    }
  }

  // All are whole numbers, so any order gives the same sum.
  template <std::size_t kSixteens>
  HWY_INLINE HWY_ATTR void addOutputsOf(const NetworkBases& bases, std::size_t four,
                                        std::size_t first, const RowSums& rows, RowAdder& next,
                                        OutputSums& sums) const {
    const UnitTag d;
    const SumTag d32;
    const FourSums fourSums;
    constexpr std::size_t kLanesOfUnits = hn::MaxLanes(UnitTag());
    constexpr std::size_t kVectors = kSixteens * 16 / kLanesOfUnits;
    hn::Vec<UnitTag> hidden[4][kVectors];
    for (std::size_t b = 0; b < 4; ++b) {
      for (std::size_t v = 0; v < kVectors; ++v) {
        const std::size_t u = v * kLanesOfUnits;
        hidden[b][v] = hiddenUnits(rows[b] + u, bases.parts[four + b] + first + u);
      }
    }
    const std::int16_t* weights = network_.output.data() + first;
    for (std::size_t k = 0; k < kEmissionKinds; ++k, weights += units_) {
      next.step();
      hn::Vec<SumTag> sum[4];
      for (std::size_t b = 0; b < 4; ++b) {
        auto even = hn::Zero(d32), odd = hn::Zero(d32);
        for (std::size_t v = 0; v < kVectors; ++v) {
          const auto weight = hn::LoadU(d, weights + v * kLanesOfUnits);
          even = hn::ReorderWidenMulAccumulate(d32, hidden[b][v], weight, even, odd);
        }
        sum[b] = hn::Add(even, odd);
      }
      next.step();
      std::int32_t* out = sums.data() + k * kBasesAtOnce + four;
      const auto four32 = sumsOf(sum);
      hn::Store(first == 0 ? four32 : hn::Add(hn::Load(fourSums, out), four32), fourSums, out);
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
