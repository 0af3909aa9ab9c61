// Error rates of bases: those of a file, and by quality.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "velto/velto.h"

namespace velto {

// Probabilities of errors at one base of a read.
struct BaseRates {
  float insertion = 0.0f;     // that it is an extra base, behind a coding one
  float deletion = 0.0f;      // that a base was lost before it
  float substitution = 0.0f;  // that it stands in place of another
};

constexpr std::size_t kQualityBins = 8;

// Rates used before a file was looked at, and for a single read.
constexpr BaseErrorRates kDefaultRates = {0.004, 0.0056, 0.0096};

// The rates of a file's bases. An insertion and a substitution go by the base's own quality, a
// deletion by the lower one of the two beside the gap.
// Insertions and deletions below 5 in 10,000 bases are taken for rarer than they are.
struct FileRates {
  FileRates() : FileRates(kDefaultRates, {}) {}

  // Bins beyond kQualityBins, which no sample gives, count as the last of them.
  FileRates(const BaseErrorRates& meanRates, std::span<const QualityBin> bins);

  BaseRates mean;
  bool byQuality = false;                       // false: every base has the mean rates
  std::array<std::uint8_t, 256> binOf{};        // [Phred value] bin, ascending with quality
  std::array<BaseRates, kQualityBins> ofBin{};  // where byQuality

  // Rates of base i of a read with these qualities; empty: it has none.
  BaseRates at(std::span<const std::uint8_t> phred, std::size_t i) const {
    if (!byQuality || phred.empty()) return mean;
    const std::uint8_t own = binOf[phred[i]];
    const std::uint8_t gap = i == 0 ? own : std::min(own, binOf[phred[i - 1]]);
    return {ofBin[own].insertion, ofBin[gap].deletion, ofBin[own].substitution};
  }
};

}  // namespace velto
