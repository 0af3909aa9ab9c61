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
#if HWY_TARGET == HWY_SCALAR
constexpr std::size_t kUnitLanes = 1;
#else
constexpr std::size_t kUnitLanes = HWY_MAX_BYTES >= 32 && !HWY_HAVE_SCALABLE ? 16 : 8;

using UnitTag = hn::FixedTag<std::int16_t, kUnitLanes>;
using SumTag = hn::RepartitionToWide<UnitTag>;
using FourSums = hn::FixedTag<std::int32_t, 4>;

HWY_ATTR inline hn::Vec<FourSums> toFourSums(hn::Vec<SumTag> x) {
#if HWY_MAX_BYTES >= 32 && !HWY_HAVE_SCALABLE
  const FourSums d;
  return hn::Add(hn::LowerHalf(d, x), hn::UpperHalf(d, x));
#else
  return x;
#endif
}

// The sums of the lanes of four vectors.
HWY_ATTR inline hn::Vec<FourSums> sumsOf(const hn::Vec<FourSums> (&x)[4]) {
  const FourSums d;
  const auto first =
      hn::Add(hn::InterleaveLower(d, x[0], x[1]), hn::InterleaveUpper(d, x[0], x[1]));
  const auto last = hn::Add(hn::InterleaveLower(d, x[2], x[3]), hn::InterleaveUpper(d, x[2], x[3]));
  return hn::Add(hn::ConcatLowerLower(d, last, first), hn::ConcatUpperUpper(d, last, first));
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
        rowNumbers_(network.rowsOfOffset() * units_),
        addUnits_(unitAdder()) {}

  // networkFactors of eight bases.
  HWY_ATTR void run(const NetworkBases& bases, FactorRows& factors) const {
    HWY_ALIGN Sums sums{};
    (this->*addUnits_)(bases, sums);
    raise(sums, factors);
  }

 private:
  using Sums = std::array<std::array<std::int32_t, kBasesAtOnce>, kEmissionKinds>;
  using UnitAdder = void (NetworkKernel::*)(const NetworkBases&, Sums&) const;

  // As many vectors at a time as divide the units.
  UnitAdder unitAdder() const {
    const std::size_t vectors = units_ / kUnitLanes;
    if (vectors % 4 == 0) return &NetworkKernel::addAllUnits<4>;
    if (vectors % 3 == 0) return &NetworkKernel::addAllUnits<3>;
    return vectors % 2 == 0 ? &NetworkKernel::addAllUnits<2> : &NetworkKernel::addAllUnits<1>;
  }

  template <std::size_t kVectors>
  HWY_ATTR void addAllUnits(const NetworkBases& bases, Sums& sums) const {
    for (std::size_t u = 0; u < units_; u += kVectors * kUnitLanes) {
      for (std::size_t four = 0; four < kBasesAtOnce; four += 4) {
        addUnits<kVectors>(bases.data() + four, four, u, sums);
      }
    }
  }

#if HWY_TARGET == HWY_SCALAR
  template <std::size_t kVectors>
  void addUnits(const NetworkBase* bases, std::size_t first, std::size_t u, Sums& sums) const {
    for (std::size_t b = 0; b < 4; ++b) {
      for (std::size_t v = u; v < u + kVectors; ++v) {
        const int hidden = std::max(0, sumOfRows(bases[b], v));
        for (std::size_t k = 0; k < kEmissionKinds; ++k) {
          sums[k][first + b] += network_.output[k * units_ + v] * hidden;
        }
      }
    }
  }

  int sumOfRows(const NetworkBase& base, std::size_t u) const {
    int sum = base.base[u];
    const std::int16_t* rows = network_.rows.data() + u;
    for (const int offset : network_.offsets) {
      sum += rows[base.places[offset]];
      rows += rowNumbers_;
    }
    return sum;
  }
#else
  // Adds the outputs over `kVectors` vectors of hidden units from unit u on. All are whole numbers,
  // so any order gives the same.
  template <std::size_t kVectors>
  HWY_ATTR void addUnits(const NetworkBase* bases, std::size_t first, std::size_t u,
                         Sums& sums) const {
    const UnitTag d;
    const SumTag d32;
    const FourSums d4;
    HWY_ALIGN std::int16_t hidden[4][kVectors * kUnitLanes];
    for (std::size_t b = 0; b < 4; ++b) addRows<kVectors>(bases[b], u, hidden[b]);
    const std::int16_t* weights = network_.output.data() + u;
    for (std::size_t k = 0; k < kEmissionKinds; ++k, weights += units_) {
      hn::Vec<FourSums> part[4];
      for (std::size_t b = 0; b < 4; ++b) {
        auto even = hn::Zero(d32), odd = hn::Zero(d32);
        for (std::size_t v = 0; v < kVectors * kUnitLanes; v += kUnitLanes) {
          even = hn::ReorderWidenMulAccumulate(d32, hn::Load(d, hidden[b] + v),
                                               hn::LoadU(d, weights + v), even, odd);
        }
        part[b] = toFourSums(hn::Add(even, odd));
      }
      std::int32_t* out = sums[k].data() + first;
      hn::Store(hn::Add(hn::Load(d4, out), sumsOf(part)), d4, out);
    }
  }

  template <std::size_t kVectors>
  HWY_ATTR void addRows(const NetworkBase& base, std::size_t u, std::int16_t* hidden) const {
    const UnitTag d;
    hn::Vec<UnitTag> sum[kVectors];
    for (std::size_t v = 0; v < kVectors; ++v) {
      sum[v] = hn::LoadU(d, base.base + u + v * kUnitLanes);
    }
    const std::int16_t* rows = network_.rows.data() + u;
    for (const int offset : network_.offsets) {
      const std::int16_t* row = rows + base.places[offset];
      for (std::size_t v = 0; v < kVectors; ++v) {
        sum[v] = hn::Add(sum[v], hn::LoadU(d, row + v * kUnitLanes));
      }
      rows += rowNumbers_;
    }
    for (std::size_t v = 0; v < kVectors; ++v) {
      hn::Store(hn::Max(sum[v], hn::Zero(d)), d, hidden + v * kUnitLanes);
    }
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
  const std::size_t rowNumbers_;  // of an offset
  const UnitAdder addUnits_;
};

}  // namespace
}  // namespace velto::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
