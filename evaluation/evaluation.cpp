#include "evaluation/evaluation.h"

#include <tbb/parallel_for.h>

#include <unordered_map>

namespace velto {
namespace {

ReadEvaluation evaluateRead(const LabelledRead& read, const PredictRead& predict) {
  const Prediction called = predict(read);
  return {countRead(read.truth, called), shiftDistances(read.truth, called, kDistanceReach)};
}

}  // namespace

std::vector<ReadEvaluation> evaluateReads(const std::vector<LabelledRead>& reads,
                                          const PredictRead& predict) {
  std::vector<ReadEvaluation> evaluations(reads.size());
  tbb::parallel_for(std::size_t{0}, reads.size(),
                    [&](std::size_t i) { evaluations[i] = evaluateRead(reads[i], predict); });
  return evaluations;
}

EvaluationCounts totalOf(const std::vector<ReadEvaluation>& evaluations) {
  EvaluationCounts total;
  for (const ReadEvaluation& evaluation : evaluations) total += evaluation.counts;
  return total;
}

std::vector<EvaluationCounts> totalsByClass(const std::vector<LabelledRead>& reads,
                                            const std::vector<ReadEvaluation>& evaluations) {
  std::vector<EvaluationCounts> totals(kReadClasses);
  for (std::size_t i = 0; i < reads.size(); ++i) {
    totals[static_cast<std::size_t>(readClassIndex(reads[i].readClass()))] += evaluations[i].counts;
  }
  return totals;
}

std::vector<EvaluationCounts> totalsByTranscript(const std::vector<LabelledRead>& reads,
                                                 const std::vector<ReadEvaluation>& evaluations) {
  std::vector<EvaluationCounts> totals;
  std::unordered_map<std::string, std::size_t> places;
  for (std::size_t i = 0; i < reads.size(); ++i) {
    const auto place = places.emplace(reads[i].truth.transcript, totals.size()).first->second;
    if (place == totals.size()) totals.emplace_back();
    totals[place] += evaluations[i].counts;
  }
  return totals;
}

}  // namespace velto
