// Runs the command as a process: options, statuses, streams and files.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/model_directory.h"
#include "tests/support/models.h"
#include "tests/support/process.h"
#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

using Arguments = std::vector<std::string>;

class Evaluate : public testing::Test {
 protected:
  void SetUp() override {
    test::Random random(5);
    writeModel("model", random);
    writeModel("other", random);
    std::string coding, noncoding;
    for (int i = 0; i < 10; ++i) {
      coding +=
          record("c" + std::to_string(i) + " CDS=101-1000",
                 test::randomLetters(random, 100) + "ATG" + test::repeated("GCTGAAAACCTGAAG", 59) +
                     "GCTGAAAACTAG" + test::randomLetters(random, 200));
      noncoding += record("n" + std::to_string(i), test::randomLetters(random, 700));
    }
    test::writeFile(path("coding.fa"), coding);
    test::writeFile(path("noncoding.fa"), noncoding);
  }

  void writeModel(const std::string& name, test::Random& random) {
    ModelTables tables = test::usualRandomModel(random);
    test::setCodingMatrix(tables);
    test::writeModelDirectory(path(name), tables);
  }

  static std::string record(const std::string& header, const std::string& letters) {
    return ">" + header + "\n" + letters + "\n";
  }

  std::string path(const std::string& name) const { return directory_.file(name); }

  test::ProcessResult run(const Arguments& arguments) const {
    return test::runProcess(VELTO_PROGRAM, arguments, directory_.path());
  }

  // `velto evaluate -d model` on 30 reads of both kinds, with further arguments.
  test::ProcessResult evaluate(const Arguments& further) const {
    Arguments arguments = {"evaluate",    "-d",           "model",        "--coding", "coding.fa",
                           "--noncoding", "noncoding.fa", "--read-count", "30"};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return run(arguments);
  }

  test::TempDir directory_;
};

TEST_F(Evaluate, TablesGoToStandardOutput) {
  const auto result = evaluate({});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  EXPECT_NE(result.out.find("nucleotide correlation CC"), std::string::npos);
  EXPECT_NE(result.out.find("By class, model"), std::string::npos);
}

TEST_F(Evaluate, ReadsWrittenBySimulateGiveTheFiguresOfTheSameOptions) {
  ASSERT_EQ(run({"simulate", "--preset", "nanopore", "--read-count", "40", "--seed", "9",
                 "coding.fa", "--noncoding", "noncoding.fa", "-o", "r.fa", "--truth", "t.tsv"})
                .status,
            0);
  const auto direct =
      run({"evaluate", "-d", "model", "--preset", "nanopore", "--read-count", "40", "--seed", "9",
           "--coding", "coding.fa", "--noncoding", "noncoding.fa", "--json", "-"});
  const auto written = run({"evaluate", "-d", "model", "--reads", "r.fa", "--truth", "t.tsv",
                            "--seed", "9", "--json", "-"});
  ASSERT_EQ(direct.status, 0) << direct.err;
  ASSERT_EQ(written.status, 0) << written.err;
  const auto models = nlohmann::json::parse(direct.out)["models"];
  EXPECT_EQ(models, nlohmann::json::parse(written.out)["models"]);
  EXPECT_EQ(models[0]["reads"], 40);
  EXPECT_GT(models[0]["figures"]["sensitivity"]["of"], 0);
}

TEST_F(Evaluate, CompressedReadsAndTruthAreReadAsSimulateWritesThem) {
  for (const std::string end : {"", ".gz"}) {
    ASSERT_EQ(run({"simulate", "coding.fa", "-o", "r.fa" + end, "--truth", "t.tsv" + end}).status,
              0);
  }
  const auto plain = run({"evaluate", "-d", "model", "--reads", "r.fa", "--truth", "t.tsv"});
  const auto packed = run({"evaluate", "-d", "model", "--reads", "r.fa.gz", "--truth", "t.tsv.gz"});
  EXPECT_EQ(packed.status, 0) << packed.err;
  EXPECT_EQ(packed.out.substr(packed.out.find("seed")), plain.out.substr(plain.out.find("seed")));
}

TEST_F(Evaluate, OutputIsTheSameAtAnyNumberOfThreads) {
  const Arguments outputs = {"--compare", "other", "--json", "out.json", "--plots", "plots"};
  std::vector<std::string> results;
  for (const char* threads : {"1", "2", "8"}) {
    Arguments further = outputs;
    further.insert(further.end(), {"-t", threads});
    const auto result = evaluate(further);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    std::string bytes = result.out + test::readFile(path("out.json"));
    for (const char* name : {"score-by-error-rate", "shift-distance", "accuracy-by-class"}) {
      bytes += test::readFile(path("plots/") + name + ".svg");
    }
    results.push_back(bytes);
  }
  EXPECT_EQ(results[0], results[1]);
  EXPECT_EQ(results[0], results[2]);
}

TEST_F(Evaluate, ModelComparedWithItselfNeverWins) {
  const auto result = evaluate({"--compare", "model", "--json", "-"});
  ASSERT_EQ(result.status, 0) << result.err;
  const auto differences = nlohmann::json::parse(result.out)["differences"];
  EXPECT_EQ(differences["sensitivity"]["difference"], 0.0);
  EXPECT_EQ(differences["sensitivity"]["favouring_first"], 0.5);
}

TEST_F(Evaluate, SecondDecoderIsOfTheSameModelUnlessOneIsNamed) {
  const auto result = evaluate({"--decoder", "vote", "--compare-decoder", "vote", "--json", "-"});
  ASSERT_EQ(result.status, 0) << result.err;
  const auto json = nlohmann::json::parse(result.out);
  ASSERT_EQ(json["models"].size(), 2U);
  EXPECT_EQ(json["models"][1]["directory"], "model");
  EXPECT_EQ(json["models"][1]["decoder"], "vote");
  EXPECT_EQ(json["input"]["second decoder"], "vote");
}

TEST_F(Evaluate, DecoderThatTheModelLacksFailsByName) {
  const auto result = evaluate({"--decoder", "nosuch"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("nosuch"), std::string::npos) << result.err;
}

TEST_F(Evaluate, JsonOnStandardOutputStandsAlone) {
  const auto result = evaluate({"--json", "-"});
  EXPECT_TRUE(nlohmann::json::accept(result.out));
}

TEST_F(Evaluate, IndelScaleOfNoughtLeavesNoTrueFrameshift) {
  const auto result = evaluate({"--indel-scale", "0", "--json", "-"});
  const auto json = nlohmann::json::parse(result.out);
  EXPECT_EQ(json["models"][0]["figures"]["shift_recall_15"]["of"], 0);
  EXPECT_TRUE(json["models"][0]["figures"]["shift_recall_15"]["value"].is_null());
}

TEST_F(Evaluate, PlotsBringTheErrorRatesIntoTheJson) {
  const auto result = evaluate({"--json", "-", "--plots", "plots"});
  const auto rates = nlohmann::json::parse(result.out)["models"][0]["error_rates"];
  ASSERT_EQ(rates.size(), 4U);
  EXPECT_EQ(rates[0]["shifts_per_100_coding_bases"], 0.0);
  EXPECT_GT(rates[3]["shifts_per_100_coding_bases"], rates[1]["shifts_per_100_coding_bases"]);
}

TEST_F(Evaluate, ModelThatCannotBeReadFailsByName) {
  const auto result = run({"evaluate", "-d", "./missing", "--coding", "coding.fa"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err.rfind("velto: ./missing/paramater32/", 0), 0U) << result.err;
}

TEST_F(Evaluate, OutputThatCannotBeWrittenFails) {
  EXPECT_EQ(evaluate({"--json", "missing/out.json"}).status, 1);
  EXPECT_EQ(evaluate({"--plots", "coding.fa"}).status, 1);
}

TEST_F(Evaluate, OutputThatIsAnInputIsRefusedAndTheInputStays) {
  const std::string before = test::readFile(path("coding.fa"));
  EXPECT_EQ(evaluate({"--json", "coding.fa"}).status, 2);
  EXPECT_EQ(test::readFile(path("coding.fa")), before);
  EXPECT_EQ(evaluate({"--json", "/dev/stdout"}).status, 2);
  EXPECT_EQ(evaluate({"--json", "p/accuracy-by-class.svg", "--plots", "p"}).status, 2);
}

TEST_F(Evaluate, FailedRunLeavesEarlierOutputsAsTheyWere) {
  test::writeFile(path("plots/shift-distance.svg"), "old");
  test::writeFile(path("out.json"), "old");
  EXPECT_EQ(evaluate({"--plots", "plots", "--json", "/dev/full"}).status, 1);
  EXPECT_EQ(test::readFile(path("plots/shift-distance.svg")), "old");
  const auto full = test::runProcess(
      "/bin/bash",
      {"-c", VELTO_PROGRAM " evaluate -d model --coding coding.fa --json out.json > /dev/full"},
      directory_.path());
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(test::readFile(path("out.json")), "old");
}

TEST_F(Evaluate, AFailedRunLeavesNoFolderThatItMade) {
  std::filesystem::create_directory(path("mine"));
  EXPECT_EQ(evaluate({"--plots", "mine/new/plots", "--json", "/dev/full"}).status, 1);
  EXPECT_TRUE(std::filesystem::is_empty(path("mine")));
}

TEST_F(Evaluate, WrongCommandLinesAreUsageErrors) {
  for (const Arguments& arguments : std::vector<Arguments>{
           {},
           {"-d", "model"},
           {"--coding", "coding.fa"},
           {"-d", "model", "--reads", "r.fa"},
           {"-d", "model", "--truth", "t.tsv"},
           {"-d", "model", "--truth", "t.tsv", "--coding", "coding.fa"},
           {"-d", "model", "--reads", "r.fa", "--truth", "t.tsv", "--coding", "coding.fa"},
           {"-d", "model", "--reads", "r.fa", "--truth", "t.tsv", "--preset", "est"},
           {"-d", "model", "--reads", "r.fa", "--truth", "t.tsv", "--indel-scale", "1"},
           {"-d", "model", "--coding", "coding.fa", "--preset", "x"},
           {"-d", "model", "--coding", "coding.fa", "--indel-scale", "-1"},
           {"-d", "model", "--coding", "coding.fa", "--indel-scale", "1000"},
           {"-d", "model", "--coding", "coding.fa", "-t", "0"}}) {
    Arguments all = {"evaluate"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const auto result = run(all);
    EXPECT_EQ(result.status, 2) << testing::PrintToString(arguments);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.rfind("velto: ", 0), 0U) << result.err;
  }
}

}  // namespace
}  // namespace velto
