#include "evaluation/evaluation.h"

#include <tbb/parallel_for.h>

#include <numeric>
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

EvaluationCounts totalOf(const std::vector<EvaluationCounts>& parts) {
  EvaluationCounts total;
  for (const EvaluationCounts& part : parts) total += part;
  return total;
}

ReadPlaces allPlaces(const std::vector<LabelledRead>& reads) {
  ReadPlaces places(reads.size());
  std::iota(places.begin(), places.end(), 0U);
  return places;
}

std::vector<ReadPlaces> placesByClass(const std::vector<LabelledRead>& reads) {
  std::vector<ReadPlaces> places(kReadClasses);
  for (std::uint32_t i = 0; i < reads.size(); ++i) {
    places[static_cast<std::size_t>(readClassIndex(reads[i].readClass()))].push_back(i);
  }
  return places;
}

std::vector<EvaluationCounts> totalsByTranscript(const std::vector<LabelledRead>& reads,
                                                 const std::vector<ReadEvaluation>& evaluations,
                                                 const ReadPlaces& places) {
  std::vector<EvaluationCounts> totals;
  std::unordered_map<std::string, std::size_t> ofTranscript;
  for (const std::uint32_t i : places) {
    const auto k = ofTranscript.emplace(reads[i].truth.transcript, totals.size()).first->second;
    if (k == totals.size()) totals.emplace_back();
    totals[k] += evaluations[i].counts;
  }
  return totals;
}

}  // namespace velto
