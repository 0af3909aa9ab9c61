#include "draw/lanes.h"

#include <algorithm>
#include <cmath>

namespace velto {
namespace {

constexpr double kNoVote = -10.0;  // at the ends of a read and on stop codons

double meanOf(const std::vector<double>& scores, std::size_t begin, std::size_t end,
              double otherwise) {
  double sum = 0.0;
  int count = 0;
  for (std::size_t i = begin; i < end; ++i) {
    if (scores[i] == kNoVote) continue;
    sum += scores[i];
    ++count;
  }
  return count > 0 ? sum / count : otherwise;
}

std::vector<double> columnMeans(const std::vector<double>& scores, std::size_t columns) {
  std::vector<double> means(columns);
  double before = 0.0;
  for (std::size_t c = 0; c < columns; ++c) {
    before = means[c] =
        meanOf(scores, c * scores.size() / columns, (c + 1) * scores.size() / columns, before);
  }
  return means;
}

double largestOf(const LaneCurves& curves) {
  double most = 0.0;
  for (const std::vector<double>& values : curves.values) {
    for (const double value : values) most = std::max(most, std::abs(value));
  }
  return most > 0.0 ? most : 1.0;
}

// Every run of one frame; the borders lie in the middle of the inserted bases between two runs.
std::vector<FrameRun> framedRuns(const Prediction& prediction) {
  std::vector<FrameRun> runs;
  const int end = std::min(prediction.stop + 1, prediction.length);
  int framedEnd = prediction.start;  // behind the last base that has a frame
  for (int p = prediction.start; p < end; ++p) {
    const int frame = prediction.frame[static_cast<std::size_t>(p)];
    if (frame < 0) continue;
    if (runs.empty()) {
      runs.push_back({static_cast<double>(prediction.start), 0.0, frame});
    } else if (frame != runs.back().frame) {
      const double border = (framedEnd + p) / 2.0;
      runs.back().end = border;
      runs.push_back({border, 0.0, frame});
    }
    framedEnd = p + 1;
  }
  if (!runs.empty()) runs.back().end = end;
  return runs;
}

// Runs over the middle of at least one cell of `cell` bases; the others join the run before, so
// that reads of any length have as many runs as cells at most.
std::vector<FrameRun> withoutShortRuns(const std::vector<FrameRun>& runs, double cell) {
  const auto middlesBefore = [cell](double base) { return std::ceil(base / cell - 0.5); };
  std::vector<FrameRun> kept;
  for (const FrameRun& run : runs) {
    const bool isShort = middlesBefore(run.begin) == middlesBefore(run.end);
    if (!kept.empty() && (isShort || run.frame == kept.back().frame)) {
      kept.back().end = run.end;
    } else {
      kept.push_back(run);
    }
  }
  return kept;
}

}  // namespace

LaneCurves laneCurves(const Prediction& prediction, int mostColumns) {
  LaneCurves curves;
  const std::size_t bases = prediction.scores[0].size();
  if (bases == 0) return curves;
  const std::size_t columns = std::min(bases, static_cast<std::size_t>(mostColumns));
  for (std::size_t f = 0; f < 3; ++f) {
    curves.values[f] = columnMeans(prediction.scores[f], columns);
  }
  curves.isVote = std::isnan(prediction.probability);
  if (curves.isVote) curves.most = largestOf(curves);
  return curves;
}

std::vector<FrameRun> calledRuns(const Prediction& prediction, double cell) {
  return prediction.isCoding() ? withoutShortRuns(framedRuns(prediction), cell)
                               : std::vector<FrameRun>();
}

SignalCodons signalCodons(std::string_view letters, const GeneticCode& code) {
  SignalCodons codons;
  for (std::size_t p = 0; p + 3 <= letters.size(); ++p) {
    const std::string_view codon = letters.substr(p, 3);
    if (code.mayStart(codon)) codons.starts[p % 3].push_back(static_cast<int>(p));
    if (code.mayStop(codon)) codons.stops[p % 3].push_back(static_cast<int>(p));
  }
  return codons;
}

}  // namespace velto
