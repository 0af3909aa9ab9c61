// The one-read program run as a process: options, statuses, streams and files.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "tests/support/model_directory.h"
#include "tests/support/models.h"
#include "tests/support/process.h"
#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"

namespace velto::test {
namespace {

constexpr char kProgress[] = "Now Calculating...\n\n";
constexpr char kTooShort[] = "VELTO DOES NOT SUPPORT SEQUENCES SHORTER THAN 30 BASES.\n";

// Every test has a directory with the read in.fa, of one clear coding region, and the model m.
class ProgramTest : public testing::Test {
 protected:
  void SetUp() override {
    ModelTables tables;
    addAcid(tables, 0, 1.0, 1, 8);  // Ala is coding
    setCodingMatrix(tables);
    writeModelDirectory(directory_.file("m"), tables);
    writeFile(directory_.file("in.fa"), ">in\n" + kRead + "\n");
  }

  ProcessResult run(const std::vector<std::string>& arguments) {
    return runProcess(VELTO_PROGRAM, arguments, directory_.path());
  }

  // A run that must succeed; its standard output.
  std::string report(const std::vector<std::string>& arguments) {
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, kProgress);
    return result.out;
  }

  std::set<std::string> files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory_.path())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  void expectHelp(const ProcessResult& result) {
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, kHelp);
    EXPECT_EQ(result.err, "");
  }

  // ATG, 79 Ala, TAA and 33 Asn: 342 bases.
  const std::string kRead = "ATG" + repeated("GCC", 79) + "TAA" + repeated("AAC", 33);
  const std::string kHelp =
      "Usage: VELTO.exe [OPTION]\n\n"
      "OPTIONS:\n"
      "\t--help: Show this help.\n"
      "\t-i: Input filename (default name is sample.txt.)\n"
      "\t-d: Paramater directory (default directory is ./param-human)\n"
      "\t-w: Display width (default width is 60 bases.)\n"
      "\t-h: Output frame layout to a html file.\n"
      "\t-s: Output score of each base to a file.\n"
      "\n----\n"
      "ex) VELTO.exe -w 70 -h out.html -s score.cvs -i inputFasta.txt\n\n"
      "REFERENCE:\n"
      "Freund Y, Schapire RE. A decision-theoretic generalization of on-line learning and an "
      "application to boosting. Journal of Computer and System Sciences 55, 119-139 (1997).\n";
  TempDir directory_;
};

TEST_F(ProgramTest, WithoutArgumentsReadsTheDefaultNamesAndWritesTheTextReportOnly) {
  std::filesystem::rename(directory_.file("in.fa"), directory_.file("sample.txt"));
  std::filesystem::rename(directory_.file("m"), directory_.file("param-human"));
  const std::string out = report({});
  // 2 + 40 + 78 + 40 = 160; 1 + 237 + 33 of 342 bases are G or C: 79.2 percent.
  const std::string head =
      "FASTA HEADER: in\nSEQ LENGTH: 342\nGC PRESSURE: 79.2%\nDP SCORE: 160\n"
      "START: 1 STOP: 243\n\n";
  EXPECT_EQ(out.substr(0, head.size()), head);
  EXPECT_EQ(out.substr(head.size(), 61), "{" + kRead.substr(0, 59) + "\n");
  EXPECT_EQ(files(), (std::set<std::string>{"sample.txt", "param-human"}));
}

TEST_F(ProgramTest, HelpAloneIsPrintedWithStatusOne) { expectHelp(run({"--help"})); }

TEST_F(ProgramTest, HelpNextToOtherArgumentsIsIgnored) {
  const std::string usual = report({"-i", "in.fa", "-d", "m"});
  EXPECT_EQ(report({"--help", "-i", "in.fa", "-d", "m"}), usual);
  EXPECT_EQ(report({"-i", "in.fa", "-d", "m", "--help"}), usual);
}

TEST_F(ProgramTest, OptionWithoutAValuePrintsTheHelpWithStatusOne) {
  for (const char* option : {"-i", "-d", "-w", "-h", "-s", "-input"}) {
    SCOPED_TRACE(option);
    expectHelp(run({"-i", "in.fa", "-d", "m", option}));
    expectHelp(run({option}));
  }
}

TEST_F(ProgramTest, ReportsAreTheSameInAnyOrderOfOptions) {
  const std::string out =
      report({"-w", "70", "-h", "a.html", "-s", "a.csv", "-i", "in.fa", "-d", "m"});
  EXPECT_EQ(report({"-d", "m", "-i", "in.fa", "-s", "b.csv", "-h", "b.html", "-w", "70"}), out);
  EXPECT_EQ(readFile(directory_.file("a.html")), readFile(directory_.file("b.html")));
  EXPECT_EQ(readFile(directory_.file("a.csv")), readFile(directory_.file("b.csv")));
  EXPECT_NE(out.find("{" + kRead.substr(0, 69) + "\n"), std::string::npos);
  EXPECT_NE(readFile(directory_.file("a.html")).find("71<BR>\n"), std::string::npos);
}

TEST_F(ProgramTest, ScoreFileIsWrittenBehindThePage) {
  report({"-s", "same", "-h", "same", "-i", "in.fa", "-d", "m"});
  EXPECT_EQ(readFile(directory_.file("same")).substr(0, 2), "A,");
}

TEST_F(ProgramTest, WhatIsNoOptionIsSkipped) {
  const std::string usual = report({"-i", "in.fa", "-d", "m"});
  EXPECT_EQ(report({"-x", "foo", "-i", "in.fa", "-d", "m"}), usual);
  EXPECT_EQ(report({"-", "", "--", "-1", "-I", "bar", "-i", "in.fa", "-d", "m"}), usual);
}

TEST_F(ProgramTest, OnlyTheSecondCharacterOfAnOptionCounts) {
  EXPECT_EQ(report({"-input", "in.fa", "-dir", "m", "-width", "70"}),
            report({"-i", "in.fa", "-d", "m", "-w", "70"}));
}

TEST_F(ProgramTest, ValueMayBeginWithAMinusSign) {
  writeFile(directory_.file("-i"), ">minus\n" + kRead);
  EXPECT_EQ(report({"-i", "-i", "-d", "m"}).substr(0, 20), "FASTA HEADER: minus\n");
}

TEST_F(ProgramTest, LastOfARepeatedOptionWins) {
  EXPECT_EQ(report({"-i", "missing.fa", "-i", "in.fa", "-d", "no", "-d", "m"}),
            report({"-i", "in.fa", "-d", "m"}));
}

TEST_F(ProgramTest, LastOfARepeatedWidthPageAndScoreFileWins) {
  const std::string out = report({"-w", "70", "-h", "a.html", "-s", "a.csv", "-w", "80", "-h",
                                  "b.html", "-s", "b.csv", "-i", "in.fa", "-d", "m"});
  EXPECT_EQ(out, report({"-w", "80", "-i", "in.fa", "-d", "m"}));
  EXPECT_EQ(files(), (std::set<std::string>{"in.fa", "m", "b.html", "b.csv"}));
}

TEST_F(ProgramTest, WidthIsReadAsADecimalNumber) {
  EXPECT_EQ(report({"-w", "0100", "-i", "in.fa", "-d", "m"}),
            report({"-w", "100", "-i", "in.fa", "-d", "m"}));
  EXPECT_EQ(report({"-w", "0x50", "-i", "in.fa", "-d", "m"}),
            report({"-w", "0", "-i", "in.fa", "-d", "m"}));
}

TEST_F(ProgramTest, PageReplacesAnOlderOne) {
  report({"-i", "in.fa", "-d", "m", "-h", "a.html"});
  const std::string page = readFile(directory_.file("a.html"));
  report({"-i", "in.fa", "-d", "m", "-h", "a.html"});
  EXPECT_EQ(readFile(directory_.file("a.html")), page);
}

TEST_F(ProgramTest, WidthThatIsNoNumberIsZeroAndMeansSixty) {
  const std::string usual = report({"-i", "in.fa", "-d", "m", "-h", "a.html"});
  EXPECT_EQ(report({"-w", "abc", "-i", "in.fa", "-d", "m", "-h", "b.html"}), usual);
  EXPECT_EQ(report({"-w", "0", "-i", "in.fa", "-d", "m"}), usual);
  EXPECT_EQ(readFile(directory_.file("a.html")), readFile(directory_.file("b.html")));
}

TEST_F(ProgramTest, NegativeWidthGivesOneLineAndAPageOfSixty) {
  report({"-i", "in.fa", "-d", "m", "-h", "a.html"});
  const std::string out = report({"-w", "-7", "-i", "in.fa", "-d", "m", "-h", "b.html"});
  EXPECT_NE(out.find("\n\n{" + kRead.substr(0, 243) + "}" + kRead.substr(243) + "\n"),
            std::string::npos);
  EXPECT_EQ(readFile(directory_.file("a.html")), readFile(directory_.file("b.html")));
}

TEST_F(ProgramTest, MissingInputIsReportedOnStandardErrorBeforeAnyReport) {
  const ProcessResult result = run({"-i", "missing.fa", "-d", "m", "-h", "a.html", "-s", "a.csv"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "CAN NOT FIND FILE: missing.fa\n");
  EXPECT_EQ(files(), (std::set<std::string>{"in.fa", "m"}));
}

TEST_F(ProgramTest, ShortReadIsRefusedOnStandardOutput) {
  writeFile(directory_.file("short.fa"), ">short\n" + std::string(29, 'A') + "\n");
  const ProcessResult result = run({"-i", "short.fa", "-d", "m", "-h", "a.html"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, kTooShort);
  EXPECT_EQ(result.err, "");
  EXPECT_FALSE(fileExists(directory_.file("a.html")));
  writeFile(directory_.file("empty.fa"), "");
  EXPECT_EQ(run({"-i", "empty.fa", "-d", "m"}).out, kTooShort);
  writeFile(directory_.file("header.fa"), ">no line feed");
  EXPECT_EQ(run({"-i", "header.fa", "-d", "m"}).out, kTooShort);
}

TEST_F(ProgramTest, MissingModelFilesAreReportedOnStandardOutput) {
  ProcessResult result = run({"-i", "in.fa", "-d", "none"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "ioerr:can not open none/paramater32/paramL0G3-ex0.txt\n");
  EXPECT_EQ(result.err, kProgress);
  std::filesystem::remove(directory_.file("m/paramater32/matrixL0G3-ex0.txt"));
  result = run({"-i", "in.fa", "-d", "m/"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "ioerr:can not open m//paramater32/matrixL0G3-ex0.txt\n");
}

TEST_F(ProgramTest, ReportFilesThatCannotBeOpenedAreSilentlyPassedOver) {
  EXPECT_EQ(report({"-i", "in.fa", "-d", "m", "-h", "no/a.html", "-s", "no/a.csv"}),
            report({"-i", "in.fa", "-d", "m"}));
}

TEST_F(ProgramTest, ReportThatCannotBeWrittenIsAFailure) {
  const ProcessResult result =
      runShell(VELTO_PROGRAM " -i in.fa -d m > /dev/full", directory_.path());
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, kProgress + std::string("standard output: cannot write\n"));
}

TEST_F(ProgramTest, ReadWithoutACodingRegionEndsWellToo) {
  writeFile(directory_.file("none.fa"), ">none\n" + repeated("AAC", 100) + "\n");
  const std::string out = report({"-i", "none.fa", "-d", "m", "-h", "a.html"});
  EXPECT_EQ(out,
            "FASTA HEADER: none\nSEQ LENGTH: 300\nGC PRESSURE: 33.3%\nDP SCORE: -10\n"
            "START: 0 STOP: 0\n\nNO CODING REGION WAS FOUND IN THIS SEQUENCE.\n");
}

// The program as a newcomer runs it: in the project's root, on the shipped read and model.
TEST(ShippedSampleTest, ReportNamesRegionAndBothErrors) {
  const ProcessResult result = runProcess(VELTO_PROGRAM, {}, ".");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, readFile("tests/golden/sample_report.txt"));
}

}  // namespace
}  // namespace velto::test
