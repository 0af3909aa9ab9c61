#include "decoder/base_scores.h"

namespace velto {
namespace {

// Codon step whose score base i shows; -1 for none.
int shownStep(int i, int frame, int length) {
  const int lastCodon = 3 * (length / 3) - 3;
  if (i < 3) return i >= frame ? 0 : -1;
  if (i < lastCodon) return (i - frame) / 3;
  return i / 3 - (frame == 2 ? 2 : 1);
}

}  // namespace

std::vector<double> baseScores(const std::vector<double>& stepScores, int frame, int length) {
  std::vector<double> scores(static_cast<std::size_t>(length));
  for (int i = 0; i < length; ++i) {
    const int step = shownStep(i, frame, length);
    if (step < 0 || static_cast<std::size_t>(step) >= stepScores.size()) continue;
    scores[static_cast<std::size_t>(i)] = stepScores[static_cast<std::size_t>(step)];
  }
  return scores;
}

}  // namespace velto
