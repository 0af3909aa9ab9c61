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
  const TrainedDecoder decoders[] = {{{{"a.txt", "1\n"}, {"sub/b.txt", ""}}, R"({"x": 1})", {}},
                                     {{{"sub/c.bin", std::string("\0z", 2)}}, R"({"y": [2]})", {}}};
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

TEST(Trainers, VoteComesFirst) {
  ASSERT_FALSE(trainers().empty());
  EXPECT_STREQ(trainers().front().decoder, "vote");
}

}  // namespace
}  // namespace velto
