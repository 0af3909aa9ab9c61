#include "evaluation/evaluation_figures.h"

namespace velto {
namespace {

FigureValue ratio(long part, long whole) {
  FigureValue figure{std::nullopt, part, whole};
  if (whole > 0) figure.value = static_cast<double>(part) / static_cast<double>(whole);
  return figure;
}

template <ShiftCounts EvaluationCounts::*sort, int reach>
FigureValue shiftRecall(const EvaluationCounts& counts) {
  return ratio((counts.*sort).matched[reach], (counts.*sort).known);
}

template <ShiftCounts EvaluationCounts::*sort, int reach>
FigureValue shiftPrecision(const EvaluationCounts& counts) {
  return ratio((counts.*sort).matched[reach], (counts.*sort).called);
}

FigureValue startExact(const EvaluationCounts& counts) {
  return ratio(counts.startsExact, counts.startsInside);
}

FigureValue stopExact(const EvaluationCounts& counts) {
  return ratio(counts.stopsExact, counts.stopsInside);
}

}  // namespace

FigureValue sensitivityOf(const EvaluationCounts& counts) {
  return ratio(counts.both, counts.coding);
}

FigureValue precisionOf(const EvaluationCounts& counts) {
  return ratio(counts.both, counts.called);
}

FigureValue correlationOf(const EvaluationCounts& counts) {
  return {counts.correlation(), 0, counts.bases};
}

FigureValue frameSensitivityOf(const EvaluationCounts& counts) {
  return ratio(counts.inFrame, counts.coding);
}

FigureValue framePrecisionOf(const EvaluationCounts& counts) {
  return ratio(counts.inFrame, counts.called);
}

// The harmonic mean of frame sensitivity s and frame precision p:
// 2 s p / (s + p) = 2 inFrame / (coding + called).
FigureValue frameF1Of(const EvaluationCounts& counts) {
  return ratio(2 * counts.inFrame, counts.coding + counts.called);
}

FigureValue noncodingCalledOf(const EvaluationCounts& counts) {
  return ratio(counts.noncodingCalled, counts.noncodingReads);
}

FigureValue bothExactOf(const EvaluationCounts& counts) {
  return ratio(counts.bothExact, counts.bothInside);
}

const std::vector<Figure>& evaluationFigures() {
  using Counts = EvaluationCounts;
  static const std::vector<Figure> figures = {
      {"sensitivity", "nucleotide sensitivity", false, true, sensitivityOf},
      {"precision", "nucleotide precision", false, true, precisionOf},
      {"correlation", "nucleotide correlation CC", false, false, correlationOf},
      {"frame_sensitivity", "coding bases in right frame FR", false, true, frameSensitivityOf},
      {"frame_precision", "called bases in right frame", false, true, framePrecisionOf},
      {"frame_f1", "frame F1", false, true, frameF1Of},
      {"shift_recall_15", "frameshift recall, 15 bases", false, true,
       shiftRecall<&Counts::shifts, 0>},
      {"shift_precision_15", "frameshift precision, 15 bases", false, true,
       shiftPrecision<&Counts::shifts, 0>},
      {"shift_recall_30", "frameshift recall, 30 bases", false, true,
       shiftRecall<&Counts::shifts, 1>},
      {"shift_precision_30", "frameshift precision, 30 bases", false, true,
       shiftPrecision<&Counts::shifts, 1>},
      {"insertion_recall_15", "insertion recall, 15 bases", false, true,
       shiftRecall<&Counts::insertions, 0>},
      {"insertion_precision_15", "insertion precision, 15 bases", false, true,
       shiftPrecision<&Counts::insertions, 0>},
      {"insertion_recall_30", "insertion recall, 30 bases", false, true,
       shiftRecall<&Counts::insertions, 1>},
      {"insertion_precision_30", "insertion precision, 30 bases", false, true,
       shiftPrecision<&Counts::insertions, 1>},
      {"deletion_recall_15", "deletion recall, 15 bases", false, true,
       shiftRecall<&Counts::deletions, 0>},
      {"deletion_precision_15", "deletion precision, 15 bases", false, true,
       shiftPrecision<&Counts::deletions, 0>},
      {"deletion_recall_30", "deletion recall, 30 bases", false, true,
       shiftRecall<&Counts::deletions, 1>},
      {"deletion_precision_30", "deletion precision, 30 bases", false, true,
       shiftPrecision<&Counts::deletions, 1>},
      {"noncoding_called", "non-coding reads called", true, true, noncodingCalledOf},
      {"start_exact", "start exact", false, true, startExact},
      {"stop_exact", "stop exact", false, true, stopExact},
      {"start_and_stop_exact", "start and stop exact", false, true, bothExactOf}};
  return figures;
}

}  // namespace velto
