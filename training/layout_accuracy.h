// How well predicted window classes agree with known ones.
#pragma once

#include <ostream>
#include <vector>

#include "decoder/layout.h"

namespace velto {

// Codon steps of all frames of all layouts.
struct LayoutAccuracy {
  int coding = 0;          // known coding (crr)
  int codingFound = 0;     // of these, predicted coding (cls)
  int nonCoding = 0;       // known non-coding, as far as cls reaches
  int nonCodingFound = 0;  // of these, predicted non-coding

  // Not a number where nothing was known.
  double sensitivity() const;
  double specificity() const;
  double correlation() const;  // -1 to 1
};

LayoutAccuracy layoutAccuracy(const std::vector<layout>& layouts);

// Writes one line in the present precision of `out`. Its spelling is fixed.
void writeAccuracy(std::ostream& out, const LayoutAccuracy& accuracy);

}  // namespace velto
