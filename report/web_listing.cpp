#include "report/web_listing.h"

#include <algorithm>
#include <iostream>

namespace velto {
namespace {

// Items a line; the break follows the first item too.
constexpr size_t kMarksPerLine = 500;
constexpr size_t kScoresPerLine = 100;

void breakAfter(std::ostream& out, size_t j, size_t perLine) {
  if (j % perLine == 0) out << "\n";
}

// A short read has fewer codons than steps; only its codons are shown.
void writeMarks(std::ostream& out, const std::vector<int>& met, size_t steps) {
  for (size_t j = 0; j < std::min(steps, met.size()); ++j) {
    out << layoutSymbol(met[j]);
    breakAfter(out, j, kMarksPerLine);
  }
  out << "\n";
}

void writePath(std::ostream& out, const WebPredict& result, int frame, size_t steps) {
  for (size_t j = 0; j < steps; ++j) {
    out << (result.frameAt(static_cast<int>(j)) == frame ? '*' : '-');
    breakAfter(out, j, kMarksPerLine);
  }
  out << "\n";
}

void writeScores(std::ostream& out, const std::vector<double>& scores, size_t steps) {
  for (size_t j = 0; j < steps; ++j) {
    out.precision(3);
    out << (j < scores.size() ? scores[j] : kNoWindowScore) << ",";
    breakAfter(out, j, kScoresPerLine);
  }
}

}  // namespace

void writeWebListing(std::ostream& out, const WebPredict& result) {
  out << result.gcPressure << "%\n";
  for (const std::vector<double>& scores : result.frameScore) out << scores.size() << "\n";
  for (int f = 0; f < 3; ++f) {
    const size_t steps = result.lay.cls[f].size();
    out << f << "atg\n";
    writeMarks(out, result.lay.met[f], steps);
    out << f << "frame\n";
    writePath(out, result, f, steps);
    out << f << "value\n";
    writeScores(out, result.frameScore[f], steps);
  }
  out << "\nexit\n";
}

int WebPredict::OutWebResult() {
  size_t steps = lay.cls[0].size();
  for (int f = 0; f < 3; ++f) {
    steps = std::min(steps, lay.cls[f].size());
    const size_t marked = std::min(steps, lay.met[f].size());
    for (size_t j = 0; j < marked; ++j) {
      if (lay.cls[f][j] == kStopCodon) lay.met[f][j] = kStopCodon;
    }
  }
  writeWebListing(std::cout, *this);
  return 0;
}

}  // namespace velto
