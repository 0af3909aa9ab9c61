#include "hmm/read_context.h"

#include <algorithm>
#include <array>

namespace velto {
namespace {

void indexWords(std::span<const short> codes, std::vector<std::uint16_t>& fiveMers,
                std::vector<std::uint8_t>& knownRun) {
  fiveMers.resize(codes.size());
  knownRun.resize(codes.size());
  unsigned fiveMer = 0;
  int run = 0;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const bool known = isKnownBase(codes[i]);
    const unsigned code = known ? static_cast<unsigned>(codes[i]) : (7 * i + 3) % 4;
    fiveMer = (fiveMer << 2 | code) % kFiveMers;
    run = known ? std::min(run + 1, kMostLetters) : 0;
    fiveMers[i] = static_cast<std::uint16_t>(fiveMer);
    knownRun[i] = static_cast<std::uint8_t>(run);
  }
}

// What a codon makes of the context of the codons behind it; kOpenFrame: it leaves it.
constexpr std::array<StartContext, kCodons + 1> contextsSet() {
  std::array<StartContext, kCodons + 1> sets{};
  for (CodonIndex codon = 0; codon < kCodons; ++codon) {
    if (isStopCodon(codon)) sets[codon] = kAfterStop;
  }
  sets[codonIndex(0, 1, 2)] = kAfterStart;
  return sets;
}

void indexStarts(std::span<const CodonIndex> codons, std::vector<StartContext>& starts) {
  static constexpr std::array<StartContext, kCodons + 1> kSets = contextsSet();
  starts.resize(codons.size());
  for (std::size_t i = 0; i < codons.size(); ++i) {
    const StartContext set = i < 3 ? kOpenFrame : kSets[codons[i - 3]];
    starts[i] = i < 3 || set != kOpenFrame ? set : starts[i - 3];
  }
}

}  // namespace

void ReadContext::index(std::span<const short> codes) {
  indexWords(codes, fiveMers, knownRun);
  codons.assign(codes.size(), kUnreadCodon);
  for (std::size_t i = 2; i < codes.size(); ++i) {
    codons[i - 2] =
        knownRun[i] >= 3 ? static_cast<CodonIndex>(fiveMers[i] % kCodons) : kUnreadCodon;
  }
  indexStarts(codons, starts);
  compose(codes, blocks);
}

}  // namespace velto
