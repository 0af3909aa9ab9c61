#include "hmm/read_context.h"

#include <algorithm>
#include <array>

namespace velto {
namespace {

// The bases of a read behind as many as a word reaches back, all unknown; loops over it have no
// branches, so that compilers make vectors of them.
struct PaddedRead {
  explicit PaddedRead(std::span<const short> read)
      : codes(kReach + read.size()), known(kReach + read.size()) {
    for (std::size_t i = 0; i < read.size(); ++i) {
      codes[kReach + i] = static_cast<std::uint8_t>(read[i] & 3);
      known[kReach + i] = isKnownBase(read[i]) ? 1 : 0;
    }
    eachUnknownBase(std::span(known).subspan(kReach), [this](std::size_t i) {
      codes[kReach + i] = static_cast<std::uint8_t>(3 - i % 4);  // (7 i + 3) mod 4
    });
  }

  static constexpr std::size_t kReach = kMostLetters - 1;
  std::vector<std::uint8_t> codes;  // 0 to 3
  std::vector<std::uint8_t> known;  // 1 or 0
};

void indexWords(const PaddedRead& read, std::span<std::uint16_t> fiveMers) {
  for (std::size_t i = 0; i < fiveMers.size(); ++i) {
    const std::uint8_t* c = read.codes.data() + i;
    fiveMers[i] = static_cast<std::uint16_t>(c[0] << 8 | c[1] << 6 | c[2] << 4 | c[3] << 2 | c[4]);
  }
}

void countKnown(const PaddedRead& read, std::span<std::uint8_t> knownRun) {
  for (std::size_t i = 0; i < knownRun.size(); ++i) {
    const std::uint8_t* known = read.known.data() + i;
    const int two = known[4] & known[3], three = two & known[2], four = three & known[1];
    knownRun[i] = static_cast<std::uint8_t>(known[4] + two + three + four + (four & known[0]));
  }
}

void indexCodons(std::span<const std::uint16_t> fiveMers, std::span<const std::uint8_t> knownRun,
                 std::span<CodonIndex> codons) {
  for (std::size_t end = 2; end < codons.size(); ++end) {
    const auto codon = static_cast<CodonIndex>(fiveMers[end] % kCodons);
    codons[end - 2] = knownRun[end] >= 3 ? codon : kUnreadCodon;
  }
}

// The context of the codons behind a codon is (that of the codon itself & kept) | set.
struct ContextChange {
  std::uint8_t kept = 0xff;
  std::uint8_t set = kOpenFrame;
};

constexpr std::array<ContextChange, kCodons + 1> contextChanges() {
  std::array<ContextChange, kCodons + 1> changes{};
  for (CodonIndex codon = 0; codon < kCodons; ++codon) {
    if (isStopCodon(codon)) changes[codon] = {0, kAfterStop};
  }
  changes[codonIndex(0, 1, 2)] = {0, kAfterStart};
  return changes;
}

void indexStarts(std::span<const CodonIndex> codons, std::vector<StartContext>& starts) {
  static constexpr std::array<ContextChange, kCodons + 1> kChanges = contextChanges();
  starts.assign(codons.size(), kOpenFrame);
  for (std::size_t i = 3; i < codons.size(); ++i) {
    const ContextChange change = kChanges[codons[i - 3]];
    starts[i] = static_cast<StartContext>((starts[i - 3] & change.kept) | change.set);
  }
}

}  // namespace

void ReadContext::index(std::span<const short> codes) {
  const PaddedRead read(codes);
  fiveMers.resize(codes.size());
  knownRun.resize(codes.size());
  indexWords(read, fiveMers);
  countKnown(read, knownRun);
  codons.assign(codes.size(), kUnreadCodon);
  indexCodons(fiveMers, knownRun, codons);
  indexStarts(codons, starts);
  compose(codes, blocks);
}

}  // namespace velto
