// A test sequence with known errors: its changed bases, its marks and its tallies.
#pragma once

#include <vector>

#include "decoder/layout.h"
#include "decoder/tester.h"

namespace velto {

// A coding region in bases of the sequence without errors, first and last base, 0-based; no coding
// region if stop < start.
struct KnownRegion {
  int start;
  int stop;
};

// Applies the errors in list order, each at its position in the sequence as changed so far: kind 0
// doubles the base at pos (an error at the very end doubles the last base), any other kind removes
// it. Positions outside the sequence are passed over. Returns the marks of the changed sequence:
// met; errMark, where a base was inserted or stands behind a removed one; rfm, the frame of the
// region's codons, with the steps of a broken codon in the frame before it; crr, coding where rfm
// is the frame; start and stop, the region in bases of the changed sequence, -1 if there is none.
layout applyErrors(std::vector<short>& seq, const KnownRegion& region,
                   const std::vector<err>& errors);

// Counts over the codons of `frame` (0 to 2) of the sequence, or over those of the layout's rfm for
// -1: the pairs of an amino acid with the one gap + 1 codons behind it, and the neighbouring bases
// inside a codon. Codons with an unknown base are left out.
TestElements tallyElements(const std::vector<short>& seq, const layout& lay, int gap, int frame);

}  // namespace velto
