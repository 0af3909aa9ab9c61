#include "training/model_directory_writer.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace velto {
namespace {

namespace fs = std::filesystem;

class ModelDirectoryWriter : public testing::Test {
 protected:
  void SetUp() override {
    directory_ = fs::path(testing::TempDir()) / ("model_writer." + std::to_string(getpid()));
    fs::create_directory(directory_);
  }
  void TearDown() override { fs::remove_all(directory_); }

  std::string contents(const std::string& name) const {
    std::ifstream in(directory_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  fs::path directory_;
};

TEST_F(ModelDirectoryWriter, WritesTheFilesOfEveryDecoderAndJoinsTheirCards) {
  const TrainedDecoder decoders[] = {
      {"one", {{"a.txt", "1\n"}, {"sub/b.txt", ""}}, R"({"x": 1})", {}},
      {"two", {{"sub/c.bin", std::string("\0z", 2)}}, R"({"y": [2]})", {}}};
  CardFacts facts;
  facts.version = "0.0";
  facts.seed = 7;
  OutputDirectory output(directory_.string());
  writeModelDirectory(facts, decoders, output);
  output.commit();
  EXPECT_EQ(contents("a.txt"), "1\n");
  EXPECT_TRUE(fs::exists(directory_ / "sub" / "b.txt"));
  EXPECT_EQ(contents("sub/c.bin"), std::string("\0z", 2));
  const auto card = nlohmann::json::parse(contents("model.json"));
  EXPECT_EQ(card["program"], "velto 0.0");
  EXPECT_EQ(card["seed"], 7);
  EXPECT_EQ(card["x"], 1);
  EXPECT_EQ(card["y"][0], 2);
}

TEST_F(ModelDirectoryWriter, CardTellsOfEveryDecoderHowItDidOnHeldBackReads) {
  HeldBackAccuracy accuracy;
  for (ModelEvaluation& judged : accuracy) judged.decoder = "two";
  EvaluationCounts& est = accuracy[0].total;  // 8 coding bases, 8 called, 6 of them in frame
  est.coding = est.called = 8;
  est.inFrame = 6;
  est.noncodingReads = 4;
  est.noncodingCalled = 1;
  CardFacts facts;
  facts.codingCounts.add(Refusal::kNone);
  facts.accuracy = {accuracy};
  OutputDirectory output(directory_.string());
  writeModelDirectory(facts, {}, output);
  output.commit();
  const DecoderSummary two = readDecoderSummary(directory_.string(), "two");
  EXPECT_EQ(two.coding, 1);
  EXPECT_EQ(two.noncoding, 0);
  EXPECT_EQ(two.frameF1[0], 0.75);
  EXPECT_EQ(two.noncodingCalled, 0.25);
  EXPECT_FALSE(two.frameF1[1].has_value());
  EXPECT_FALSE(readDecoderSummary(directory_.string(), "one").frameF1[0].has_value());
}

TEST_F(ModelDirectoryWriter, OddCardsTellNothing) {
  for (const char* text : {"", "[]", "{", R"({"coding": 1, "judged": {"vote": []}})",
                           R"({"coding": {"accepted": 1e300}, "judged": []})",
                           R"({"judged": {"vote": {"est": {"frame_f1": "high"}}}})"}) {
    std::ofstream(directory_ / "model.json") << text;
    const DecoderSummary vote = readDecoderSummary(directory_.string(), "vote");
    EXPECT_EQ(vote.coding, -1) << text;
    EXPECT_FALSE(vote.frameF1[0].has_value()) << text;
  }
  EXPECT_EQ(readDecoderSummary((directory_ / "none").string(), "vote").coding, -1);
}

TEST_F(ModelDirectoryWriter, ADecoderTrainedApartHasItsOwnCounts) {
  std::ofstream(directory_ / "model.json")
      << R"({"coding": {"accepted": 7}, "noncoding": {"accepted": 8},
             "hmm": {"coding": {"accepted": 20}, "noncoding": {"accepted": 30}}})";
  EXPECT_EQ(readDecoderSummary(directory_.string(), "vote").coding, 7);
  EXPECT_EQ(readDecoderSummary(directory_.string(), "vote").noncoding, 8);
  EXPECT_EQ(readDecoderSummary(directory_.string(), "hmm").coding, 20);
  EXPECT_EQ(readDecoderSummary(directory_.string(), "hmm").noncoding, 30);
}

TEST(Trainers, VoteComesFirst) {
  ASSERT_FALSE(trainers().empty());
  EXPECT_STREQ(trainers().front().decoder, "vote");
}

}  // namespace
}  // namespace velto
