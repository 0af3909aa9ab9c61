// The tables of an evaluation: 1. Columns  2. Figures  3. Classes
#include <cstdio>
#include <optional>

#include "evaluation/evaluation_figures.h"
#include "evaluation/evaluation_report.h"
#include "model/read_class.h"

namespace velto {
namespace {

// ---- 1. Columns

std::string decimals(std::optional<double> value, const char* format = "%.4f") {
  if (!value) return "-";
  char text[32];
  std::snprintf(text, sizeof text, format, *value);
  return text;
}

std::string leftAligned(const std::string& text, std::size_t width) {
  return text.size() < width ? text + std::string(width - text.size(), ' ') : text;
}

std::string rightAligned(const std::string& text, std::size_t width) {
  return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

constexpr std::size_t kLabelWidth = 34;
constexpr std::size_t kValueWidth = 10;

// ---- 2. Figures

std::string countsText(const Figure& figure, const FigureValue& value) {
  if (!figure.isRatio) return std::to_string(value.whole) + " bases";
  return std::to_string(value.part) + " of " + std::to_string(value.whole);
}

std::string figuresOfOne(const EvaluationCounts& counts) {
  std::string text;
  for (const Figure& figure : evaluationFigures()) {
    const FigureValue value = figure.of(counts);
    text += leftAligned(figure.label, kLabelWidth) +
            rightAligned(decimals(value.value), kValueWidth) + "   " + countsText(figure, value) +
            "\n";
  }
  return text;
}

std::string intervalText(const FigureDifference& d) {
  if (!d.low || !d.high) return "-";
  return decimals(d.low, "%+.4f") + " to " + decimals(d.high, "%+.4f");
}

std::string figuresOfTwo(const EvaluationReport& report) {
  std::string text = leftAligned("", kLabelWidth) + rightAligned("first", kValueWidth) +
                     rightAligned("second", kValueWidth) + rightAligned("difference", 12) +
                     rightAligned("95 % interval", 22) + rightAligned("favours first", 15) + "\n";
  const std::vector<Figure>& figures = evaluationFigures();
  for (std::size_t f = 0; f < figures.size(); ++f) {
    const FigureDifference& d = report.differences[f];
    text += leftAligned(figures[f].label, kLabelWidth);
    for (const ModelEvaluation& model : report.models) {
      text += rightAligned(decimals(figures[f].of(model.total).value), kValueWidth);
    }
    text += rightAligned(decimals(d.difference, "%+.4f"), 12) + rightAligned(intervalText(d), 22) +
            rightAligned(decimals(d.favouringFirst, "%.3f"), 15) + "\n";
  }
  return text;
}

// ---- 3. Classes

constexpr FigureValue (*kClassFigures[])(const EvaluationCounts&) = {
    sensitivityOf,    precisionOf, correlationOf,    frameSensitivityOf,
    framePrecisionOf, frameF1Of,   noncodingCalledOf};

std::string classHeader() {
  std::string text = leftAligned("class", 9) + rightAligned("reads", 7) +
                     rightAligned("coding bases", 14) + rightAligned("non-coding", 12);
  for (const char* name : {"sens", "prec", "CC", "FR", "in frame", "F1", "nc call"}) {
    text += rightAligned(name, 9);
  }
  return text + "\n";
}

std::string classRow(const std::string& name, const EvaluationCounts& counts) {
  std::string text = leftAligned(name, 9) + rightAligned(std::to_string(counts.reads), 7) +
                     rightAligned(std::to_string(counts.coding), 14) +
                     rightAligned(std::to_string(counts.noncodingReads), 12);
  for (const auto figure : kClassFigures) text += rightAligned(decimals(figure(counts).value), 9);
  return text + "\n";
}

std::string classTable(const ModelEvaluation& model) {
  std::string text = classHeader();
  for (int i = 0; i < kReadClasses; ++i) {
    const EvaluationCounts& counts = model.byClass[static_cast<std::size_t>(i)];
    if (counts.reads > 0) text += classRow(readClassAt(i).name(), counts);
  }
  return text + classRow("all", model.total);
}

std::string inputText(const EvaluationReport& report) {
  std::string text;
  for (const auto& [name, value] : report.input) text += leftAligned(name, 16) + value + "\n";
  const EvaluationCounts& total = report.models.front().total;
  text += leftAligned("reads", 16) + std::to_string(total.reads) + " of " +
          std::to_string(report.transcripts) + " transcripts, " +
          std::to_string(total.noncodingReads) + " non-coding\n";
  return text;
}

}  // namespace

std::string reportText(const EvaluationReport& report) {
  const bool isPair = report.models.size() == 2;
  std::string text = inputText(report) + "\n";
  text += isPair ? figuresOfTwo(report) : figuresOfOne(report.models.front().total);
  for (const ModelEvaluation& model : report.models) {
    text += "\nBy class, " + model.directory + "\n" + classTable(model);
  }
  return text;
}

}  // namespace velto
