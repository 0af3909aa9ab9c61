#include "workbench/decimal_numbers.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace velto {
namespace {

struct Values {
  int count = 0;
  std::optional<double> score;
  std::string name;
};

// What `run OPTION TEXT` sets.
Values parsed(const std::string& option, const std::string& text) {
  Values values;
  CLI::App app;
  CLI::App* command = app.add_subcommand("run");
  command->add_option("--count", values.count)->check(CLI::Range(0, 100));
  command->add_option("--score", values.score);
  command->add_option("--name", values.name);
  requireDecimalNumbers(app);
  app.parse({text, option, "run"});  // CLI11 takes the words last first
  return values;
}

TEST(DecimalNumbers, AreTakenAsTheyStand) {
  EXPECT_EQ(parsed("--count", "12").count, 12);
  EXPECT_EQ(parsed("--score", "-1.5e2").score, -150.0);
  EXPECT_EQ(parsed("--score", ".25").score, 0.25);
}

TEST(DecimalNumbers, LeadingZerosDoNotMakeThemOctal) {
  EXPECT_EQ(parsed("--count", "010").count, 10);
  EXPECT_EQ(parsed("--count", "09").count, 9);
  EXPECT_EQ(parsed("--count", "0").count, 0);
  EXPECT_EQ(parsed("--count", "00").count, 0);
  EXPECT_EQ(parsed("--score", "-00.5").score, -0.5);
}

TEST(DecimalNumbers, OthersAreRefused) {
  for (const char* text :
       {"0x10", "0X1p3", "1e999", "inf", "nan", "-nan", "12 ", " 12", "1,5", "x"}) {
    EXPECT_THROW(parsed("--count", text), CLI::ValidationError) << text;
    EXPECT_THROW(parsed("--score", text), CLI::ValidationError) << text;
  }
  EXPECT_THROW(parsed("--count", "1.5"), CLI::ParseError);
  EXPECT_THROW(parsed("--count", "0101"), CLI::ValidationError);  // beyond its range
}

TEST(DecimalNumbers, LeastValuesAreNamedAlone) {
  const CLI::Validator fromOne = atLeast(1);
  EXPECT_EQ(fromOne("1"), "");
  EXPECT_EQ(fromOne("12.5"), "");
  EXPECT_EQ(fromOne("0.99"), "must be 1 or more");
  EXPECT_EQ(fromOne("-1"), "must be 1 or more");
}

TEST(DecimalNumbers, TextsMayHoldAnything) {
  EXPECT_EQ(parsed("--name", "0x10").name, "0x10");
  EXPECT_EQ(parsed("--name", "007").name, "007");
}

}  // namespace
}  // namespace velto
