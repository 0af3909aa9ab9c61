#include "training/held_back_accuracy.h"

#include <cstdio>
#include <iterator>

#include "evaluation/evaluation_figures.h"
#include "simulation/labelled_read.h"

namespace velto {
namespace {

constexpr std::size_t kEst = 0;  // of kJudgedPresets
constexpr long kMinReads = 20;   // of a class
constexpr double kWorse = 0.02;

ReadSet readsOf(const std::vector<Transcript>& transcripts, const char* preset,
                std::uint64_t seed) {
  ReadSampling sampling;
  sampling.errors = *presetErrors(preset);
  sampling.seed = seed;
  ReadSet set{simulateLabelled(sampling, transcripts), true};
  sampling.lengths = FragmentLengths{300, 800};
  std::vector<LabelledRead> fragments = simulateLabelled(sampling, transcripts);
  set.reads.insert(set.reads.end(), std::make_move_iterator(fragments.begin()),
                   std::make_move_iterator(fragments.end()));
  return set;
}

double frameF1(const EvaluationCounts& counts) { return frameF1Of(counts).value.value_or(0.0); }

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
  return made.reads >= kMinReads && frameF1(made) <= frameF1(other) - kWorse;
}

}  // namespace

HeldBackReads heldBackReads(const TranscriptPool& pool, std::uint64_t seed) {
  std::vector<Transcript> transcripts;
  for (const Transcript* t : pool.coding) transcripts.push_back(*t);
  for (const Transcript* t : pool.noncoding) transcripts.push_back(*t);
  HeldBackReads reads;
  for (std::size_t p = 0; p < reads.size(); ++p) {
    reads[p] = readsOf(transcripts, kJudgedPresets[p], seed);
  }
  return reads;
}

HeldBackAccuracy accuracyOn(const HeldBackReads& reads, const Predictor& predictor) {
  HeldBackAccuracy accuracy;
  for (std::size_t p = 0; p < reads.size(); ++p) {
    accuracy[p] = judgeModel(predictor, {&reads[p], 1}).evaluation;
    accuracy[p].decoder = predictor.decoder();
  }
  return accuracy;
}

std::vector<std::string> comparison(const HeldBackAccuracy& made, const HeldBackAccuracy& other,
                                    const std::string& otherName) {
  const std::string decoder = "decoder " + made[kEst].decoder;
  std::vector<std::string> lines;
  for (std::size_t p = 0; p < made.size(); ++p) {
    lines.push_back(line(decoder + ", " + kJudgedPresets[p] + " reads of held-back transcripts",
                         made[p].total, other[p].total, otherName));
  }
  for (int c = 0; c < kReadClasses; ++c) {
    const EvaluationCounts& mine = made[kEst].byClass[static_cast<std::size_t>(c)];
    const EvaluationCounts& theirs = other[kEst].byClass[static_cast<std::size_t>(c)];
    if (!isWorse(mine, theirs)) continue;
    lines.push_back(line("WORSE with " + decoder + " in class " + readClassAt(c).name(), mine,
                         theirs, otherName));
  }
  return lines;
}

}  // namespace velto
