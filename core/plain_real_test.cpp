#include "core/plain_real.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace velto {
namespace {

TEST(PlainReal, ReadsDecimalNotation) {
  double value = 0.0;
  EXPECT_TRUE(readPlainReal("-1.5e-3", value));
  EXPECT_EQ(value, -0.0015);
  EXPECT_TRUE(readPlainReal(".25", value));
  EXPECT_EQ(value, 0.25);
  EXPECT_TRUE(readPlainReal("1e-400", value));  // too small for any but 0
  EXPECT_EQ(value, 0.0);
  float single = 0.0F;
  EXPECT_TRUE(readPlainReal("0.1", single));
  EXPECT_EQ(single, 0.1F);
}

TEST(PlainReal, RefusesAnyOtherText) {
  double value = 0.0;
  for (const char* field :
       {"", "+1", " 1", "1 ", "1,5", "0x1", "nan", "inf", "-", "1e", "1.2.3", "1e999", "--1"}) {
    EXPECT_FALSE(readPlainReal(field, value)) << field;
  }
}

TEST(PlainReal, IsWrittenSoThatItReadsBackTheSame) {
  for (const double value : {0.1, -1.0 / 3.0, 1e-300, 123456789.0}) {
    std::string text;
    appendPlainReal(text, value);
    double back = 0.0;
    EXPECT_TRUE(readPlainReal(text, back)) << text;
    EXPECT_EQ(back, value);
  }
}

TEST(PlainReal, OfSinglePrecisionIsWrittenBehindTheTextInItsOwnFewDigits) {
  std::string text = "weight ";
  appendPlainReal(text, 0.1F);
  EXPECT_EQ(text, "weight 0.1");
}

TEST(PlainReal, IsRoundedAsAnOutputStreamDoes) {
  const double values[] = {0.0,      -0.0,   1.0 / 3.0, 99.99995, 999999.5, 1234567.0,
                           0.000125, 1.5e-5, -1e300,    5e-324,   INFINITY, -INFINITY};
  for (const double value : values) {
    for (const int digits : {1, 3, 6, 17}) {
      std::ostringstream stream;
      stream.precision(digits);
      stream << value;
      std::string text = "score ";
      appendRounded(text, value, digits);
      EXPECT_EQ(text, "score " + stream.str());
    }
  }
}

}  // namespace
}  // namespace velto
