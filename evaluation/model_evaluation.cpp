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

// The sample that scan learns from is about as large.
constexpr std::size_t kSampleReads = 4096;
constexpr std::size_t kSampleBases = 4'000'000;

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
                       RateSeries series) {
  JudgedModel judged;
  for (const ReadSet& set : sets) {
    const Predictor ofSet = fitted(predictor, set.reads);
    const auto predict = [&ofSet](const LabelledRead& read) {
      static thread_local Workspace workspace;
      return ofSet.predict(read.bases, read.qualities, workspace);
    };
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
