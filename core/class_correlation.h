// How well two classings agree.
#pragma once

namespace velto {

// Correlation of two classings, -1 to 1: (TP TN - FN FP) over the roots of the four sums TP + FN,
// TN + FP, TP + FP and TN + FN, each of the two terms divided on its own. Not a number where a sum
// is 0.
double classCorrelation(double tpTn, double fnFp, const double (&sums)[4]);

}  // namespace velto
