#include "evaluation/evaluation_report.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "evaluation/evaluation_figures.h"
#include "model/read_class.h"

namespace velto {
namespace {

EvaluationCounts counts() {
  EvaluationCounts c;
  c.reads = 2;
  c.bases = 100;
  c.coding = 40;
  c.called = 30;
  c.both = 24;
  c.inFrame = 18;
  return c;
}

ModelEvaluation model(const std::string& directory, const EvaluationCounts& total) {
  ModelEvaluation m;
  m.directory = directory;
  m.total = total;
  m.byClass.resize(kReadClasses);
  m.byClass[5] = total;
  m.byRate = {{0.25, total}};
  m.shiftDistances = {-3, 4};
  return m;
}

EvaluationReport oneModel(const EvaluationCounts& total) {
  EvaluationReport report;
  report.input = {{"model", "m"}};
  report.transcripts = 1;
  report.models = {model("m", total)};
  return report;
}

EvaluationReport twoModels() {
  EvaluationReport report = oneModel(counts());
  EvaluationCounts second = counts();
  second.inFrame = 10;
  report.models.push_back(model("other", second));
  report.differences = pairedBootstrap({counts()}, {second}, 1);
  return report;
}

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(EvaluationText, FiguresStandWithTheirCounts) {
  const std::string text = reportText(oneModel(counts()));
  EXPECT_TRUE(holds(text, "nucleotide sensitivity                0.6000   24 of 40\n")) << text;
  EXPECT_TRUE(holds(text, "nucleotide correlation CC             0.5345   100 bases\n")) << text;
}

TEST(EvaluationText, NothingToJudgeIsADash) {
  const std::string text = reportText(oneModel(counts()));
  EXPECT_TRUE(holds(text, "start exact                                -   0 of 0\n")) << text;
  const std::string empty = reportText(oneModel({}));
  EXPECT_FALSE(holds(empty, "nan"));
  EXPECT_FALSE(holds(empty, " inf"));
  EXPECT_FALSE(holds(empty, "-inf"));
}

TEST(EvaluationText, OnlyClassesWithReadsHaveARow) {
  const std::string text = reportText(oneModel(counts()));
  EXPECT_TRUE(holds(text, "\n" + readClassAt(5).name()));
  EXPECT_FALSE(holds(text, "\n" + readClassAt(4).name()));
}

TEST(EvaluationText, TwoModelsStandSideBySide) {
  const std::string text = reportText(twoModels());
  EXPECT_TRUE(holds(text,
                    "coding bases in right frame FR        0.4500    0.2500     +0.2000"
                    "    +0.2000 to +0.2000          1.000\n"))
      << text;
  EXPECT_TRUE(holds(text, "By class, m\n"));
  EXPECT_TRUE(holds(text, "By class, other\n"));
}

TEST(EvaluationJson, HoldsEveryFigureWithItsCounts) {
  const auto json = nlohmann::json::parse(reportJson(oneModel(counts())));
  const auto& figures = json["models"][0]["figures"];
  EXPECT_EQ(figures.size(), evaluationFigures().size());
  EXPECT_DOUBLE_EQ(figures["sensitivity"]["value"], 0.6);
  EXPECT_EQ(figures["sensitivity"]["part"], 24);
  EXPECT_EQ(figures["sensitivity"]["of"], 40);
  EXPECT_EQ(json["models"][0]["classes"].size(), 1U);
  EXPECT_EQ(json["models"][0]["shift_distances"], nlohmann::json({-3, 4}));
  EXPECT_DOUBLE_EQ(json["models"][0]["error_rates"][0]["shifts_per_100_coding_bases"], 0.25);
  EXPECT_FALSE(json.contains("differences"));
}

TEST(EvaluationJson, IntervalsStandBesideTheirFigures) {
  EvaluationReport r;
  r.models.push_back(model("m", counts()));
  FigureIntervals intervals(evaluationFigures().size());
  intervals.front() = Interval{0.25, 0.5};
  r.models[0].byRate[0].intervals = intervals;
  r.models[0].classIntervals.assign(kReadClasses, intervals);
  const auto json = nlohmann::json::parse(reportJson(r));
  const char* first = evaluationFigures()[0].id;
  const char* second = evaluationFigures()[1].id;
  for (const char* list : {"error_rates", "classes"}) {
    const auto& figures = json["models"][0][list][0]["figures"];
    EXPECT_EQ(figures[first]["low"], 0.25);
    EXPECT_EQ(figures[first]["high"], 0.5);
    EXPECT_FALSE(figures[second].contains("low"));
  }
}

TEST(EvaluationJson, NothingToJudgeIsNull) {
  const std::string text = reportJson(oneModel({}));
  EXPECT_FALSE(holds(text, "nan"));
  const auto json = nlohmann::json::parse(text);
  EXPECT_TRUE(json["models"][0]["figures"]["start_exact"]["value"].is_null());
}

TEST(EvaluationJson, DifferencesOfTwoModels) {
  const auto json = nlohmann::json::parse(reportJson(twoModels()));
  EXPECT_NEAR(json["differences"]["frame_sensitivity"]["difference"], 0.2, 1e-12);
  EXPECT_EQ(json["differences"]["frame_sensitivity"]["favouring_first"], 1.0);
  EXPECT_TRUE(json["differences"]["start_exact"]["low"].is_null());
}

TEST(EvaluationJson, NamesNeedNotBeUtf8) {
  EvaluationReport report = oneModel(counts());
  report.input.front().second = "m\xff";
  const auto json = nlohmann::json::parse(reportJson(report));
  EXPECT_EQ(json["input"]["model"], "m\xef\xbf\xbd");
}

}  // namespace
}  // namespace velto
