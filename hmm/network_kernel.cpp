#include "hmm/network_kernel.h"

#include <algorithm>

#include "hmm/row_places.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "hmm/network_kernel.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "hmm/network_kernel-inl.h"

HWY_BEFORE_NAMESPACE();
namespace velto::HWY_NAMESPACE {
namespace {

using Inputs = std::array<float, kDinucleotides>;

// Composition::input of all pairs, operation by operation.
HWY_ATTR Inputs inputsOf(const Composition& composition) {
  const hn::CappedTag<float, kDinucleotides> d;
  const hn::RebindToSigned<decltype(d)> whole;
  Inputs inputs{};
  if (composition.total == 0) return inputs;
  const auto total = hn::Set(d, static_cast<float>(composition.total));
  for (std::size_t pair = 0; pair < inputs.size(); pair += hn::Lanes(d)) {
    const auto count = hn::ConvertTo(d, hn::LoadU(whole, composition.pairs.data() + pair));
    const auto share = hn::Div(hn::Mul(hn::Set(d, 8.0f), count), total);
    hn::StoreU(hn::Sub(share, hn::Set(d, 0.5f)), d, inputs.data() + pair);
  }
  return inputs;
}

// basePart of blocks, operation by operation.
class BasePartKernel {
 public:
  // The weights become floats once for all blocks.
  HWY_ATTR explicit BasePartKernel(const WindowNetwork& network)
      : units_(static_cast<std::size_t>(network.units)), bias_(network.bias.data()) {
    const std::int16_t* weights = network.dinucleotide.data();
    for (auto& row : weights_) {
      for (std::size_t u = 0; u < units_; u += hn::Lanes(d_)) {
        hn::Store(inFloats(weights + u), d_, row + u);
      }
      weights += units_;
    }
  }

  HWY_ATTR void run(const Composition& composition, std::int16_t* units) const {
    const Inputs inputs = inputsOf(composition);
    const std::int16_t* bias = bias_ + static_cast<std::size_t>(composition.gcClass()) * units_;
    constexpr std::size_t kLanesOfUnits = hn::MaxLanes(D());
    std::size_t u = 0;
    for (; u + kSideBySide * kLanesOfUnits <= units_; u += kSideBySide * kLanesOfUnits) {
      sumUnits<kSideBySide>(inputs, bias, u, units);
    }
    for (; u < units_; u += kLanesOfUnits) sumUnits<1>(inputs, bias, u, units);
  }

 private:
  using D = hn::CappedTag<float, 16>;
  static constexpr std::size_t kSideBySide = 3;  // vectors, since each addition waits for the last

  // So many vectors of units from `first` on.
  template <std::size_t kVectors>
  HWY_INLINE HWY_ATTR void sumUnits(const Inputs& inputs, const std::int16_t* bias,
                                    std::size_t first, std::int16_t* units) const {
    constexpr std::size_t kLanesOfUnits = hn::MaxLanes(D());
    hn::Vec<D> sum[kVectors];
    for (std::size_t v = 0; v < kVectors; ++v) sum[v] = inFloats(bias + first + v * kLanesOfUnits);
    for (std::size_t pair = 0; pair < inputs.size(); ++pair) {
      const auto input = hn::Set(d_, inputs[pair]);
      for (std::size_t v = 0; v < kVectors; ++v) {
        const auto weights = hn::Load(d_, weights_[pair] + first + v * kLanesOfUnits);
        sum[v] = hn::Add(sum[v], hn::Mul(weights, input));
      }
    }
    for (std::size_t v = 0; v < kVectors; ++v) {
      hn::StoreU(roundedAndCut(sum[v]), narrow_, units + first + v * kLanesOfUnits);
    }
  }

  HWY_ATTR hn::Vec<hn::Rebind<std::int16_t, D>> roundedAndCut(hn::Vec<D> x) const {
    const auto half = hn::Set(d_, 0.5f);
    const auto away = hn::IfThenElse(hn::Lt(x, hn::Zero(d_)), hn::Sub(x, half), hn::Add(x, half));
    const auto rounded = hn::ConvertTo(whole_, away);
    const auto least = hn::Set(whole_, -kMostBasePart), most = hn::Set(whole_, kMostBasePart);
    return hn::DemoteTo(narrow_, hn::Max(hn::Min(rounded, most), least));
  }

  HWY_ATTR hn::Vec<D> inFloats(const std::int16_t* x) const {
    return hn::ConvertTo(d_, hn::PromoteTo(whole_, hn::LoadU(narrow_, x)));
  }

  const D d_{};
  const hn::RebindToSigned<D> whole_{};
  const hn::Rebind<std::int16_t, D> narrow_{};
  const std::size_t units_;
  const std::int16_t* const bias_;
  HWY_ALIGN float weights_[kDinucleotides][kMostUnits];
};

HWY_ATTR void fillBaseParts(const WindowNetwork& network, std::span<const Composition> blocks,
                            std::int16_t* parts) {
  const BasePartKernel kernel(network);
  for (const Composition& block : blocks) {
    kernel.run(block, parts);
    parts += network.rowStride();
  }
}

// Of a whole read.
struct ReadNetwork {
  const NetworkKernel& kernel;
  const RowPlaces& places;
  const std::int16_t* baseParts;  // [block][unit], partStride apart
  std::size_t partStride;
};

// Factors of the bases from `first` on, the first one of an eight.
HWY_ATTR void runEights(const ReadNetwork& network, std::size_t first, std::span<Factors> factors) {
  std::array<NetworkBases, kEightsAtOnce> eights;
  const std::size_t count = (factors.size() + kBasesAtOnce - 1) / kBasesAtOnce;
  for (std::size_t i = 0; i < count; ++i) {
    static_assert(kCompositionBlock % kBasesAtOnce == 0);
    const std::size_t base = first + i * kBasesAtOnce, block = base / kCompositionBlock;
    eights[i] = {network.places.at(base), 1, {}};
    eights[i].parts.fill(network.baseParts + block * network.partStride);
  }
  HWY_ALIGN FactorRows rows[kEightsAtOnce];
  network.kernel.run(std::span(eights).first(count), rows);
  for (std::size_t b = 0; b < factors.size(); ++b) {
    for (std::size_t k = 0; k < kEmissionKinds; ++k) {
      factors[b][k] = rows[b / kBasesAtOnce][k * kBasesAtOnce + b % kBasesAtOnce];
    }
  }
}

// Behind the read's end, unknown k-mers fill the eight bases up.
HWY_ATTR void fillFactors(const WindowNetwork& network, const ReadContext& context,
                          std::vector<Factors>& factors) {
  Factors ones;
  ones.fill(1.0f);
  factors.assign(context.length(), ones);
  RowPlaces places;
  places.arrange(network, 1, context.length() + kBasesAtOnce);
  places.fill(network, context, 0, 0);
  const std::size_t stride = network.rowStride();
  std::vector<std::int16_t> baseParts(context.blocks.size() * stride);
  fillBaseParts(network, context.blocks, baseParts.data());
  const NetworkKernel kernel(network);
  constexpr std::size_t kBases = kEightsAtOnce * kBasesAtOnce;
  for (std::size_t first = 0; first < factors.size(); first += kBases) {
    const std::size_t count = std::min(kBases, factors.size() - first);
    runEights({kernel, places, baseParts.data(), stride}, first,
              std::span(factors).subspan(first, count));
  }
}

}  // namespace
}  // namespace velto::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace velto {

HWY_EXPORT(fillFactors);
HWY_EXPORT(fillBaseParts);

void networkFactorsInVectors(const WindowNetwork& network, const ReadContext& context,
                             std::vector<Factors>& factors) {
  HWY_DYNAMIC_DISPATCH(fillFactors)(network, context, factors);
}

void basePartsInVectors(const WindowNetwork& network, std::span<const Composition> blocks,
                        std::int16_t* parts) {
  HWY_DYNAMIC_DISPATCH(fillBaseParts)(network, blocks, parts);
}

}  // namespace velto
#endif
