// The boosted vote over one window: the definition, recomputing every hypothesis.
#pragma once

#include "model/model_tables.h"
#include "model/window_sample.h"

namespace velto {

// Class codes of a scored window; the full table of codes stands in decoder/layout.h.
constexpr int kCodingWindow = -10;
constexpr int kNonCodingWindow = -1;

// Turns a count of codons into a count of bases.
constexpr double kBasesPerCodon = 3.0;

// True if hypothesis i of the model is counted: a known kind, indices inside their tables, and an
// entry in the threshold tables.
bool isCounted(const ModelTables& tables, size_t i);

// Value v of the feature of a counted hypothesis of kind 0 from the counts of its codon and of that
// codon's amino acid: the codon's share, or the uniform share when the amino acid is absent.
double codonFeature(const fnlHypo& hypothesis, short codonCount, short acidCount);

// Value v of the feature of a counted hypothesis of kind 3 from the three counts and the window
// length L in bases: (observed pair frequency / frequency of first) / frequency of second.
double pairFeature(const ModelTables& tables, const fnlHypo& hypothesis, short pairCount,
                   short firstCount, short secondCount, int windowLength);

// The sum of the votes in the order of fh; above 0 means coding. 0.0 for an empty model.
double voteSum(const ModelTables& tables, const smplTestData& sample);
double voteSum(const ModelTables& tables, const smplData& sample);

// Class of a vote sum: coding above 0, otherwise (zero and not-a-number too) non-coding.
inline int windowClass(double sum) { return sum > 0.0 ? kCodingWindow : kNonCodingWindow; }

}  // namespace velto
