// The score of a model against the error rate of the reads.
#pragma once

#include <vector>

#include "evaluation/evaluation.h"

namespace velto {

// Shares of the insertion and deletion rates at which simulated reads are evaluated, ascending.
std::vector<double> indelShares(const ErrorRates& rates);

// True frameshifts per 100 coding bases; 0 without coding bases.
double shiftsPer100(const EvaluationCounts& counts);

// Given reads sorted by their own rate of frameshifts per 100 coding bases: none, up to 0.5, up to
// 1, up to 2, and more. Reads without coding bases and empty groups are left out.
std::vector<ReadPlaces> placesByRate(const std::vector<ReadEvaluation>& evaluations);

}  // namespace velto
