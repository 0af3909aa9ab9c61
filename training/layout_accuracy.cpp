#include "training/layout_accuracy.h"

#include <iostream>

#include "core/class_correlation.h"
#include "decoder/tester.h"

namespace velto {
namespace {

bool holds(const std::vector<int>& codes, size_t step, int code) {
  return step < codes.size() && codes[step] == code;
}

// The product as the counts' type holds it.
int wrappedProduct(int a, int b) {
  return static_cast<int>(static_cast<unsigned>(a) * static_cast<unsigned>(b));
}

}  // namespace

LayoutAccuracy layoutAccuracy(const std::vector<layout>& layouts) {
  LayoutAccuracy accuracy;
  for (const layout& lay : layouts) {
    for (int f = 0; f < 3; ++f) {
      const std::vector<int>& known = lay.crr[f];
      const std::vector<int>& predicted = lay.cls[f];
      for (size_t j = 0; j < known.size(); ++j) {
        if (known[j] != kCodingWindow) continue;
        ++accuracy.coding;
        if (holds(predicted, j, kCodingWindow)) ++accuracy.codingFound;
      }
      // Bounded by the predicted classes, other than the loop above, on purpose.
      for (size_t j = 0; j < predicted.size(); ++j) {
        if (!holds(known, j, kNonCodingWindow)) continue;
        ++accuracy.nonCoding;
        if (predicted[j] == kNonCodingWindow) ++accuracy.nonCodingFound;
      }
    }
  }
  return accuracy;
}

double LayoutAccuracy::sensitivity() const { return static_cast<double>(codingFound) / coding; }

double LayoutAccuracy::specificity() const {
  return static_cast<double>(nonCodingFound) / nonCoding;
}

double LayoutAccuracy::correlation() const {
  const int tp = codingFound;
  const int tn = nonCodingFound;
  const int fn = coding - tp;
  const int fp = nonCoding - tn;
  const double sums[4] = {static_cast<double>(tp + fn), static_cast<double>(tn + fp),
                          static_cast<double>(tp + fp), static_cast<double>(tn + fn)};
  return classCorrelation(static_cast<double>(tp) * tn, wrappedProduct(fn, fp), sums);
}

void writeAccuracy(std::ostream& out, const LayoutAccuracy& accuracy) {
  out << "sensitivity" << accuracy.sensitivity() << ":specifisity" << accuracy.specificity()
      << ":cc " << accuracy.correlation() << "\n";
}

void Test::CHKLayout() { writeAccuracy(std::cout, layoutAccuracy(*layoutList)); }

}  // namespace velto
