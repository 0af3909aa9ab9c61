// The figures of a run, its report and its file for MultiQC.
#include "batch/run_report.h"

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "batch/multiqc.h"

namespace velto {
namespace {

using nlohmann::json;

// A coding read of 1,000 bases, of which 500 to 899 code, with two lost and one extra base.
Prediction codingPrediction() {
  Prediction p;
  p.status = Prediction::Status::kCoding;
  p.length = 1000;
  p.gcPercent = 45.0;
  p.score = 30.0;
  p.start = 500;
  p.stop = 899;
  p.frameshifts = {{Frameshift::Kind::kDeletion, 600},
                   {Frameshift::Kind::kDeletion, 700},
                   {Frameshift::Kind::kInsertion, 800}};
  return p;
}

class RunReportTest : public testing::Test {
 protected:
  void add(const Prediction& prediction, const CodingSequence& coding = {}) {
    figures.add(ScannedRead{record, 1, prediction, coding});
    counts.add(prediction, 0);
  }

  std::string report() { return runReport(run, counts, figures, gallery); }

  static bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }

  const Record record{};
  RunFigures figures;
  ScanCounts counts;
  ScanRun run{"1.2.3", "models", "vote", {"reads.fa"}, 1, {}, 4, 12.5};
  std::vector<std::string> gallery;
};

TEST_F(RunReportTest, FrameshiftsAreCountedPerKilobaseOfCodingRegions) {
  add(codingPrediction());
  EXPECT_EQ(figures.codingBases(), 400);
  EXPECT_DOUBLE_EQ(figures.perKilobase(figures.insertions()), 2.5);
  EXPECT_DOUBLE_EQ(figures.perKilobase(figures.deletions()), 5.0);
  EXPECT_EQ(figures.shiftsPerRead().occupied().edges, (std::vector<double>{3, 4}));
}

TEST_F(RunReportTest, ARegionBeyondTheReadCountsTheBasesThatTheReadHas) {
  Prediction p = codingPrediction();
  p.stop = 1001;
  add(p);
  EXPECT_EQ(figures.codingBases(), 500);
}

TEST_F(RunReportTest, RefusedReadsHaveALengthButNoScore) {
  Prediction p;
  p.status = Prediction::Status::kShort;
  p.length = 20;
  add(p);
  add(Prediction());  // without bases
  EXPECT_EQ(figures.lengths().reads(), 1);
  EXPECT_EQ(figures.scores().reads(), 0);
  EXPECT_EQ(figures.perKilobase(5), 0.0);
}

TEST_F(RunReportTest, PartsInAnyOrderMakeTheSameFigures) {
  CodingSequence coding;
  coding.type = CodingType::kInterrupted;
  coding.innerStops = 2;
  add(codingPrediction(), coding);
  RunFigures one = figures;
  Prediction p = codingPrediction();
  p.probability = 0.75;
  p.length = 3000;
  RunFigures other;
  other.add(ScannedRead{record, 2, p, coding});
  RunFigures both = other;
  both.add(one);
  one.add(other);
  EXPECT_EQ(figuresJson(one), figuresJson(both));
  const json parsed = json::parse(figuresJson(one));
  EXPECT_EQ(parsed["types"]["interrupted"], 2);
  EXPECT_EQ(parsed["inner_stops"], 4);
  EXPECT_EQ(parsed["coding_bases"], 800);
  EXPECT_EQ(parsed["insertions"], 2);
  EXPECT_EQ(parsed["deletions"], 4);
  EXPECT_EQ(parsed["probability"]["coding"], json({1}));
  EXPECT_EQ(parsed["length"]["coding"].size(), 10U);  // from 1,000 to 3,150
}

TEST_F(RunReportTest, TellsWhatWasFoundInWords) {
  add(codingPrediction());
  Prediction reverse = codingPrediction();
  reverse.strand = Strand::kMinus;
  add(reverse);
  Prediction none;
  none.status = Prediction::Status::kNoncoding;
  none.length = 100;
  add(none);
  EXPECT_TRUE(holds(report(),
                    "Of 3 reads, 2 (66.7\u00A0%) have a coding region: 1 on the strand "
                    "that was read and 1 on the reverse one."));
  EXPECT_TRUE(holds(report(),
                    "<th scope=\"row\">missing base</th><td class=\"number\">4</td>"
                    "<td class=\"number\">5</td>"));
  EXPECT_FALSE(holds(report(), "Probability of coding"));
  EXPECT_FALSE(holds(report(), "Errors of the reads"));
}

TEST_F(RunReportTest, SaysWhereManyFrameshiftsAreCountedTogether) {
  Prediction many = codingPrediction();
  add(many);
  EXPECT_FALSE(holds(report(), "so many or more"));
  many.frameshifts.assign(40, {Frameshift::Kind::kDeletion, 600});
  add(many);
  EXPECT_TRUE(holds(report(), "frameshifts; 30: so many or more"));
}

TEST_F(RunReportTest, TellsLearntErrorRatesAndWhatQualitiesSay) {
  run.calibration.reads = 1000;
  run.calibration.errorRates = {0.015, 0.02, 0.001};
  run.calibration.codingShare = 0.4;
  run.calibration.truncatedShare = 0.25;
  EXPECT_TRUE(holds(report(), "Learnt from the first 1\u202F000 reads"));
  EXPECT_TRUE(holds(report(),
                    "Errors of the file</th><td class=\"number\">1.5</td>"
                    "<td class=\"number\">2</td><td class=\"number\">0.1</td>"));
  EXPECT_TRUE(holds(report(), "Share of coding reads: 40\u00A0%."));
  EXPECT_TRUE(holds(report(), "that begin inside their coding region: 25\u00A0%."));
  EXPECT_TRUE(holds(report(), "Base qualities were not used."));
  run.calibration.qualities = {{9, {4, 3, 2}}, {93, {0.5, 0.25, 0.125}}};
  EXPECT_TRUE(holds(report(), "10 to 93</th><td class=\"number\">0.5</td>"));
}

TEST_F(RunReportTest, ARunWithoutReadsHasAReport) {
  EXPECT_TRUE(holds(report(), "There were no reads."));
  EXPECT_FALSE(holds(report(), "<svg"));
}

TEST_F(RunReportTest, DoesNotTellThreadsAndTime) {
  add(codingPrediction());
  const std::string before = report();
  run.threads = 1;
  run.seconds = 99;
  EXPECT_EQ(report(), before);
}

TEST_F(RunReportTest, NamesAreEscapedAndScriptsForbidden) {
  run.inputs = {"<script>alert(1)</script>.fa"};
  run.modelDirectory = "\x01&\xFF";
  EXPECT_FALSE(holds(report(), "<script"));
  EXPECT_TRUE(holds(report(), "\uFFFD&amp;\uFFFD"));
  EXPECT_TRUE(holds(report(), "default-src 'none'"));
}

// Every bin of every distribution filled, with a count of many digits.
TEST_F(RunReportTest, TheSizeIsBoundedByTheBins) {
  Prediction p = codingPrediction();
  for (double length = 1; length < 1e8; length *= 1.05) {
    p.length = static_cast<int>(length);
    p.gcPercent = std::fmod(length, 100);
    p.score = std::fmod(length, 2) < 1 ? length : -length;
    p.probability = p.gcPercent / 100;
    p.frameshifts.resize(static_cast<std::size_t>(length) % 40, p.frameshifts.front());
    p.stop = 899 < p.length ? 899 : p.length - 1;
    add(p);
  }
  for (int i = 0; i < 20; ++i) figures.add(RunFigures(figures));  // a million times as many
  EXPECT_GT(figures.lengths().reads(), 300'000'000);
  EXPECT_LT(report().size(), 200'000U);
}

TEST_F(RunReportTest, MultiqcGetsOneRowOfStatistics) {
  CodingSequence coding;
  coding.type = CodingType::kComplete;
  add(codingPrediction(), coding);
  counts.add(Prediction(), 0);
  const json parsed = json::parse(multiqcJson("a\xFF<b>", counts, figures));
  EXPECT_EQ(parsed["plot_type"], "generalstats");
  const json row = parsed["data"]["a\uFFFD<b>"];
  EXPECT_EQ(row["reads"], 2);
  EXPECT_EQ(row["coding"], 50.0);
  EXPECT_EQ(row["reverse"], 0.0);
  EXPECT_EQ(row["complete"], 100.0);
  EXPECT_EQ(row["insertions"], 2.5);
  EXPECT_EQ(row["deletions"], 5.0);
  EXPECT_EQ(row.size(), parsed["pconfig"].size());
}

TEST_F(RunReportTest, TheSampleIsNamedByTheFile) {
  EXPECT_EQ(multiqcSample("runs/a.b_mqc.json"), "a.b");
  EXPECT_EQ(multiqcSample("_mqc.json"), "_mqc.json");
}

}  // namespace
}  // namespace velto
