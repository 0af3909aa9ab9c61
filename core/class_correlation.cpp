#include "core/class_correlation.h"

#include <cmath>

namespace velto {

double classCorrelation(double tpTn, double fnFp, const double (&sums)[4]) {
  for (const double sum : sums) {
    const double root = std::sqrt(sum);
    tpTn /= root;
    fnFp /= root;
  }
  return tpTn - fnFp;
}

}  // namespace velto
