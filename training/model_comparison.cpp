#include "training/model_comparison.h"

#include <cstdio>
#include <iterator>

#include "evaluation/evaluation_figures.h"
#include "evaluation/model_evaluation.h"
#include "simulation/labelled_read.h"

namespace velto {
namespace {

constexpr long kMinReads = 20;  // of a class
constexpr double kWorse = 0.02;

ReadSet estReads(const TranscriptPool& pool, std::uint64_t seed) {
  std::vector<Transcript> transcripts;
  for (const Transcript* t : pool.coding) transcripts.push_back(*t);
  for (const Transcript* t : pool.noncoding) transcripts.push_back(*t);
  ReadSampling sampling;
  sampling.errors = *presetErrors("est");
  sampling.seed = seed;
  ReadSet set{simulateLabelled(sampling, transcripts), true};
  sampling.lengths = FragmentLengths{300, 800};
  std::vector<LabelledRead> fragments = simulateLabelled(sampling, transcripts);
  set.reads.insert(set.reads.end(), std::make_move_iterator(fragments.begin()),
                   std::make_move_iterator(fragments.end()));
  return set;
}

std::string shown(const FigureValue& figure) {
  char text[16];
  std::snprintf(text, sizeof text, "%.3f", figure.value.value_or(0.0));
  return text;
}

std::string line(const std::string& what, const EvaluationCounts& made,
                 const EvaluationCounts& other, const std::string& otherName) {
  return what + ": frame F1 " + shown(frameF1Of(made)) + ", non-coding reads called " +
         shown(noncodingCalledOf(made)) + "; " + otherName + ": " + shown(frameF1Of(other)) + ", " +
         shown(noncodingCalledOf(other));
}

bool isWorse(const EvaluationCounts& made, const EvaluationCounts& other) {
  const auto f1 = [](const EvaluationCounts& counts) {
    return frameF1Of(counts).value.value_or(0.0);
  };
  return made.reads >= kMinReads && f1(made) <= f1(other) - kWorse;
}

}  // namespace

std::vector<std::string> comparison(const Predictor& made, const Predictor& other,
                                    const std::string& otherName, const TranscriptPool& transcripts,
                                    std::uint64_t seed) {
  const ReadSet reads = estReads(transcripts, seed);
  const ModelEvaluation mine = judgeModel(made, {&reads, 1}).evaluation;
  const ModelEvaluation theirs = judgeModel(other, {&reads, 1}).evaluation;
  std::vector<std::string> lines = {
      line("est reads of held-back transcripts", mine.total, theirs.total, otherName)};
  for (int c = 0; c < kReadClasses; ++c) {
    const auto i = static_cast<std::size_t>(c);
    if (!isWorse(mine.byClass[i], theirs.byClass[i])) continue;
    lines.push_back(line("WORSE in class " + readClassAt(c).name(), mine.byClass[i],
                         theirs.byClass[i], otherName));
  }
  return lines;
}

}  // namespace velto
