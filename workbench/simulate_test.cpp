// Runs the command as a process: options, statuses, streams and files.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "simulation/truth_table.h"
#include "tests/support/process.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

using test::ProcessResult;

class Simulate : public testing::Test {
 protected:
  void SetUp() override {
    // CC ATG AAA GGG TAG TT, and a non-coding record.
    write("coding.fa", ">t CDS=3-14 chr1\nCCATGAAAGGGTAGTT\n");
    write("noncoding.fa", ">n chr1\nACGTACGT\n");
  }

  void write(const std::string& name, const std::string& text) {
    test::writeFile(path(name), text);
  }

  std::string path(const std::string& name) const { return directory_.file(name); }

  std::string contents(const std::string& name) const { return test::readFile(path(name)); }

  // Runs `velto` with these arguments, as the shell takes them, inside the test's directory.
  ProcessResult run(const std::string& arguments) const {
    return test::runShell("timeout 60 '" VELTO_PROGRAM "' " + arguments, directory_.path());
  }

  test::TempDir directory_;
};

TEST_F(Simulate, CleanWholeTranscriptIsWrittenWithItsTruth) {
  const ProcessResult outcome =
      run("simulate --preset clean --full-length --truth truth.tsv coding.fa");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, ">r1 t\nCCATGAAAGGGTAGTT\n");
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(contents("truth.tsv"),
            truthHeader() + "r1\t16\tt\t1\t16\t3-14:2\t3\t14\texact\texact\t\t\n");
}

TEST_F(Simulate, TranscriptsAreReadByTheGeneticCode) {
  write("ciliate.fa", ">t CDS=1-9\nATGTAATGA\n");
  EXPECT_EQ(run("simulate --full-length ciliate.fa").status, 1);
  const ProcessResult outcome = run("simulate --code 6 --preset clean --full-length ciliate.fa");
  EXPECT_EQ(outcome.out, ">r1 t\nATGTAATGA\n");
}

TEST_F(Simulate, NoncodingReadsFollowTheCodingOnesWithoutIntervals) {
  const ProcessResult outcome =
      run("simulate --preset clean --full-length coding.fa --noncoding noncoding.fa --truth t.tsv");
  EXPECT_EQ(outcome.out, ">r1 t\nCCATGAAAGGGTAGTT\n>r2 n\nACGTACGT\n");
  EXPECT_EQ(contents("t.tsv"), truthHeader() +
                                   "r1\t16\tt\t1\t16\t3-14:2\t3\t14\texact\texact\t\t\n" +
                                   "r2\t8\tn\t1\t8\t\t\t\t\t\t\t\n");
}

TEST_F(Simulate, RatesOfOneReplaceOrDropEveryBase) {
  EXPECT_EQ(run("simulate --full-length --rates 0,0,0,1 coding.fa").out,
            ">r1 t\nNNNNNNNNNNNNNNNN\n");
  EXPECT_EQ(run("simulate --full-length --rates 0,0,1,0 coding.fa").out, ">r1 t\n\n");
}

TEST_F(Simulate, ReadsOfASeedNeverChange) {
  write("long.fa",
        ">t CDS=3-62 chr1\nCCATGAAAGGGTACGGATTGCACCTAGACTTGGAAACCCGGATCATATCTCTCCGACGCTAGTT\n");
  const std::string options =
      " --preset nanopore --length 30-60 --read-count 3 --seed 4 --truth t.tsv";
  EXPECT_EQ(run("simulate long.fa" + options).out,
            ">r1 t\nGGTCGGATTGCACCTAGACTTGGAAACCCGGATC\n"
            ">r2 t\nTTGGAAACCCGGATCATTCTCTCCGACGC\n"
            ">r3 t\nTGAAAGGGTACGGATTGCCCTAGACTTGGAAACCTGGATCATAGTCTCTCCGACGCTAGT\n");
  EXPECT_EQ(contents("t.tsv"),
            truthHeader() +
                "r1\t34\tt\t10\t35\t1-3:2,4-34:1\t1\t34\tpartial\tpartial\t\t4\n"
                "r2\t29\tt\t30\t30\t1-17:0,18-29:2\t1\t29\tpartial\tpartial\t\t18\n"
                "r3\t60\tt\t4\t60\t1-18:2,19-43:1,45-59:2\t1\t59\tpartial\texact\t44\t19\n");
}

TEST_F(Simulate, FastqOfAPresetWithoutQualitiesHasOneValueForAll) {
  // The sum of the rates 0.01 is Phred 20, letter 5.
  const std::string expected = "@r1 t\nCCATGAAAGGGTAGTT\n+\n5555555555555555\n";
  const std::string options = "simulate --full-length --rates 0.01,0,0,0 --seed 2 coding.fa";
  EXPECT_EQ(run(options + " --fastq").out, expected);
  for (const char* name : {"r.fastq", "r.fq"}) {
    EXPECT_EQ(run(options + " -o " + name).out, "");
    EXPECT_EQ(contents(name), expected);
  }
  EXPECT_EQ(run(options + " -o r.fq.gz && gzip -dc r.fq.gz").out, expected);
}

TEST_F(Simulate, FastqHasTheBasesAndTheTruthOfFasta) {
  const std::string options =
      "simulate --per-transcript 50 --preset direct-rna --truth t.tsv coding.fa";
  std::istringstream fasta(run(options).out);
  const std::string truth = contents("t.tsv");
  std::istringstream fastq(run(options + " --fastq").out);
  EXPECT_EQ(contents("t.tsv"), truth);
  std::string header, bases, line, qualities;
  std::set<char> values;
  while (std::getline(fasta, header) && std::getline(fasta, bases)) {
    ASSERT_TRUE(std::getline(fastq, line));
    EXPECT_EQ(line.substr(1), header.substr(1));
    ASSERT_TRUE(std::getline(fastq, line));
    EXPECT_EQ(line, bases);
    ASSERT_TRUE(std::getline(fastq, line) && std::getline(fastq, qualities));
    EXPECT_EQ(qualities.size(), bases.size());
    values.insert(qualities.begin(), qualities.end());
  }
  EXPECT_GT(values.size(), 5U);
}

TEST_F(Simulate, BothStrandsTurnSomeReadsWithTheirQualitiesAndNameTheStrand) {
  const std::string options =
      "simulate --per-transcript 20 --preset direct-rna --fastq --truth t.tsv coding.fa";
  std::istringstream plus(run(options).out), both(run(options + " --strand both").out);
  const std::string table = contents("t.tsv");
  EXPECT_EQ(table.substr(0, table.find('\n') + 1), truthHeader(Strands::kNamed));
  std::istringstream text(table);
  const std::vector<TruthRow> rows = readTruthTable(text, "t.tsv");
  int reversed = 0;
  for (const TruthRow& row : rows) {
    std::string records[2][4];
    for (std::string& line : records[0]) ASSERT_TRUE(std::getline(plus, line));
    for (std::string& line : records[1]) ASSERT_TRUE(std::getline(both, line));
    reversed += row.reversed;
    if (row.reversed) {
      std::reverse(records[1][1].begin(), records[1][1].end());
      for (char& base : records[1][1]) base = "TGCAN"[std::string("ACGTN").find(base)];
      std::reverse(records[1][3].begin(), records[1][3].end());
    }
    for (int i = 0; i < 4; ++i) EXPECT_EQ(records[0][i], records[1][i]);
  }
  EXPECT_GT(reversed, 2);
  EXPECT_LT(reversed, 18);
}

TEST_F(Simulate, InformationOfQualitiesOverrulesThePreset) {
  const std::string options = "simulate --full-length coding.fa --fastq --seed 2 --preset ";
  EXPECT_EQ(run(options + "hifi --quality-information 0").out,
            "@r1 t\nCCATGAAAGGGTAGTT\n+\nIIIIIIIIIIIIIIII\n");
  EXPECT_NE(run(options + "clean --quality-information 1").out, run(options + "clean").out);
}

TEST_F(Simulate, SameSeedGivesTheSameBytesAndAnotherSeedOthers) {
  const std::string options =
      "simulate --read-count 50 --length 5-12 coding.fa --truth t.tsv --seed ";
  const ProcessResult first = run(options + "7");
  const std::string truth = contents("t.tsv");
  const ProcessResult again = run(options + "7");
  EXPECT_EQ(first.out, again.out);
  EXPECT_EQ(truth, contents("t.tsv"));
  EXPECT_NE(first.out, run(options + "8").out);
}

TEST_F(Simulate, EarlierReadsDoNotDependOnTheirNumber) {
  const std::string few = run("simulate --read-count 5 --length 5-12 coding.fa").out;
  const std::string many = run("simulate --read-count 50 --length 5-12 coding.fa").out;
  EXPECT_EQ(many.substr(0, few.size()), few);
}

TEST_F(Simulate, TruthBelongsToTheReadsInTheFile) {
  run("simulate --per-transcript 200 --preset nanopore -o r.fa --truth t.tsv coding.fa");
  std::istringstream table(contents("t.tsv"));
  std::istringstream fasta(contents("r.fa"));
  const std::vector<TruthRow> rows = readTruthTable(table, "t.tsv");
  ASSERT_EQ(rows.size(), 200U);
  for (const TruthRow& row : rows) {
    std::string header, bases;
    ASSERT_TRUE(std::getline(fasta, header) && std::getline(fasta, bases));
    EXPECT_EQ(header, ">" + row.read + " t");
    EXPECT_EQ(static_cast<int>(bases.size()), row.length);
  }
}

TEST_F(Simulate, RefusedRecordsAreCountedOnStandardError) {
  write("mixed.fa", ">a CDS=1-6\nATGTAA\n>b CDS=1-6\nATGAAA\n");
  const ProcessResult outcome = run("simulate --preset clean --full-length mixed.fa");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, ">r1 a\nATGTAA\n");
  EXPECT_EQ(outcome.err,
            "velto: 1 of 2 records refused:\n"
            "  1 coding region does not end with a stop codon\n");
}

TEST_F(Simulate, InputWithoutUsableTranscriptFailsAndLeavesNoFile) {
  EXPECT_EQ(run("simulate noncoding.fa -o r.fa").status, 1);
  EXPECT_FALSE(test::fileExists(path("r.fa")));
}

TEST_F(Simulate, MissingInputFileFailsByName) {
  const ProcessResult outcome = run("simulate missing.fa");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err.rfind("velto: missing.fa: ", 0), 0U) << outcome.err;
}

TEST_F(Simulate, FailureOfTheTruthTableLeavesNoReadsFile) {
  const ProcessResult outcome = run("simulate coding.fa -o r.fa --truth missing/t.tsv");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_FALSE(test::fileExists(path("r.fa")));
}

TEST_F(Simulate, OutputThatIsAnInputIsRefusedAndTheInputStays) {
  const std::string before = contents("coding.fa");
  EXPECT_EQ(run("simulate coding.fa -o coding.fa").status, 2);
  EXPECT_EQ(run("simulate coding.fa --noncoding noncoding.fa --truth ./noncoding.fa").status, 2);
  EXPECT_EQ(contents("coding.fa"), before);
  EXPECT_NE(contents("noncoding.fa"), "");
}

TEST_F(Simulate, FullDeviceLeavesTheOtherOutputAsItWas) {
  write("r.fa", "old");
  EXPECT_EQ(run("simulate coding.fa -o r.fa --truth /dev/full").status, 1);
  EXPECT_EQ(contents("r.fa"), "old");
}

TEST_F(Simulate, ClosedPipeEndsQuietly) {
  const ProcessResult outcome = run(
      "simulate --read-count 100000 coding.fa 2> pipe_err | head -c 1 > /dev/null; cat pipe_err");
  EXPECT_EQ(outcome.out, "");
}

TEST_F(Simulate, WrongCommandLinesAreUsageErrors) {
  for (const char* arguments : {"",
                                "nosuch",
                                "simulate",
                                "simulate --preset x coding.fa",
                                "simulate --rates 1 coding.fa",
                                "simulate --rates 0.5,0.5,0.5,0 coding.fa",
                                "simulate --rates=-1,0,0,0 coding.fa",
                                "simulate --length 5 coding.fa",
                                "simulate --length 0-5 coding.fa",
                                "simulate --length 9-5 coding.fa",
                                "simulate --length 5-9x coding.fa",
                                "simulate --full-length --length 5-9 coding.fa",
                                "simulate --preset est --rates 0,0,0,0 coding.fa",
                                "simulate --read-count 1 --per-transcript 1 coding.fa",
                                "simulate --read-count -1 coding.fa",
                                "simulate --seed -1 coding.fa",
                                "simulate --per-transcript 0 coding.fa",
                                "simulate --truth - coding.fa",
                                "simulate --strand minus coding.fa",
                                "simulate --quality-information 1 coding.fa",
                                "simulate --fastq --quality-information 2 coding.fa",
                                "simulate --fastq --quality-information nan coding.fa",
                                "simulate --truth same -o ./same coding.fa",
                                "simulate --truth '' coding.fa",
                                "simulate -o '' coding.fa",
                                "simulate --reads 5 coding.fa",
                                "simulate - -"}) {
    const ProcessResult outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
    EXPECT_EQ(outcome.err.rfind("velto: ", 0), 0U) << arguments << outcome.err;
  }
}

TEST_F(Simulate, VersionTellsTheModelFormatToo) {
  const std::string version = run("--version").out;
  EXPECT_EQ(version.rfind("velto ", 0), 0U);
  EXPECT_NE(version.find(", model format 1\n"), std::string::npos) << version;
}

TEST_F(Simulate, HelpAndVersionSucceedOnStandardOutput) {
  for (const char* arguments : {"--help", "--version", "simulate --help"}) {
    const ProcessResult outcome = run(arguments);
    EXPECT_EQ(outcome.status, 0) << arguments;
    EXPECT_NE(outcome.out, "") << arguments;
    EXPECT_EQ(outcome.err, "") << arguments;
  }
}

}  // namespace
}  // namespace velto
