// How the bases that are called agree with those that are truly coding.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace velto {

// Counts of bases, of one read or of many. A base is truly coding, or called, when it belongs to a
// codon: inserted bases are neither.
struct ConfusionCounts {
  long bases = 0;
  long coding = 0;   // truly coding
  long called = 0;   // called coding
  long both = 0;     // truly coding and called
  long inFrame = 0;  // of `both`, those whose called frame is the true one

  long neither() const { return bases - coding - called + both; }  // not coding and not called

  // Of truly coding and called, -1 to 1; empty where one of them has all bases or none.
  std::optional<double> correlation() const;

  ConfusionCounts& operator+=(const ConfusionCounts& other);
};

// Counts of one read from its frames per base, -1 for bases that are not coding, or not called.
// `called` is as long as `known`, or empty when nothing was called.
ConfusionCounts countBases(std::span<const std::int8_t> known, std::span<const std::int8_t> called);

}  // namespace velto
