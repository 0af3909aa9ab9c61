// Runs `velto scan` and `velto check-model` as processes: results, streams, statuses and files.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "model/read_class.h"
#include "tests/support/process.h"
#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"
#include "tests/support/trained_models.h"
#include "velto/velto.h"

namespace velto {
namespace {

using test::ProcessResult;
using Fields = std::vector<std::string>;

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, separator);) parts.push_back(part);
  return parts;
}

// The rows of a table without its header line.
std::vector<Fields> rowsOf(const std::string& table) {
  std::vector<Fields> rows;
  for (const std::string& line : split(table, '\n')) rows.push_back(split(line, '\t'));
  if (!rows.empty()) rows.erase(rows.begin());
  return rows;
}

// One species, its models and 3,000 reads, made once.
struct Data {
  Data() {
    species.writeModels(random, test::PriorForm::kNearlyConstant, directory.file("model"));
    std::string fasta;
    for (int i = 0; i < 3000; ++i) {
      reads.push_back(species.read(random, test::randomInt(random, 100, 900), 0.012));
      fasta +=
          ">read" + std::to_string(i) + " no " + std::to_string(i) + "\n" + reads.back() + "\n";
    }
    test::writeFile(directory.file("reads.fa"), fasta);
  }

  test::Random random{test::testSeed()};
  test::MadeUpSpecies species{random};
  test::TempDir directory;
  std::vector<std::string> reads;
};

const Data& data() {
  static const Data made;
  return made;
}

class ScanTest : public testing::Test {
 protected:
  // Runs `velto scan` with the test's model in a directory of its own.
  ProcessResult scan(const std::vector<std::string>& arguments, const std::string& input = "") {
    std::vector<std::string> all = {"scan", "-d", data().directory.file("model")};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return test::runProcess(VELTO_PROGRAM, all, work.path(), input);
  }

  ProcessResult shell(const std::string& command) {
    return test::runProcess("/bin/bash", {"-c", command}, work.path());
  }

  std::string file(const std::string& name) { return test::readFile(work.file(name)); }

  static std::string readsFile() { return data().directory.file("reads.fa"); }

  size_t filesInWork() {
    const std::filesystem::directory_iterator files(work.path());
    return static_cast<size_t>(std::distance(begin(files), end(files)));
  }

  test::TempDir work;
};

// ---- The numbers

// The value behind `label` in a report, up to the next blank.
std::string valueAfter(const std::string& report, const std::string& label, size_t from = 0) {
  const size_t at = report.find(label, from);
  if (at == std::string::npos) return "";
  const size_t begin = at + label.size();
  return report.substr(begin, report.find_first_of(" \n", begin) - begin);
}

std::string joinedValues(const std::string& report, const std::string& label) {
  std::string list;
  for (const std::string& line : split(report, '\n')) {
    if (line.rfind(label, 0) != 0) continue;
    const size_t at = line.find('@');
    list += (list.empty() ? "" : ",") + line.substr(at == line.npos ? label.size() : at + 1);
  }
  return list;
}

TEST_F(ScanTest, RowsEqualTheReportsOfTheOneReadProgram) {
  const ProcessResult scanned = scan({readsFile(), "--strand", "plus"});
  ASSERT_EQ(scanned.status, 0) << scanned.err;
  const std::vector<Fields> rows = rowsOf(scanned.out);
  ASSERT_EQ(rows.size(), data().reads.size());
  int coding = 0;
  int shifts = 0;
  for (size_t i = 0; i < 2000; ++i) {
    if (i % 10 != 0) continue;
    test::writeFile(work.file("one.fa"), ">x\n" + data().reads[i] + "\n");
    const std::string report =
        test::runProcess(VELTO_ONE_READ_PROGRAM,
                         {"-i", "one.fa", "-d", data().directory.file("model")}, work.path())
            .out;
    const bool found = report.find("NO CODING REGION") == std::string::npos;
    SCOPED_TRACE(rows[i][0]);
    EXPECT_EQ(rows[i][5], valueAfter(report, "DP SCORE: "));
    EXPECT_EQ(rows[i][6], found ? valueAfter(report, "START: ") : "");
    EXPECT_EQ(rows[i][7], found ? valueAfter(report, "STOP: ") : "");
    EXPECT_EQ(rows[i][8], joinedValues(report, "INSERTION_ERR: "));
    EXPECT_EQ(rows[i][9], joinedValues(report, "DELETION_ERR: "));
    EXPECT_EQ(rows[i][12], found ? "coding" : "noncoding");
    coding += found;
    shifts += !rows[i][8].empty() + !rows[i][9].empty();
  }
  EXPECT_GT(coding, 50);
  EXPECT_GT(shifts, 50);
}

TEST_F(ScanTest, ScoreRowsAreThoseOfTheOneReadScoreFile) {
  std::string fasta;
  std::string wanted;
  for (size_t i = 0; i < 20; ++i) {
    const std::string record = ">r" + std::to_string(i) + "\n" + data().reads[i] + "\n";
    fasta += record;
    test::writeFile(work.file("one.fa"), record);
    test::runProcess(VELTO_ONE_READ_PROGRAM,
                     {"-i", "one.fa", "-d", data().directory.file("model"), "-s", "one.csv"},
                     work.path());
    wanted += ">r" + std::to_string(i) + " +\n" + file("one.csv");
  }
  const ProcessResult scanned =
      scan({"-", "--strand", "plus", "-o", "t", "--scores", "scores"}, fasta);
  ASSERT_EQ(scanned.status, 0) << scanned.err;
  EXPECT_EQ(file("scores"), wanted);
}

TEST_F(ScanTest, OneTwoAndEightThreadsWriteTheSameBytes) {
  const std::vector<std::string> names = {"tsv", "gff3", "bed", "cds", "protein", "json", "report"};
  for (const std::string threads : {"1", "2", "8"}) {
    const ProcessResult result =
        scan({readsFile(), "-t", threads, "-o", "tsv" + threads, "--gff3", "gff3" + threads,
              "--bed", "bed" + threads, "--cds", "cds" + threads, "--protein", "protein" + threads,
              "--json", "json" + threads, "--report", "report" + threads});
    ASSERT_EQ(result.status, 0) << result.err;
  }
  for (const std::string& name : names) {
    EXPECT_GT(file(name + "1").size(), 10000U);
    EXPECT_EQ(file(name + "1"), file(name + "2"));
    EXPECT_EQ(file(name + "1"), file(name + "8"));
  }
}

TEST_F(ScanTest, TheReportDrawsTheFirstCodingReads) {
  const std::vector<Fields> rows = rowsOf(scan({readsFile()}).out);
  std::vector<std::string> coding;
  for (const Fields& row : rows) {
    if (row[12] == "coding") coding.push_back(row[0]);
  }
  ASSERT_GT(coding.size(), 3U);
  const ProcessResult result = scan({readsFile(), "-o", "t", "--report", "r.html", "--report-reads",
                                     "3", "--multiqc", "made-up_mqc.json"});
  ASSERT_EQ(result.status, 0) << result.err;
  std::vector<std::string> drawn;
  for (const std::string& part : split(file("r.html"), '\n')) {
    const std::string begin = "<title id=\"read";
    const size_t name = part.find("-w-title\">Read ");
    if (part.rfind(begin, 0) == 0 && name != part.npos) {
      drawn.push_back(part.substr(name + 15, part.find("</title>") - name - 15));
    }
  }
  EXPECT_EQ(drawn, std::vector<std::string>(coding.begin(), coding.begin() + 3));
  const auto row = nlohmann::json::parse(file("made-up_mqc.json"))["data"]["made-up"];
  EXPECT_EQ(row["reads"], rows.size());
}

TEST_F(ScanTest, MinScoreMakesRegionsThatScoreLowerNoncoding) {
  const std::vector<Fields> all = rowsOf(scan({readsFile()}).out);
  const std::vector<Fields> best = rowsOf(scan({readsFile(), "--min-score", "30.05"}).out);
  ASSERT_EQ(best.size(), all.size());
  int dropped = 0;
  for (size_t i = 0; i < all.size(); ++i) {
    const bool low = all[i][12] == "coding" && std::stod(all[i][5]) < 30.05;
    dropped += low;
    EXPECT_EQ(best[i][5], all[i][5]);
    EXPECT_EQ(best[i][6], low ? "" : all[i][6]);
    EXPECT_EQ(best[i][12], low ? "noncoding" : all[i][12]);
  }
  EXPECT_GT(dropped, 100);
}

TEST_F(ScanTest, CountsAddUp) {
  const std::string input = ">a\n" + data().reads[0] + "\n>b\nACGT\n>c\n\n>d\n" +
                            std::string(100, 'A') + "\n>e\n" + std::string(29, 'C') + "\n";
  const ProcessResult result = scan({"-", "--summary", "summary.json"}, input);
  ASSERT_EQ(result.status, 0) << result.err;
  const auto summary = nlohmann::json::parse(file("summary.json"));
  EXPECT_EQ(summary["reads"], 5);
  EXPECT_EQ(summary["coding"].get<int>() + summary["noncoding"].get<int>(), 2);
  EXPECT_EQ(summary["refused"]["short"], 2);
  EXPECT_EQ(summary["refused"]["empty"], 1);
  EXPECT_EQ(summary["bases"].get<size_t>(), data().reads[0].size() + 4 + 100 + 29);
  EXPECT_NE(result.err.find("5 reads: "), std::string::npos);
  EXPECT_NE(result.err.find("3 refused (2 short, 1 empty)"), std::string::npos);
  EXPECT_EQ(rowsOf(result.out).size(), 5U);
}

// Of the protein's 40 letters ten are A or G: 30 unknown ones, then 60 and 50, of 200 in all.
TEST_F(ScanTest, ProteinAndMaskedReadsAreWarnedAboutAndCounted) {
  const std::string protein = "MKLVFFAEDVGSNKGAIIGLMKLVFFAEDVGSNKGAIIGL";
  const ProcessResult result =
      scan({"-", "--quiet", "--summary", "s.json"},
           ">p\n" + protein + "\n>n\n" + std::string(60, 'N') + "\n>half\n" + std::string(50, 'N') +
               std::string(50, 'A') + "\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(
      result.err,
      "velto: warning: 2 of 3 reads have more unknown than known bases (70.0 % of all bases are "
      "unknown): masked sequence, or protein?\n");
  EXPECT_EQ(nlohmann::json::parse(file("s.json"))["unknown_bases"], 140);
  EXPECT_EQ(rowsOf(result.out).size(), 3U);
  EXPECT_EQ(scan({readsFile(), "--quiet"}).err, "");
}

TEST_F(ScanTest, ReadsAreFoundOnEitherStrandAndCountedByStrand) {
  // Every third read of one file is on its other strand, all reads of the other file are turned.
  std::string mixed;
  std::string turned;
  for (size_t i = 0; i < 200; ++i) {
    const auto record = [i](Strand strand) {
      return ">r" + std::to_string(i) + "\n" +
             predictedLetters(data().reads[i], strand, Letters::kFolded) + "\n";
    };
    mixed += record(i % 3 == 0 ? Strand::kMinus : Strand::kPlus);
    turned += record(i % 3 == 0 ? Strand::kPlus : Strand::kMinus);
  }
  const ProcessResult forward = scan({"-", "--summary", "forward.json"}, mixed);
  const ProcessResult backward = scan({"-", "--summary", "backward.json"}, turned);
  const auto counts = nlohmann::json::parse(file("forward.json"));
  const auto turnedCounts = nlohmann::json::parse(file("backward.json"));
  const int plus = counts["coding_by_strand"]["plus"];
  const int minus = counts["coding_by_strand"]["minus"];
  EXPECT_GT(plus, 20);
  EXPECT_GT(minus, 10);
  EXPECT_EQ(counts["coding"], plus + minus);
  EXPECT_EQ(turnedCounts["coding_by_strand"]["plus"], minus);
  EXPECT_EQ(turnedCounts["coding_by_strand"]["minus"], plus);
  EXPECT_NE(forward.err.find(" coding (" + std::to_string(plus) + " on the plus strand, " +
                             std::to_string(minus) + " on the minus strand), "),
            std::string::npos)
      << forward.err;

  const std::vector<Fields> one = rowsOf(scan({"-", "--strand", "minus"}, turned).out);
  const std::vector<Fields> other = rowsOf(scan({"-", "--strand", "plus"}, mixed).out);
  ASSERT_EQ(one.size(), other.size());
  for (size_t i = 0; i < one.size(); ++i) EXPECT_EQ(one[i][5], other[i][5]);
}

TEST_F(ScanTest, LowerCaseCountsAsUpperCaseUnlessTheCaseIsExact) {
  std::string lower = data().reads[0];
  for (char& letter : lower) letter = static_cast<char>(std::tolower(letter));
  EXPECT_EQ(scan({"-"}, ">r\n" + lower + "\n").out,
            scan({"-"}, ">r\n" + data().reads[0] + "\n").out);
  const Fields exact = rowsOf(scan({"-", "--exact-case"}, ">r\n" + lower + "\n").out).at(0);
  EXPECT_EQ(exact[2], "0");
}

TEST_F(ScanTest, ProteinsShowInnerStopsAsAskedFor) {
  for (const std::string choice : {"keep", "x", "split"}) {
    ASSERT_EQ(scan({readsFile(), "-o", "t", "--protein", choice, "--stops", choice}).status, 0);
  }
  ASSERT_EQ(scan({readsFile(), "-o", "t", "--protein", "default"}).status, 0);
  EXPECT_EQ(file("default"), file("x"));
  // A stop that is not the last letter of its line.
  const auto hasInnerStop = [this](const std::string& name) {
    const std::string text = file(name);
    for (size_t at = text.find('*'); at != std::string::npos; at = text.find('*', at + 1)) {
      if (text.at(at + 1) != '\n') return true;
    }
    return false;
  };
  EXPECT_TRUE(hasInnerStop("keep"));
  EXPECT_FALSE(hasInnerStop("x"));
  EXPECT_FALSE(hasInnerStop("split"));
  EXPECT_EQ(file("x").find(".part"), std::string::npos);
  EXPECT_NE(file("split").find(".part2 "), std::string::npos);
  EXPECT_EQ(scan({readsFile(), "--stops", "y"}).status, 2);
}

TEST_F(ScanTest, TheGeneticCodeDecidesProteinsAndTypes) {
  // In the ciliates' code TAA and TAG are amino acids, so that fewer inner stops are left.
  ASSERT_EQ(scan({readsFile(), "-o", "t1", "--protein", "p1", "--summary", "s1"}).status, 0);
  ASSERT_EQ(
      scan({readsFile(), "--code", "6", "-o", "t6", "--protein", "p6", "--summary", "s6"}).status,
      0);
  const std::vector<Fields> standard = rowsOf(file("t1"));
  const std::vector<Fields> ciliate = rowsOf(file("t6"));
  ASSERT_EQ(standard.size(), ciliate.size());
  int fewer = 0;
  for (size_t i = 0; i < standard.size(); ++i) {
    EXPECT_EQ(standard[i][7], ciliate[i][7]);
    if (standard[i][12] != "coding") continue;
    EXPECT_GE(std::stoi(standard[i][13]), std::stoi(ciliate[i][13]));
    fewer += standard[i][13] != ciliate[i][13];
  }
  EXPECT_GT(fewer, 50);
  EXPECT_NE(file("p1"), file("p6"));
  EXPECT_EQ(nlohmann::json::parse(file("s1"))["genetic_code"], 1);
  EXPECT_EQ(nlohmann::json::parse(file("s6"))["genetic_code"], 6);
  EXPECT_EQ(scan({readsFile(), "--code", "7"}).status, 2);
}

TEST_F(ScanTest, DecoderIsTheModelsUnlessItIsNamed) {
  const ProcessResult named = scan({readsFile(), "--decoder", "vote", "--summary", "s.json"});
  ASSERT_EQ(named.status, 0) << named.err;
  EXPECT_EQ(named.out, scan({readsFile()}).out);
  EXPECT_EQ(nlohmann::json::parse(file("s.json"))["decoder"], "vote");
  EXPECT_EQ(scan({readsFile(), "--decoder", "dice"}).status, 2);
}

TEST_F(ScanTest, LeastProbabilityIsRefusedWhereTheDecoderGivesNone) {
  const ProcessResult result = scan(
      {readsFile(), "--decoder", "vote", "--min-probability", "0.5", "-o", "t", "--gff3", "g"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("the decoder 'vote' gives no probabilities"), std::string::npos);
  EXPECT_EQ(filesInWork(), 0U);
  EXPECT_EQ(scan({readsFile(), "--min-probability", "1.5"}).status, 2);
}

TEST_F(ScanTest, WhatIsToldOfTheReadsIsRefusedWhereTheDecoderMakesNoUseOfIt) {
  for (const Fields& told : {Fields{"--error-rates", "mild"}, Fields{"--coding-share", "0.5"},
                             Fields{"--truncated-share", "0.5"}}) {
    const ProcessResult result = scan({readsFile(), "--decoder", "vote", told[0], told[1]});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("the decoder 'vote' makes no use of"), std::string::npos);
    EXPECT_EQ(result.out, "");
  }
  // The summary of such a decoder tells nothing.
  ASSERT_EQ(scan({readsFile(), "--decoder", "vote", "-o", "t", "--summary", "s.json"}).status, 0);
  const auto calibration = nlohmann::json::parse(file("s.json"))["calibration"];
  EXPECT_EQ(calibration["reads"], 0);
  EXPECT_TRUE(calibration["error_rates"].is_null());
  const ProcessResult again = scan({readsFile(), "--decoder", "vote", "--calibration", "s.json"});
  EXPECT_EQ(again.status, 0) << again.err;
  EXPECT_EQ(again.out, file("t"));
}

TEST_F(ScanTest, BadCalibrationsAreRefused) {
  for (const char* rates : {"0.1,0.1", "0.1,0.1,0.1,0.1", "a,b,c", "0.1,-0.1,0.1", "0.1,0.6,0.1",
                            "nan,0.1,0.1", "dirty"}) {
    EXPECT_EQ(scan({readsFile(), "--error-rates", rates}).status, 2) << rates;
  }
  const std::string unknown = scan({readsFile(), "--error-rates", "dirty"}).err;
  EXPECT_NE(unknown.find("'dirty' is neither a preset of velto simulate nor three rates"),
            std::string::npos)
      << unknown;
  EXPECT_EQ(scan({readsFile(), "--coding-share", "1.5"}).status, 2);
  EXPECT_EQ(scan({readsFile(), "--truncated-share", "-0.1"}).status, 2);
  EXPECT_EQ(scan({readsFile(), "--truncated-share", "0.5", "--calibration", "s.json"}).status, 2);
  EXPECT_EQ(scan({readsFile(), "--coding-share", "0.5", "--calibration", "s.json"}).status, 2);
  const ProcessResult missing = scan({readsFile(), "--calibration", "s.json"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.err, "velto: s.json: cannot be read\n");
  test::writeFile(work.file("s.json"), "{}");
  EXPECT_EQ(scan({readsFile(), "--calibration", "s.json", "--summary", "s.json"}).status, 2);
  const ProcessResult empty = scan({readsFile(), "--calibration", "s.json"});
  EXPECT_EQ(empty.status, 1);
  EXPECT_EQ(empty.err, "velto: s.json: holds no calibration\n");
}

// ---- Other programs

bool isInstalled(const std::string& program) {
  return test::runShell("command -v " + program, "/").status == 0;
}

TEST_F(ScanTest, TheReportIsWellFormedWhateverNamesReadsHave) {
  std::string input;
  for (size_t i = 0; i < 30; ++i) {
    input += ">r\"'</title><script>alert(1)</script>&\x01\xFF\x1b[0m\xE2\x80\xAE\n" +
             data().reads[i] + "\n";
  }
  const ProcessResult result = scan({"-", "-o", "t", "--report", "r.html"}, input);
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(file("r.html").find("<script"), std::string::npos);
  EXPECT_NE(file("r.html").find("&lt;script&gt;alert(1)"), std::string::npos);
  if (!isInstalled("python3")) GTEST_SKIP() << "python3 is not installed";
  const ProcessResult parsed =
      shell("python3 -c 'import xml.dom.minidom as m; m.parse(\"r.html\")'");
  EXPECT_EQ(parsed.status, 0) << parsed.err;
}

TEST_F(ScanTest, Gff3PassesAValidator) {
  if (!isInstalled("gt")) GTEST_SKIP() << "genometools is not installed";
  ASSERT_EQ(scan({readsFile(), "-o", "t", "--gff3", "g.gff3"}).status, 0);
  const ProcessResult checked = shell("gt gff3validator g.gff3");
  EXPECT_EQ(checked.status, 0) << checked.err.substr(0, 1000);
  EXPECT_EQ(checked.out, "input is valid GFF3\n");
}

TEST_F(ScanTest, Gff3OfPiecesAndOfRepeatedNamesPassesAValidator) {
  if (!isInstalled("gt")) GTEST_SKIP() << "genometools is not installed";
  // The first 100 records, whose names occur twice in the second piece.
  ASSERT_EQ(shell("head -n 200 " + readsFile() + " > a.fa; sed 's/^>/>x/' a.fa > b.fa").status, 0);
  ASSERT_EQ(scan({"a.fa", "--quiet", "-o", "t", "--gff3", "a.gff3"}).status, 0);
  ASSERT_EQ(scan({"b.fa", "b.fa", "--quiet", "-o", "t", "--gff3", "b.gff3"}).status, 0);
  EXPECT_NE(file("b.gff3").find("%20"), std::string::npos);
  const ProcessResult checked =
      shell("(cat a.gff3; tail -n +2 b.gff3) > both.gff3 && gt gff3validator both.gff3");
  EXPECT_EQ(checked.status, 0) << checked.err.substr(0, 1000);
}

// The sequences of a FASTA file by record name, which ends at a blank or '('.
std::vector<std::pair<std::string, std::string>> sequences(const std::string& fasta) {
  std::vector<std::pair<std::string, std::string>> list;
  for (const std::string& line : split(fasta, '\n')) {
    if (line[0] == '>') {
      list.emplace_back(line.substr(0, line.find_first_of(" (")), "");
    } else {
      list.back().second += line;
    }
  }
  return list;
}

// The codons without those that hold an N.
std::string wholeCodons(const std::string& codons) {
  std::string whole;
  for (size_t i = 0; i < codons.size(); i += 3) {
    const std::string codon = codons.substr(i, 3);
    if (codon.find('N') == std::string::npos) whole += codon;
  }
  return whole;
}

TEST_F(ScanTest, Gff3SpellsTheWholeCodonsOfTheCorrectedCodingSequence) {
  if (!isInstalled("gffread")) GTEST_SKIP() << "gffread is not installed";
  // Reads without N, so that each N of a coding sequence is a lost base.
  ASSERT_EQ(shell("sed '/^>/!s/N/A/g' " + readsFile() + " > r.fa").status, 0);
  ASSERT_EQ(scan({"r.fa", "-o", "t", "--gff3", "g.gff3", "--cds", "c.fa"}).status, 0);
  const ProcessResult cut = shell("gffread -x x.fa -g r.fa g.gff3");
  ASSERT_EQ(cut.status, 0) << cut.err;
  auto regions = sequences(file("x.fa"));
  auto coding = sequences(file("c.fa"));
  std::sort(regions.begin(), regions.end());
  std::sort(coding.begin(), coding.end());
  ASSERT_EQ(regions.size(), coding.size());
  EXPECT_GT(coding.size(), 300U);
  for (size_t i = 0; i < coding.size(); ++i) {
    EXPECT_EQ(regions[i].first, coding[i].first);
    EXPECT_EQ(regions[i].second, wholeCodons(coding[i].second));
  }
}

std::string withoutN(std::string letters) {
  letters.erase(std::remove(letters.begin(), letters.end(), 'N'), letters.end());
  return letters;
}

TEST_F(ScanTest, BedBlocksSpellTheCorrectedCodingSequence) {
  if (!isInstalled("bedtools")) GTEST_SKIP() << "bedtools is not installed";
  ASSERT_EQ(scan({readsFile(), "-o", "t", "--bed", "b.bed", "--cds", "c.fa"}).status, 0);
  const ProcessResult cut = shell(
      "cp " + readsFile() + " r.fa && bedtools getfasta -split -s -nameOnly -fi r.fa -bed b.bed");
  ASSERT_EQ(cut.status, 0) << cut.err;
  const auto blocks = sequences(cut.out);
  const auto coding = sequences(file("c.fa"));
  ASSERT_EQ(blocks.size(), coding.size());
  EXPECT_GT(coding.size(), 300U);
  for (size_t i = 0; i < coding.size(); ++i) {
    EXPECT_EQ(blocks[i].first, coding[i].first);
    EXPECT_EQ(withoutN(blocks[i].second), withoutN(coding[i].second));
  }
}

// ---- Failures

TEST_F(ScanTest, TruncatedInputNamesFileAndRecordAndLeavesNoFile) {
  ASSERT_EQ(shell("gzip -c " + readsFile() + " | head -c 400000 > cut.fa.gz").status, 0);
  const ProcessResult result =
      scan({"cut.fa.gz", "--gff3", "g.gff3", "--cds", "c.fa", "--summary", "s.json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("cut.fa.gz: record "), std::string::npos) << result.err;
  EXPECT_EQ(filesInWork(), 1U);
  // The stream got the records before the damage.
  const std::vector<Fields> rows = rowsOf(result.out);
  EXPECT_GT(rows.size(), 1000U);
  EXPECT_LT(rows.size(), data().reads.size());
  const std::string whole = scan({readsFile()}).out;
  EXPECT_EQ(result.out, whole.substr(0, result.out.size()));
}

TEST_F(ScanTest, AnEarlierFileOfTheNameOutlivesAFailure) {
  test::writeFile(work.file("t.tsv"), "old\n");
  EXPECT_EQ(scan({"missing.fa", "-o", "t.tsv"}).status, 1);
  EXPECT_EQ(file("t.tsv"), "old\n");
  EXPECT_EQ(filesInWork(), 1U);
}

TEST_F(ScanTest, OutputThatIsAnInputIsRefusedAndTheInputStays) {
  const std::string fasta = ">a\nACGT\n";
  test::writeFile(work.file("in.fa"), fasta);
  for (const char* option :
       {"-o", "--gff3", "--bed", "--cds", "--protein", "--json", "--scores", "--summary"}) {
    const ProcessResult result = scan({"in.fa", option, "./in.fa"});
    EXPECT_EQ(result.status, 2) << option;
    EXPECT_EQ(result.err,
              "velto: the output './in.fa' would overwrite the input 'in.fa'\n"
              "Run with --help for more information.\n");
    EXPECT_EQ(file("in.fa"), fasta);
  }
  EXPECT_EQ(filesInWork(), 1U);
}

TEST_F(ScanTest, OutputThatFailsLeavesTheOthersAsTheyWere) {
  test::writeFile(work.file("t.tsv"), "old\n");
  for (const std::vector<std::string>& failing : {std::vector<std::string>{"--gff3", "/dev/full"},
                                                  {"--summary", "none/summary"},
                                                  {"--summary", "/dev/full"}}) {
    std::vector<std::string> arguments = {readsFile(), "-o", "t.tsv", "--cds", "c.fa"};
    arguments.insert(arguments.end(), failing.begin(), failing.end());
    EXPECT_EQ(scan(arguments).status, 1);
    EXPECT_EQ(file("t.tsv"), "old\n");
    EXPECT_EQ(filesInWork(), 1U);
  }
}

TEST_F(ScanTest, SignalEndsTheRunAndLeavesNoFile) {
  for (const std::string name : {"HUP", "INT", "TERM"}) {
    // The run waits for its input; its outputs are open once there are two more files.
    const ProcessResult result =
        shell("set -m; mkfifo pipe; sleep 60 > pipe & " VELTO_PROGRAM " scan -d " +
              data().directory.file("model") +
              " pipe -o t.tsv --gff3 g.gff3 & "
              "until [ $(ls | wc -l) = 3 ]; do sleep 0.05; done; kill -" +
              name +
              " %2; wait %2; "
              "echo $?; kill %1; rm pipe; ls");
    const int number = name == "HUP" ? SIGHUP : name == "INT" ? SIGINT : SIGTERM;
    EXPECT_EQ(result.out, std::to_string(128 + number) + "\n") << result.err;
  }
}

TEST_F(ScanTest, MessagesDoNotGoIntoAFileWhenStandardErrorIsClosed) {
  const std::string command = std::string(VELTO_PROGRAM) + " scan -d " +
                              data().directory.file("model") + " " + readsFile() + " -o ";
  ASSERT_EQ(shell(command + "open").status, 0);
  ASSERT_EQ(shell(command + "closed 2>&- >&- <&-").status, 0);
  EXPECT_EQ(file("closed"), file("open"));
}

TEST_F(ScanTest, FullDeviceIsAnErrorOfEveryCommand) {
  const std::string model = data().directory.file("model");
  for (const std::string& command :
       {"check-model " + model, std::string("--version"), std::string("--help"),
        std::string("scan --help"), "scan -d " + model + " " + readsFile()}) {
    const ProcessResult result = shell(std::string(VELTO_PROGRAM) + " " + command + " > /dev/full");
    EXPECT_EQ(result.status, 1) << command;
    EXPECT_EQ(result.err, "velto: standard output: cannot write: No space left on device\n");
  }
}

TEST_F(ScanTest, ArgumentWithoutMeaningIsNamed) {
  const auto errorOf = [&](const std::vector<std::string>& arguments) {
    const ProcessResult result = test::runProcess(VELTO_PROGRAM, arguments, work.path());
    EXPECT_EQ(result.status, 2);
    return result.err.substr(0, result.err.find('\n'));
  };
  EXPECT_EQ(errorOf({"frob"}), "velto: there is no subcommand 'frob'");
  EXPECT_EQ(errorOf({"--nosuch"}), "velto: there is no option '--nosuch'");
  EXPECT_EQ(errorOf({"scan", "--nosuch"}), "velto: there is no option '--nosuch'");
  EXPECT_EQ(errorOf({"scan", "--nosuch=1", "r.fa"}), "velto: there is no option '--nosuch=1'");
  EXPECT_EQ(errorOf({"check-model", "a", "b"}), "velto: 'b' is one argument too many");
  EXPECT_EQ(errorOf({"scan"}), "velto: FILE is required");
}

TEST_F(ScanTest, ClosedPipeEndsQuietly) {
  const ProcessResult result =
      shell(std::string(VELTO_PROGRAM) + " scan -d " + data().directory.file("model") + " " +
            readsFile() + " | head -n 2; echo ${PIPESTATUS[0]}");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(split(result.out, '\n').size(), 3U);
  EXPECT_EQ(split(result.out, '\n').back(), "1");
}

TEST_F(ScanTest, RepeatedNamesAreWarnedAboutOnce) {
  const std::string input = ">a\nACGT\n>b\nACGT\n>a\nACGT\n>b\nACGT\n";
  const ProcessResult result = scan({"-", "--quiet"}, input);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "velto: warning: the name 'a' occurs more than once; other repeated names are not "
            "reported\n");
}

TEST_F(ScanTest, BadCommandLinesHaveStatus2) {
  EXPECT_EQ(scan({}).status, 2);
  EXPECT_EQ(scan({readsFile(), "--strand", "up"}).status, 2);
  EXPECT_EQ(scan({readsFile(), "-t", "0"}).status, 2);
  EXPECT_EQ(scan({readsFile(), "--gff3", "-"}).status, 2);
  EXPECT_EQ(scan({readsFile(), "--gff3", "a", "--bed", "./a"}).status, 2);
  EXPECT_EQ(scan({readsFile(), "--gff3", "/dev/stdout"}).status, 2);
  EXPECT_EQ(scan({"-", "-"}).status, 2);
  EXPECT_EQ(scan({readsFile(), "--report", "a", "--summary", "a"}).status, 2);
  EXPECT_EQ(scan({readsFile(), "--report", "a", "--report-reads", "51"}).status, 2);
  EXPECT_EQ(scan({readsFile(), "--multiqc", "figures.json"}).status, 2);
  for (const char* option : {"-o", "--gff3", "--summary"}) {
    EXPECT_EQ(scan({readsFile(), option, ""}).status, 2);
  }
  for (const char* score : {"nan", "inf", "1e999", "0x1", "x", ""}) {
    EXPECT_EQ(scan({readsFile(), "--min-score", score}).status, 2) << score;
    EXPECT_EQ(scan({readsFile(), "--min-probability", score}).status, 2) << score;
  }
  EXPECT_EQ(filesInWork(), 0U);
}

TEST_F(ScanTest, ModelOfTheWorkingDirectoryIsTheDefault) {
  const std::string fasta = ">r\n" + data().reads[0] + "\n";
  std::filesystem::copy(data().directory.file("model"), work.file("param-human"),
                        std::filesystem::copy_options::recursive);
  const ProcessResult result =
      test::runProcess(VELTO_PROGRAM, {"scan", "-", "--summary", "s.json"}, work.path(), fasta);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, scan({"-"}, fasta).out);
  EXPECT_EQ(nlohmann::json::parse(file("s.json"))["model"], "./param-human");
}

TEST_F(ScanTest, EmptyInputHasNoRows) {
  const ProcessResult result = scan({"-", "--quiet"}, "");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(split(result.out, '\n').size(), 1U);
}

TEST_F(ScanTest, BrokenModelsAreRefusedAsCheckModelRefusesThem) {
  const ProcessResult good =
      test::runProcess(VELTO_PROGRAM, {"check-model", data().directory.file("model")}, work.path());
  EXPECT_EQ(good.status, 0);
  EXPECT_NE(good.out.find("all files are whole and regular; decoders: vote\n"), std::string::npos);

  std::filesystem::copy(data().directory.file("model"), work.file("bad"),
                        std::filesystem::copy_options::recursive);
  const std::string matrix = readClassAt(15).matrixPath(work.file("bad"));
  test::writeFile(matrix, "1,2,3,4\n1,2,3,4\n1,2\n1,2,3,4\n");
  const ProcessResult bad = test::runProcess(VELTO_PROGRAM, {"check-model", "bad"}, work.path());
  EXPECT_EQ(bad.status, 1);
  EXPECT_EQ(bad.err, "velto: bad/paramater/matrixL2G3-ex0.txt: line 3: a field is missing\n");
  const ProcessResult scanned =
      test::runProcess(VELTO_PROGRAM, {"scan", "-d", "bad", readsFile()}, work.path());
  EXPECT_EQ(scanned.status, 1);
  EXPECT_EQ(scanned.err, bad.err);
  EXPECT_EQ(scanned.out, "");
}

}  // namespace
}  // namespace velto
