// The score of a model against the error rate of the reads.
#pragma once

#include <vector>

#include "evaluation/evaluation.h"
#include "evaluation/evaluation_report.h"

namespace velto {

// Shares of the insertion and deletion rates at which simulated reads are evaluated, ascending.
std::vector<double> indelShares(const ErrorRates& rates);

// The point of one set of reads. Reads without coding bases give a rate of 0.
RatePoint ratePoint(const EvaluationCounts& counts);

// The points of given reads, sorted by their own rate of frameshifts per 100 coding bases: none, up
// to 0.5, up to 1, up to 2, and more. Reads without coding bases and empty groups are left out.
std::vector<RatePoint> ratePointsOfReads(const std::vector<ReadEvaluation>& evaluations);

}  // namespace velto
