#include "training/frames/vote_files.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "evaluation/evaluation_figures.h"
#include "model/model_file.h"

namespace velto {
namespace {

using Json = nlohmann::ordered_json;

constexpr char kAccuracyMeaning[] = "as velto evaluate counts: inserted bases are not called";

// Rounded to four decimals: more would be noise. 0 where there was nothing to be judged.
double shortened(const FigureValue& figure) {
  return std::round(figure.value.value_or(0.0) * 1e4) / 1e4;
}

Json accuracy(const EvaluationCounts& counts) {
  return {{"reads", counts.reads},
          {"correlation", shortened(correlationOf(counts))},
          {"frame_recall", shortened(frameSensitivityOf(counts))},
          {"frame_precision", shortened(framePrecisionOf(counts))},
          {"frame_f1", shortened(frameF1Of(counts))},
          {"start_and_stop_exact", shortened(bothExactOf(counts))}};
}

Json accuracies(const PresetCounts& counts) {
  const EvaluationCounts& noncoding = counts[kNoncodingReads];
  return {{"est", accuracy(counts[kEstReads])},
          {"mild", accuracy(counts[kMildReads])},
          {"clean", accuracy(counts[kCleanReads])},
          {"noncoding",
           {{"reads", noncoding.reads}, {"called", shortened(noncodingCalledOf(noncoding))}}}};
}

Json ofClass(const TrainedClass& trained, const ReadClass& readClass) {
  const SampleCounts& n = trained.sample;
  return {{"class", readClass.name()},
          {"window", readClass.windowWidth},
          {"length_class", readClass.lengthId},
          {"gc_class", readClass.gcId},
          {"reads", n.reads},
          {"borrowed_reads", n.borrowedReads},
          {"lacked_reads", n.lackedReads},
          {"windows_in_frame", n.windows[0]},
          {"windows_out_of_frame", n.windows[1]},
          {"windows_outside", n.windows[2]},
          {"held_back", accuracies(trained.heldBack)}};
}

PresetCounts sumOfAll(const TrainedVotes& votes) {
  PresetCounts sum;
  for (const TrainedClass& trained : votes) {
    for (std::size_t preset = 0; preset < kSearchPresets; ++preset) {
      sum[preset] += trained.heldBack[preset];
    }
  }
  return sum;
}

void addFiles(const TrainedClass& trained, const ReadClass& readClass,
              std::vector<ModelFile>& files) {
  const ModelTables& tables = trained.tables;
  // The paths of a class begin with the directory and a slash.
  files.push_back({readClass.parameterPath("").substr(1), parameterFileText(tables)});
  files.push_back({readClass.matrixPath("").substr(1), matrixFileText(tables.malkovChain)});
}

std::string borrowing(const SampleCounts& counts, const ReadClass& readClass) {
  return "class " + readClass.name() + " has " + std::to_string(counts.reads) +
         " reads of its own and borrowed " + std::to_string(counts.borrowedReads) +
         " from other classes of GC content: expect it to do worse";
}

}  // namespace

TrainedDecoder voteFiles(const TrainedVotes& votes) {
  TrainedDecoder made{"vote", {}, "", {}};
  Json classes = Json::array();
  for (int c = 0; c < kReadClasses; ++c) {
    const TrainedClass& trained = votes[static_cast<std::size_t>(c)];
    const ReadClass readClass = readClassAt(c);
    addFiles(trained, readClass, made.files);
    classes.push_back(ofClass(trained, readClass));
    if (trained.sample.lackedReads) made.remarks.push_back(borrowing(trained.sample, readClass));
  }
  const Json card = {{"accuracy", kAccuracyMeaning},
                     {"held_back", accuracies(sumOfAll(votes))},
                     {"classes", classes}};
  made.card = card.dump();
  return made;
}

}  // namespace velto
