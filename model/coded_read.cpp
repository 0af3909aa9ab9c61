#include "model/coded_read.h"

#include "core/base_code.h"

namespace velto {
namespace {

constexpr int kBehindRead = 3 * kPairGaps;  // bases up to the last partner of a codon

// Acid and slot of a codon number; entry kCodons stands for no codon.
struct CodonLookup {
  std::array<std::uint8_t, kCodons + 1> acid;
  std::array<std::uint8_t, kCodons + 1> slot;
};

int acidOf(int codon) { return ReadData::CodonTable(codon / 16, codon / 4 % 4, codon % 4); }

CodonSlots makeSlots() {
  CodonSlots slots{};
  std::uint8_t next = 0;
  for (int acid = 0; acid < kAminoAcids; ++acid) {
    slots.first[static_cast<size_t>(acid)] = next;
    for (int codon = 0; codon < kCodons; ++codon) {
      if (acidOf(codon) == acid) slots.slotOf[static_cast<size_t>(codon)] = next++;
    }
  }
  slots.first[kAminoAcids] = next;
  return slots;
}

CodonLookup makeLookup() {
  CodonLookup lookup{};
  lookup.acid.fill(kUncountedAcid);
  for (size_t codon = 0; codon < kCodons; ++codon) {
    lookup.acid[codon] = static_cast<std::uint8_t>(acidOf(static_cast<int>(codon)));
    lookup.slot[codon] = codonSlots().slotOf[codon];
  }
  return lookup;
}

}  // namespace

const CodonSlots& codonSlots() {
  static const CodonSlots slots = makeSlots();
  return slots;
}

void CodedRead::assign(const short* seq, int length) {
  static const CodonLookup lookup = makeLookup();
  const size_t bases = static_cast<size_t>(length);
  acids_.assign(bases + kBehindRead, kUncountedAcid);
  slots_.assign(bases, 0);
  for (size_t p = 0; p + 2 < bases; ++p) {
    const bool known = isKnownBase(seq[p]) && isKnownBase(seq[p + 1]) && isKnownBase(seq[p + 2]);
    const int number = known ? 16 * seq[p] + 4 * seq[p + 1] + seq[p + 2] : kCodons;
    acids_[p] = lookup.acid[static_cast<size_t>(number)];
    slots_[p] = lookup.slot[static_cast<size_t>(number)];
  }
}

}  // namespace velto
