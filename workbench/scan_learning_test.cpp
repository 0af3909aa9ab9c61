// Runs `velto scan` with a decoder that learns from the reads: the sample, what is told, qualities.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "hmm/hmm_model_file.h"
#include "hmm/toy_reads.h"
#include "tests/support/process.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

using test::ProcessResult;

// 4,200 coding reads with 2 % insertions and 3 % deletions, all next to bases of low quality.
std::string fastq() {
  ToyReads reads(7);
  for (int i = 0; i < 4200; ++i) reads.addCoding(60 + i % 40, {0.02, 0.03, 0.25, 8, 30});
  std::string text;
  int number = 0;
  for (const ReadView& read : reads.views(true)) {
    text += "@r" + std::to_string(++number) + '\n';
    for (const short code : read.codes) text += "ATGC"[code];
    text += "\n+\n";
    for (const std::uint8_t phred : read.phred) text += static_cast<char>('!' + phred);
    text += '\n';
  }
  return text;
}

class LearningScanTest : public testing::Test {
 protected:
  LearningScanTest() {
    test::writeFile(work.file("model/hmm/posterior.txt"), hmmModelText(toyModel()));
    test::writeFile(work.file("reads.fq"), fastq());
  }

  // The table that `velto scan` writes of the arguments; the strand is known.
  std::string table(std::vector<std::string> arguments, const std::string& input = "") {
    arguments.insert(arguments.begin(),
                     {"scan", "-d", "model", "--decoder", "hmm", "--strand", "plus"});
    const ProcessResult result = test::runProcess(VELTO_PROGRAM, arguments, work.path(), input);
    EXPECT_EQ(result.status, 0) << result.err;
    messages = result.err;
    return result.out;
  }

  nlohmann::json calibration(const std::string& summary) {
    return nlohmann::json::parse(test::readFile(work.file(summary)))["calibration"];
  }

  test::TempDir work;
  std::string messages;  // of the last run
};

// The values of a column but its name.
std::vector<std::string> column(const std::string& table, size_t index) {
  std::vector<std::string> values;
  std::istringstream rows(table);
  for (std::string row; std::getline(rows, row);) {
    std::istringstream fields(row);
    std::string field;
    for (size_t i = 0; i <= index; ++i) std::getline(fields, field, '\t');
    values.push_back(field);
  }
  values.erase(values.begin());
  return values;
}

TEST_F(LearningScanTest, LearnsTheErrorRatesOfTheFirstReads) {
  table({"reads.fq", "--ignore-qualities", "--summary", "s.json"});
  const auto learnt = calibration("s.json");
  EXPECT_EQ(learnt["reads"], 4096);  // 32 batches of 128
  EXPECT_NEAR(learnt["error_rates"]["insertion"].get<double>(), 0.02, 0.01);
  EXPECT_NEAR(learnt["error_rates"]["deletion"].get<double>(), 0.03, 0.015);
  EXPECT_GT(learnt["coding_share"].get<double>(), 0.8);
  EXPECT_GT(learnt["truncated_share"].get<double>(), 0.8);
  EXPECT_TRUE(learnt["qualities"].empty());
  EXPECT_NE(messages.find("begin inside their coding region; learnt from 4096 reads\n"),
            std::string::npos);
}

TEST_F(LearningScanTest, WritesTheSameRowsFromStandardInputAndAtAnyNumberOfThreads) {
  const std::string whole = table({"reads.fq", "-t", "1"});
  EXPECT_EQ(column(whole, 0).size(), 4200U);
  EXPECT_EQ(table({"-", "-t", "2"}, fastq()), whole);
  EXPECT_EQ(table({"reads.fq", "-t", "8"}), whole);
}

TEST_F(LearningScanTest, PiecesWithTheCalibrationOfTheWholeMakeUpItsRows) {
  const std::string whole = table({"reads.fq", "--summary", "s.json"});
  const std::string text = fastq();
  const size_t cut = text.find("@r1101\n");
  const std::string first = table({"-", "--calibration", "s.json"}, text.substr(0, cut));
  const std::string second = table({"-", "--calibration", "s.json"}, text.substr(cut));
  EXPECT_EQ(first + second.substr(second.find('\n') + 1), whole);
  EXPECT_NE(table({"-"}, text.substr(cut)), second);
}

TEST_F(LearningScanTest, QualitiesAreUsedUnlessTheyAreIgnored) {
  const std::string with = table({"reads.fq", "--summary", "s.json"});
  EXPECT_GE(calibration("s.json")["qualities"].size(), 2U);
  EXPECT_NE(messages.find(" and their qualities\n"), std::string::npos);
  const std::string without = table({"reads.fq", "--ignore-qualities"});
  EXPECT_NE(with, without);
  std::string fasta;
  std::istringstream lines(fastq());
  std::string name, bases, plus, qualities;
  while (std::getline(lines, name) && std::getline(lines, bases) && std::getline(lines, plus) &&
         std::getline(lines, qualities)) {
    fasta += '>' + name.substr(1) + '\n' + bases + '\n';
  }
  EXPECT_EQ(table({"-"}, fasta), without);
}

TEST_F(LearningScanTest, WhatIsToldIsNotLearnt) {
  table({"reads.fq", "--ignore-qualities", "--error-rates", "0.001,0.002,0.003", "--coding-share",
         "0.25", "--truncated-share", "0.5", "--summary", "s.json"});
  const auto known = calibration("s.json");
  EXPECT_EQ(known["error_rates"]["insertion"], 0.001);
  EXPECT_EQ(known["error_rates"]["deletion"], 0.002);
  EXPECT_EQ(known["error_rates"]["substitution"], 0.003);
  EXPECT_EQ(known["coding_share"], 0.25);
  EXPECT_EQ(known["truncated_share"], 0.5);
}

TEST_F(LearningScanTest, CalibrationsThatCannotBeReadAreNamed) {
  const auto error = [this](const std::string& file) {
    return test::runProcess(VELTO_PROGRAM,
                            {"scan", "-d", "model", "--calibration", file, "reads.fq"}, work.path())
        .err;
  };
  EXPECT_EQ(error("none.json"), "velto: none.json: cannot be read\n");
  EXPECT_EQ(error("model"), "velto: model: cannot be read\n");
  EXPECT_EQ(error("/dev/null"), "velto: /dev/null: holds no calibration\n");
  EXPECT_EQ(error("/dev/zero"), "velto: /dev/zero: is larger than 4 MB\n");
}

TEST_F(LearningScanTest, LeastProbabilityDecidesWhichReadsAreCoding) {
  const std::string all = table({"reads.fq", "--min-probability", "0"});
  EXPECT_EQ(column(all, 12), std::vector<std::string>(4200, "coding"));
  const auto probability = column(all, 14);
  auto sorted = probability;
  std::sort(sorted.begin(), sorted.end());
  const std::string middle = sorted[2100];
  const auto status = column(table({"reads.fq", "--min-probability", middle}), 12);
  ASSERT_EQ(status.size(), 4200U);
  for (size_t i = 0; i < status.size(); ++i) {
    if (probability[i] == middle) continue;  // rounded
    EXPECT_EQ(status[i] == "coding", std::stod(probability[i]) > std::stod(middle)) << i;
  }
  EXPECT_GT(std::count(status.begin(), status.end(), "noncoding"), 100);
}

}  // namespace
}  // namespace velto
