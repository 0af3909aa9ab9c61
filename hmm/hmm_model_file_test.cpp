#include "hmm/hmm_model_file.h"

#include <gtest/gtest.h>

#include "core/random.h"
#include "hmm/toy_model.h"

namespace velto {
namespace {

HmmModel randomModel() {
  Random random(9);
  HmmModel model = toyModel();
  for (EmissionRow& row : model.emissions) {
    for (std::size_t kind = 0; kind < kEmissionKinds; ++kind) {
      row[kind] = roundedToFile(static_cast<float>(random.real()) * 0.99f + 1e-6f);
    }
  }
  for (int kmer = 0; kmer < model.network.kmers(); ++kmer) {
    for (auto& x : model.network.row(0, kmer)) x = static_cast<std::int8_t>(random.below(128));
  }
  for (std::int16_t& x : model.network.output) {
    x = static_cast<std::int16_t>(static_cast<int>(random.below(8000)) - 4000);
  }
  for (float& x : model.network.outputBias) x = static_cast<float>(random.real()) - 0.5f;
  for (auto& place : model.kozak) {
    for (float& x : place) x = roundedToFile(3.99f * static_cast<float>(random.real()) + 0.001f);
  }
  model.weights.start = {0.1f / 3.0f, 0.02f / 3.0f, 0.001f};
  model.truncatedShare = 1.0 / 7.0;
  model.decision = {-1.0 / 3.0, 1.0 / 7.0, 2.0 / 3.0, 0.58};
  model.strand = {2.0 / 7.0, 1.0 / 3.0, -1.0 / 9.0, 0.0, 0.25};
  return model;
}

// Replaces line `number` (1-based).
std::string withLine(const std::string& text, int number, const std::string& line) {
  std::size_t begin = 0;
  for (int n = 1; n < number; ++n) begin = text.find('\n', begin) + 1;
  return text.substr(0, begin) + line + text.substr(text.find('\n', begin));
}

HmmFileStatus statusOf(const std::string& text) {
  HmmModel model;
  return readHmmModel(text, model);
}

TEST(HmmModelFile, WrittenModelsReadBackTheSame) {
  const HmmModel model = randomModel();
  HmmModel read;
  const std::string text = hmmModelText(model);
  const HmmFileStatus status = readHmmModel(text, read);
  ASSERT_TRUE(status.regular()) << status.line << ": " << status.reason;
  EXPECT_EQ(hmmModelText(read), text);
  EXPECT_EQ(read.emissions, model.emissions);
  EXPECT_EQ(read.kozak, model.kozak);
  EXPECT_EQ(read.network.rows, model.network.rows);
  EXPECT_EQ(read.network.output, model.network.output);
  EXPECT_EQ(read.network.outputBias, model.network.outputBias);
  EXPECT_EQ(read.weights.start, model.weights.start);
  EXPECT_EQ(read.truncatedShare, model.truncatedShare);
  EXPECT_EQ(read.decision.logOdds, model.decision.logOdds);
  EXPECT_EQ(read.strand.logOdds, model.strand.logOdds);
  EXPECT_EQ(read.strand.calledCodingBases, model.strand.calledCodingBases);
}

TEST(HmmModelFile, NamesLineAndReason) {
  const std::string text = hmmModelText(toyModel());
  const HmmFileStatus title = statusOf(withLine(text, 1, "VELTO posterior model 3"));
  EXPECT_EQ(title.line, 1);
  EXPECT_EQ(title.reason, "expected 'VELTO posterior model 4'");
  const HmmFileStatus word = statusOf(withLine(text, 6, "stop 250000 250000 500000"));
  EXPECT_EQ(word.line, 6);
  EXPECT_EQ(word.reason, "expected 'stops'");
  const HmmFileStatus range = statusOf(withLine(text, 6, "stops 250000 250000 1000001"));
  EXPECT_EQ(range.line, 6);
  EXPECT_EQ(range.reason, "number out of range");
}

TEST(HmmModelFile, EveryIrregularLineIsRefused) {
  const std::string text = hmmModelText(toyModel());
  const std::pair<int, const char*> damages[] = {
      {2, "weights nan 0.1 0.1 0.02 0.995 0.2 0.3 0.3 0.1 0.1"},
      {2, "weights 0 0.1 0.1 0.02 0.995 0.2 0.3 0.3 0.1 0.1"},
      {2, "weights 0.05 0.1 0.1 0.02 1.5 0.2 0.3 0.3 0.1 0.1"},
      {2, "weights 0.05 0.1 0.1 0.02 0.995 0.2 0.3 0.3 0.1"},
      {2, "weights 0.05 0.1 0.1 0.02 0.995 0.2 0.3 0.3 0.1 0.1 0.1"},
      {2, "weights 0.05 0.1 0.1 0.02 0.995 0.2 0.3 0.3 0.1 0.1 "},
      {2, "weights  0.05 0.1 0.1 0.02 0.995 0.2 0.3 0.3 0.1 0.1"},
      {3, "truncated-share 0.001"},
      {3, "truncated-share 0.995"},
      {3, "truncated-share 0.5 0.5"},
      {4, "decision 1e400 1 1 0.5"},
      {4, "decision inf 1 1 0.5"},
      {4, "decision 1 1 1 1"},
      {5, "strand 101 1 0 0 0"},
      {5, "strand 1 1 0 0 -101"},
      {5, "strand 1 1 0 0"},
      {6, "stops 250000 250000 0x10"},
      {6, "stops 250000 250000 +5"},
      {6, "stops 250000 250000 5.5"},
      {6, "stops 250000 250000 007"},
      {6, "stops 250000 250000 -1"},
      {6, "stops 250000 500000 -0"},
      {8, "0 1 1 1"},
      {8, "1 1 1"},
      {21, "0 1 1 1 1 1"},
      {4117, "network 9 16 1"},
      {4117, "network 1 17 1"},
      {4117, "network 1 1000000000 1"},
      {4117, "network 1 16 99999999999999999999"},
      {4117, "network 1 16 0"},
      {4118, "offsets 61"},
      {4118, "offsets -05"},
      {4118, "offsets -"},
      {4119, "scale -1"},
      {4120, "output-bias 0 0 0 0 0 101"},
      {4122, "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 32768"},
      {4151, "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 128"},
  };
  for (const auto& [line, damage] : damages) {
    const HmmFileStatus status = statusOf(withLine(text, line, damage));
    EXPECT_EQ(status.line, line) << damage;
    EXPECT_FALSE(status.reason.empty());
  }
}

TEST(HmmModelFile, RealNumbersMayHaveMoreDigitsThanAreWritten) {
  const std::string text = hmmModelText(toyModel());
  const std::string odd = "weights 5e-2 0.060 0.01 0.02 0.995 0.2 0.3 0.3 0.1 0.1";
  HmmModel model;
  ASSERT_TRUE(readHmmModel(withLine(text, 2, odd), model).regular());
  EXPECT_EQ(hmmModelText(model), text);
}

TEST(HmmModelFile, EveryCutFileIsRefused) {
  const std::string text = hmmModelText(toyModel());
  for (std::size_t length = 0; length < text.size(); length += length < 300 ? 1 : 997) {
    EXPECT_FALSE(statusOf(text.substr(0, length)).regular()) << length;
  }
  EXPECT_FALSE(statusOf(text.substr(0, text.size() - 1)).regular());
  EXPECT_FALSE(statusOf(text + "\n").regular());
  EXPECT_FALSE(statusOf(text + "end\n").regular());
}

TEST(HmmModelFile, RowsThatCouldLeaveEightBitsAreRefused) {
  HmmModel model = toyModel();
  model.network.offsets = {0, 1};
  model.network.clearRows();
  model.network.row(0, 0)[5] = 60;
  model.network.row(1, 0)[5] = -67;
  EXPECT_TRUE(statusOf(hmmModelText(model)).regular());
  model.network.row(1, 0)[5] = -68;
  EXPECT_EQ(statusOf(hmmModelText(model)).reason, "rows of unit 6 are too large");
}

TEST(HmmModelFile, OutputsThatCouldLeaveThirtyTwoBitsAreRefused) {
  HmmModel model = toyModel();
  model.network.output[16] = -32500;
  model.network.output[17] = 32500;
  EXPECT_TRUE(statusOf(hmmModelText(model)).regular());
  model.network.output[18] = 1;
  EXPECT_EQ(statusOf(hmmModelText(model)).reason, "weights of output 2 are too large");
}

TEST(HmmModelFile, RandomDamageNeverCrashes) {
  const std::string text = hmmModelText(toyModel());
  Random random(1);
  for (int trial = 0; trial < 300; ++trial) {
    std::string damaged = text;
    for (int k = 0; k < 3; ++k) {
      damaged[random.below(static_cast<std::uint32_t>(damaged.size()))] =
          static_cast<char>(random.below(256));
    }
    HmmModel model;
    const HmmFileStatus status = readHmmModel(damaged, model);
    EXPECT_EQ(status.regular(), status.reason.empty());
  }
}

}  // namespace
}  // namespace velto
