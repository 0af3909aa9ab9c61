#include "training/frames/read_accuracy.h"

#include <algorithm>
#include <cmath>

namespace velto {
namespace {

double ratio(long part, long whole) {
  return whole == 0 ? 0.0 : static_cast<double>(part) / static_cast<double>(whole);
}

}  // namespace

void AccuracyTally::add(const AccuracyTally& other) {
  reads += other.reads;
  readsCalled += other.readsCalled;
  bases += other.bases;
  coding += other.coding;
  called += other.called;
  codingCalled += other.codingCalled;
  inFrame += other.inFrame;
  wholeRegions += other.wholeRegions;
  exactRegions += other.exactRegions;
}

double AccuracyTally::frameRecall() const { return ratio(inFrame, coding); }
double AccuracyTally::framePrecision() const { return ratio(inFrame, called); }
double AccuracyTally::frameF1() const { return ratio(2 * inFrame, coding + called); }
double AccuracyTally::callRate() const { return ratio(readsCalled, reads); }
double AccuracyTally::exactRate() const { return ratio(exactRegions, wholeRegions); }

double AccuracyTally::correlation() const {
  const double tp = static_cast<double>(codingCalled);
  const double fp = static_cast<double>(called - codingCalled);
  const double fn = static_cast<double>(coding - codingCalled);
  const double tn = static_cast<double>(bases) - tp - fp - fn;
  const double square = (tp + fp) * (tp + fn) * (tn + fp) * (tn + fn);
  return square <= 0.0 ? 0.0 : (tp * tn - fp * fn) / std::sqrt(square);
}

void tallyRead(const SimulatedRead& truth, const std::vector<int>& path, const CodingRegion& region,
               AccuracyTally& tally) {
  ++tally.reads;
  tally.bases += truth.length();
  tally.coding += std::count_if(truth.frame.begin(), truth.frame.end(),
                                [](signed char frame) { return frame >= 0; });
  const bool whole = truth.startInside && truth.stopInside;
  if (whole) ++tally.wholeRegions;
  if (region.start < 0) return;
  ++tally.readsCalled;
  if (whole && region.start == truth.start && region.stop == truth.stop) ++tally.exactRegions;
  int next = region.start;  // first base not yet counted
  for (int step = region.start / 3; next <= region.stop; ++step) {
    const int frame = path[static_cast<std::size_t>(step)];
    for (; next < 3 * step + frame + 3; ++next) {
      const int truly = truth.frame[static_cast<std::size_t>(next)];
      ++tally.called;
      if (truly >= 0) ++tally.codingCalled;
      if (truly == frame) ++tally.inFrame;
    }
  }
}

}  // namespace velto
