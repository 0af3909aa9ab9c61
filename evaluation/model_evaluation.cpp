#include "evaluation/model_evaluation.h"

#include "evaluation/evaluation.h"
#include "evaluation/rate_series.h"
#include "predict/learning_sample.h"

namespace velto {
namespace {

// The reads of one set and what was made of them.
struct JudgedSet {
  const std::vector<LabelledRead>& reads;
  std::vector<ReadEvaluation> evaluations;

  std::vector<EvaluationCounts> byTranscript(const ReadPlaces& places) const {
    return totalsByTranscript(reads, evaluations, places);
  }
};

void addWholeSet(const JudgedSet& set, JudgedModel& judged) {
  ModelEvaluation& model = judged.evaluation;
  judged.byTranscript = set.byTranscript(allPlaces(set.reads));
  model.total = totalOf(judged.byTranscript);
  for (const ReadPlaces& places : placesByClass(set.reads)) {
    model.byClass.push_back(totalOf(set.byTranscript(places)));
  }
  for (const ReadEvaluation& read : set.evaluations) {
    model.shiftDistances.insert(model.shiftDistances.end(), read.shiftDistances.begin(),
                                read.shiftDistances.end());
  }
}

void addClassIntervals(const JudgedSet& set, std::uint64_t seed, ModelEvaluation& model) {
  for (const ReadPlaces& places : placesByClass(set.reads)) {
    model.classIntervals.push_back(figureIntervals(set.byTranscript(places), seed));
  }
}

void addRatePoint(const JudgedSet& set, const ReadPlaces& places, std::uint64_t seed,
                  ModelEvaluation& model) {
  const std::vector<EvaluationCounts> byTranscript = set.byTranscript(places);
  const EvaluationCounts total = totalOf(byTranscript);
  model.byRate.push_back({shiftsPer100(total), total, figureIntervals(byTranscript, seed)});
}

void addSeries(const JudgedSet& set, bool isWhole, const RateSeries& series,
               ModelEvaluation& model) {
  if (series.points == RatePoints::kNone) return;
  if (isWhole) addClassIntervals(set, series.seed, model);
  if (series.points == RatePoints::kSets) {
    addRatePoint(set, allPlaces(set.reads), series.seed, model);
  } else if (isWhole) {
    for (const ReadPlaces& places : placesByRate(set.evaluations)) {
      addRatePoint(set, places, series.seed, model);
    }
  }
}

// Fitted to the reads as scan fits to a file.
Predictor fitted(const Predictor& predictor, const std::vector<LabelledRead>& reads) {
  std::vector<Read> sample;
  std::size_t bases = 0;
  for (const LabelledRead& read : reads) {
    if (sample.size() >= kSampleReads || bases >= kSampleBases) break;
    sample.push_back({read.bases, read.qualities});
    bases += read.bases.size();
  }
  return predictor.calibrated(predictor.learn(sample));
}

}  // namespace

JudgedModel judgeModel(const Predictor& predictor, std::span<const ReadSet> sets,
                       const RateSeries& series) {
  JudgedModel judged;
  for (const ReadSet& set : sets) {
    const Predictor ofSet = fitted(predictor, set.reads);
    const auto predict = [&ofSet](const LabelledRead& read) {
      static thread_local Workspace workspace;
      return ofSet.predict(read.bases, read.qualities, workspace);
    };
    const JudgedSet judgedSet{set.reads, evaluateReads(set.reads, predict)};
    if (set.isWhole) addWholeSet(judgedSet, judged);
    addSeries(judgedSet, set.isWhole, series, judged.evaluation);
  }
  return judged;
}

}  // namespace velto
