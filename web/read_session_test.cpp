#include "web/read_session.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "batch/formats/row_formats.h"
#include "batch/scan_pipeline.h"
#include "seqio/input_error.h"
#include "tests/support/process.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

using nlohmann::json;

constexpr char kModel[] = "param-human";
constexpr char kReads[] = "examples/reads.fastq";
constexpr std::size_t kTsv = 0;
constexpr std::size_t kGff3 = 1;

SessionChoices byVote() {
  SessionChoices choices;
  choices.decoder = "vote";
  return choices;
}

SessionChoices withCode(int number) {
  SessionChoices choices;
  choices.geneticCode = number;
  return choices;
}

ReadSession opened(const std::string& text, SessionChoices choices = {}) {
  choices.model = "human";
  return ReadSession(Model(kModel), choices, "the text", text);
}

// All reads predicted.
ReadSession predicted(const std::string& text, const SessionChoices& choices = {}) {
  ReadSession session = opened(text, choices);
  session.learn();
  while (session.predicted() < session.reads()) session.predictNext();
  return session;
}

std::string errorOf(const std::string& text) {
  try {
    opened(text);
  } catch (const InputError& error) {
    return error.what();
  }
  return "";
}

// What a scan of the file writes in the format.
std::string scanned(const std::string& path, const std::string& decoder, std::size_t format) {
  const test::TempDir directory;
  const RowFormat& rows = rowFormats()[format];
  {
    OutputFile file(directory.file("rows"));
    file.write(rows.header);
    std::vector<ScanOutput> outputs = {{file, [&rows](const ScannedRead& read, std::string& text) {
                                          rows.append(read, {}, text);
                                        }}};
    ScanOptions options;
    options.inputs = {path};
    options.predict.strand = Strand::kBoth;
    options.warnOfRepeatedName = [](const std::string&) {};
    scanReads(Predictor(kModel, decoder), options, outputs);
    file.commit();
  }
  return test::readFile(directory.file("rows"));
}

const std::string kSample = test::readFile("sample.txt");

TEST(ReadSession, WritesTheFilesOfAScan) {
  const std::string reads = test::readFile(kReads);
  for (const std::string decoder : {"hmm", "vote"}) {
    SessionChoices choices;
    choices.decoder = decoder;
    const ReadSession session = predicted(reads + reads, choices);  // with repeated names
    const test::TempDir directory;
    test::writeFile(directory.file("twice.fastq"), reads + reads);
    EXPECT_EQ(session.table(kTsv), scanned(directory.file("twice.fastq"), decoder, kTsv));
    EXPECT_EQ(session.table(kGff3), scanned(directory.file("twice.fastq"), decoder, kGff3));
  }
}

TEST(ReadSession, TellsOfReadsAsTheyArePredicted) {
  ReadSession session = opened(kSample + kSample, byVote());
  session.learn();
  EXPECT_EQ(session.reads(), 2U);
  const json list = json::parse(session.predictNext());
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0]["name"], "NM_001031677:366-1385");
  EXPECT_EQ(list[0]["status"], "coding");
  EXPECT_EQ(list[0]["start"], 91);
  EXPECT_EQ(list[0]["stop"], 702);
  EXPECT_EQ(list[0]["deletions"], "297");
  EXPECT_EQ(list[0]["insertions"], "522");
  EXPECT_EQ(list[0]["acids"], 203);
  EXPECT_TRUE(list[0]["probability"].is_null());
  EXPECT_EQ(session.predictNext(), "[]");
}

TEST(ReadSession, PredictsManyReadsInSteps) {
  std::string text;
  for (int i = 0; i < 100; ++i) text += kSample;
  ReadSession session = opened(text, byVote());
  session.learn();
  session.predictNext();
  EXPECT_EQ(session.predicted(), 40U);  // of 1020 bases each, the last one beyond 40 000
  EXPECT_EQ(json::parse(session.summary())["reads"], 40);
}

TEST(ReadSession, TakesTextWithoutHeaderAsOneRead) {
  const std::string bases = kSample.substr(kSample.find('\n') + 1);
  const json drawing = json::parse(predicted("\n" + bases, byVote()).drawing(0));
  EXPECT_EQ(drawing["name"], "unnamed read");
  EXPECT_EQ(drawing["lead"],
            "Bases 91 to 702 code for a protein of 203 amino acids; one base is missing before 297 "
            "and one is extra at 522.");
  EXPECT_EQ(drawing["shifts"][0]["position"], 297);
  EXPECT_EQ(drawing["shifts"][0]["kind"], "missing");
  EXPECT_EQ(drawing["protein"].get<std::string>().size(), 204U);  // with its stop
}

TEST(ReadSession, SaysWhereATextCannotBeRead) {
  EXPECT_EQ(errorOf("ACGT\nAC1T\n"),
            "the text: record 1, line 2: '1' within a sequence, where only letters, '-' and '*' "
            "may stand");
  EXPECT_EQ(errorOf(">a\nACGT\n>b\n12\n"),
            "the text: record 2, line 4: '1' within a sequence, where only letters, '-' and '*' "
            "may stand");
  EXPECT_EQ(errorOf(" \n"), "the text: there is no read in it");
  EXPECT_NE(errorOf("@a\nACGT\n+\nIII\n").find("record 1, line 4: FASTQ quality of length 3"),
            std::string::npos);
  EXPECT_NE(errorOf(std::string("BAM\1\0", 5)).find("BAM is not read here"), std::string::npos);
  EXPECT_NE(errorOf("\x1f\x8b").find("gzip"), std::string::npos);
}

TEST(ReadSession, WarnsOfProtein) {
  const std::string protein = ">a\nACGTACGT\n>p\nMSGQRVDVKVVMLGKEYVGKTSLVERYVHDRF\n";
  const std::string warning = json::parse(predicted(protein).summary())["warning"];
  EXPECT_NE(warning.find("1 of 2 reads have more unknown than known bases"), std::string::npos);
  EXPECT_NE(warning.find("record 2, line 3."), std::string::npos);
  EXPECT_EQ(json::parse(predicted(kSample).summary())["warning"], "");
}

TEST(ReadSession, LearnsNothingOfWhatIsTold) {
  Calibration told;
  told.errorRates = BaseErrorRates{0.1, 0.1, 0.1};
  SessionChoices choices;
  choices.calibration = told;
  const json summary = json::parse(predicted(test::readFile(kReads), choices).summary());
  EXPECT_EQ(summary["calibration"]["error_rates"]["insertion"], 0.1);
  EXPECT_EQ(summary["calibration"]["reads"], 0);
}

TEST(ReadSession, ShowsHostileNamesAsText) {
  const std::string text = ">\x1b<script>\xff\x80&\n" + std::string(60, 'A') + "\n";
  ReadSession session = predicted(text);
  const json drawing = json::parse(session.drawing(0));
  EXPECT_EQ(drawing["name"], "\uFFFD<script>\uFFFD\uFFFD&");
  EXPECT_EQ(drawing["figure"].get<std::string>().find("<script>"), std::string::npos);
  EXPECT_EQ(session.report(1.0).find("<script>"), std::string::npos);
}

TEST(ReadSession, ReportsTheReadsPredictedSoFar) {
  const std::string report = predicted(kSample).report(1.0);
  EXPECT_NE(report.find("<title>Coding regions of 1 reads</title>"), std::string::npos);
  EXPECT_NE(report.find("the text"), std::string::npos);
  EXPECT_NE(report.find("human"), std::string::npos);
  EXPECT_NE(report.find("velto-read"), std::string::npos);  // a drawing
}

TEST(ReadSession, RefusesAnUnknownGeneticCode) {
  EXPECT_THROW(opened(kSample, withCode(7)), Error);
}

}  // namespace
}  // namespace velto
