#include "batch/file_calibration.h"

#include <gtest/gtest.h>

namespace velto {
namespace {

Calibration known() {
  Calibration calibration;
  calibration.reads = 1000;
  calibration.errorRates = BaseErrorRates{0.1 / 3, 0.007, 0.0125};
  calibration.codingShare = 2.0 / 3;
  calibration.truncatedShare = 1.0 / 7;
  calibration.qualities = {{7, {4.5, 3.25, 2}}, {93, {1.0 / 7, 0.5, 0.25}}};
  return calibration;
}

void expectEqual(const BaseErrorRates& a, const BaseErrorRates& b) {
  EXPECT_EQ(a.insertion, b.insertion);
  EXPECT_EQ(a.deletion, b.deletion);
  EXPECT_EQ(a.substitution, b.substitution);
}

TEST(FileCalibration, IsReadBackToTheLastBit) {
  const std::string text = calibrationJson(known());
  for (const std::string& file : {text, R"({"reads": 5, "calibration": )" + text + "}"}) {
    const Calibration again = parseCalibration(file, "c.json");
    EXPECT_EQ(again.reads, 1000);
    expectEqual(again.errorRates.value(), known().errorRates.value());
    EXPECT_EQ(again.codingShare.value(), 2.0 / 3);
    EXPECT_EQ(again.truncatedShare.value(), 1.0 / 7);
    ASSERT_EQ(again.qualities.size(), 2U);
    EXPECT_EQ(again.qualities[0].most, 7);
    EXPECT_EQ(again.qualities[1].most, 93);
    expectEqual(again.qualities[0].factors, known().qualities[0].factors);
    expectEqual(again.qualities[1].factors, known().qualities[1].factors);
  }
}

TEST(FileCalibration, OfNothingKnownIsReadBackAsSuch) {
  const Calibration again = parseCalibration(calibrationJson({}), "c.json");
  EXPECT_EQ(again.reads, 0);
  EXPECT_FALSE(again.errorRates.has_value());
  EXPECT_FALSE(again.codingShare.has_value());
  EXPECT_FALSE(again.truncatedShare.has_value());
  EXPECT_TRUE(again.qualities.empty());
}

std::string refusalOf(const std::string& text) {
  try {
    parseCalibration(text, "c.json");
  } catch (const Error& error) {
    return error.what();
  }
  return "";
}

TEST(FileCalibration, ThatIsNoneIsRefusedWithTheFile) {
  const std::string none = "c.json: holds no calibration";
  EXPECT_EQ(refusalOf(""), none);
  EXPECT_EQ(refusalOf("{"), none);
  EXPECT_EQ(refusalOf("[]"), none);
  EXPECT_EQ(refusalOf("3"), none);
  EXPECT_EQ(refusalOf("{}"), none);
  EXPECT_EQ(refusalOf(R"({"calibration": null})"), none);
  EXPECT_EQ(refusalOf(R"({"reads": "x", "error_rates": null, "coding_share": null,)"
                      R"( "truncated_share": null, "qualities": []})"),
            none);
}

TEST(FileCalibration, OutOfRangeIsRefused) {
  const auto with = [](const std::string& name, const std::string& value) {
    auto text = calibrationJson(known());
    const size_t at = text.find(name) + name.size() + 2;
    return text.substr(0, at) + value + text.substr(text.find_first_of(",}", at));
  };
  EXPECT_EQ(refusalOf(with("insertion", "1.5")), "c.json: insertion is out of range");
  EXPECT_EQ(refusalOf(with("coding_share", "-0.5")), "c.json: coding_share is out of range");
  EXPECT_EQ(refusalOf(with("truncated_share", "2")), "c.json: truncated_share is out of range");
  EXPECT_EQ(refusalOf(with("reads", "1e99")), "c.json: reads is out of range");
  EXPECT_EQ(refusalOf(with("most", "300")), "c.json: most is out of range");
  EXPECT_EQ(refusalOf(with("most", "93")), "c.json: the qualities do not ascend");
}

TEST(FileCalibration, IsToldInPercent) {
  EXPECT_EQ(calibrationText(known()),
            "3.33 % insertions, 0.70 % deletions, 1.25 % substitutions; 66.67 % of the reads code, "
            "14.29 % of these begin inside their coding region; learnt from 1000 reads and their "
            "qualities");
  Calibration rates;
  rates.errorRates = BaseErrorRates{0.01, 0, 0};
  EXPECT_EQ(calibrationText(rates), "1.00 % insertions, 0.00 % deletions, 0.00 % substitutions");
  rates.truncatedShare = 0.25;
  EXPECT_EQ(
      calibrationText(rates),
      "1.00 % insertions, 0.00 % deletions, 0.00 % substitutions; 25.00 % of the coding reads "
      "begin inside their coding region");
  EXPECT_EQ(calibrationText({}), "");
  Calibration tooFew;
  tooFew.reads = 3;
  EXPECT_EQ(calibrationText(tooFew), "");
  tooFew.codingShare = 0.5;
  EXPECT_EQ(calibrationText(tooFew), "50.00 % of the reads code; learnt from 3 reads");
}

TEST(ReadsOf, HaveQualitiesUnlessTheseAreToBeIgnored) {
  const std::vector<Record> records = {{"a", "", "ACG", 1, 1, {10, 20, 30}}, {"b", "", "AC", 2, 3}};
  const std::vector<Read> reads = readsOf(records, true);
  ASSERT_EQ(reads.size(), 2U);
  EXPECT_EQ(reads[0].bases, "ACG");
  ASSERT_EQ(reads[0].qualities.size(), 3U);
  EXPECT_EQ(reads[0].qualities[2], 30);
  EXPECT_TRUE(reads[1].qualities.empty());
  EXPECT_TRUE(readsOf(records, false)[0].qualities.empty());
}

}  // namespace
}  // namespace velto
