#include "evaluation/model_evaluation.h"

#include "evaluation/evaluation.h"
#include "evaluation/rate_series.h"

namespace velto {
namespace {

void addWholeSet(const std::vector<LabelledRead>& reads,
                 const std::vector<ReadEvaluation>& evaluations, JudgedModel& judged) {
  ModelEvaluation& model = judged.evaluation;
  model.total = totalOf(evaluations);
  model.byClass = totalsByClass(reads, evaluations);
  for (const ReadEvaluation& read : evaluations) {
    model.shiftDistances.insert(model.shiftDistances.end(), read.shiftDistances.begin(),
                                read.shiftDistances.end());
  }
  judged.byTranscript = totalsByTranscript(reads, evaluations);
}

}  // namespace

JudgedModel judgeModel(const Predictor& predictor, std::span<const ReadSet> sets,
                       RateSeries series) {
  const auto predict = [&predictor](const LabelledRead& read) {
    static thread_local Workspace workspace;
    return predictor.predict(read.bases, read.qualities, workspace);
  };
  JudgedModel judged;
  for (const ReadSet& set : sets) {
    const std::vector<ReadEvaluation> evaluations = evaluateReads(set.reads, predict);
    if (set.isWhole) addWholeSet(set.reads, evaluations, judged);
    if (series == RateSeries::kSets) {
      judged.evaluation.byRate.push_back(ratePoint(totalOf(evaluations)));
    } else if (series == RateSeries::kReads && set.isWhole) {
      judged.evaluation.byRate = ratePointsOfReads(evaluations);
    }
  }
  return judged;
}

}  // namespace velto
