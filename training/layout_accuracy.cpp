#include "training/layout_accuracy.h"

#include <cmath>
#include <iostream>

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

// (TP TN - FN FP) / sqrt((TP + FN) (TN + FP) (TP + FP) (TN + FN)), each term divided on its own.
double LayoutAccuracy::correlation() const {
  const int tp = codingFound;
  const int tn = nonCodingFound;
  const int fn = coding - tp;
  const int fp = nonCoding - tn;
  const auto divided = [&](double term) {
    const auto root = [](int sum) { return std::sqrt(static_cast<double>(sum)); };
    return term / root(tp + fn) / root(tn + fp) / root(tp + fp) / root(tn + fn);
  };
  return divided(static_cast<double>(tp) * tn) - divided(wrappedProduct(fn, fp));
}

void writeAccuracy(std::ostream& out, const LayoutAccuracy& accuracy) {
  out << "sensitivity" << accuracy.sensitivity() << ":specifisity" << accuracy.specificity()
      << ":cc " << accuracy.correlation() << "\n";
}

void Test::CHKLayout() { writeAccuracy(std::cout, layoutAccuracy(*layoutList)); }

}  // namespace velto
