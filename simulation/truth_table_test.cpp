#include "simulation/truth_table.h"

#include <gtest/gtest.h>

#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include "seqio/input_error.h"

namespace velto {
namespace {

using Error = TemplateError;

// CC ATG AAA GGG TAG TT: coding region at 2 to 13.
const Transcript& example() {
  static const Transcript transcript =
      parseTranscript("t", "CDS=3-14", "CCATGAAAGGGTAGTT", TranscriptKind::kCoding).transcript;
  return transcript;
}

std::string lineOf(Fragment fragment, const std::vector<Error>& errors) {
  return truthLine(truthOf(applyErrors(example(), fragment, errors), "r"));
}

std::vector<TruthRow> readText(const std::string& text) {
  std::istringstream in(text);
  return readTruthTable(in, "truth.tsv");
}

std::string messageOf(const std::string& row) {
  try {
    readText(truthHeader() + row + "\n");
  } catch (const InputError& error) {
    return error.what();
  }
  return "accepted";
}

TEST(TruthTable, WholeReadWithoutErrorsIsOneExactInterval) {
  EXPECT_EQ(lineOf({0, 16}, {}), "r\t16\tt\t1\t16\t3-14:2\t3\t14\texact\texact\t\t\n");
}

TEST(TruthTable, CutFragmentHasPartialEnds) {
  EXPECT_EQ(lineOf({3, 9}, {}), "r\t9\tt\t4\t9\t1-9:2\t1\t9\tpartial\tpartial\t\t\n");
}

TEST(TruthTable, ReadWithoutCodingBasesHasEmptyColumns) {
  EXPECT_EQ(lineOf({14, 2}, {}), "r\t2\tt\t15\t2\t\t\t\t\t\t\t\n");
}

TEST(TruthTable, InsertedBaseStandsBetweenTwoIntervals) {
  // CC ATG AAA (C) GGG TAG TT
  EXPECT_EQ(lineOf({0, 16}, {{8, Error::kInsertion, 3}}),
            "r\t17\tt\t1\t16\t3-8:2,10-15:0\t3\t15\texact\texact\t9\t\n");
}

TEST(TruthTable, LostBaseStartsAnotherIntervalBehindTheGap) {
  // CC ATG AA. GGG TAG TT
  EXPECT_EQ(lineOf({0, 16}, {{7, Error::kDeletion, -1}}),
            "r\t15\tt\t1\t16\t3-7:2,8-13:1\t3\t13\texact\texact\t\t8\n");
}

TEST(TruthTable, RowsAreReadBackAsWritten) {
  constexpr std::uint64_t kSeed = 11;
  SCOPED_TRACE(testing::Message() << "seed " << kSeed);
  Random random(kSeed);
  std::string text = truthHeader();
  std::vector<SimulatedRead> reads;
  for (int i = 0; i < 500; ++i) {
    const Fragment fragment = sampleFragment(example(), {1, 16}, random);
    reads.push_back(simulateRead(example(), fragment, {{0.05, 0.1, 0.1, 0.05}}, random));
    text += truthLine(truthOf(reads.back(), "r" + std::to_string(i)));
  }
  const std::vector<TruthRow> rows = readText(text);
  ASSERT_EQ(rows.size(), reads.size());
  std::string again = truthHeader();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    again += truthLine(rows[i]);
    EXPECT_EQ(rows[i].frames(), reads[i].frame);
    EXPECT_EQ(rows[i].start, reads[i].start);
    EXPECT_EQ(rows[i].fragment.start, reads[i].fragment.start);
  }
  EXPECT_EQ(again, text);
}

TEST(TruthTable, StrandsAreTheLastColumnWhereTheyAreNamed) {
  SimulatedRead read = applyErrors(example(), {14, 2}, {});
  read.reversed = true;
  const std::string line = truthLine(truthOf(read, "r"), Strands::kNamed);
  EXPECT_EQ(line, "r\t2\tt\t15\t2\t\t\t\t\t\t\t\t-\n");
  EXPECT_EQ(truthHeader(Strands::kNamed),
            truthHeader().substr(0, truthHeader().size() - 1) + "\tstrand\n");
  EXPECT_TRUE(readText(truthHeader(Strands::kNamed) + line).at(0).reversed);
  const std::string plus = line.substr(0, line.size() - 2) + "+\n";
  EXPECT_FALSE(readText(truthHeader(Strands::kNamed) + plus).at(0).reversed);
  const std::string other = line.substr(0, line.size() - 2) + "\n";
  EXPECT_THROW(readText(truthHeader(Strands::kNamed) + other), InputError);
  EXPECT_THROW(readText(truthHeader() + line), InputError);
}

TEST(TruthTable, TableWithoutRowsIsEmpty) { EXPECT_TRUE(readText(truthHeader()).empty()); }

TEST(TruthTable, OtherHeaderLineIsRefused) {
  EXPECT_THROW(readText(""), InputError);
  EXPECT_THROW(readText("read\tlength\n"), InputError);
}

TEST(TruthTable, ErrorsNameFileLineAndColumn) {
  EXPECT_EQ(messageOf("r\t16"), "truth.tsv: line 2: expected 12 columns, found 2");
  EXPECT_EQ(messageOf("r\tx\tt\t1\t16\t3-14:2\t3\t14\texact\texact\t\t"),
            "truth.tsv: line 2: column length: 'x' is not a number from 0");
}

TEST(TruthTable, ContradictionsAreRefused) {
  EXPECT_EQ(messageOf("r\t16\tt\t1\t16\t3-14:2\t3\t14\texact\texact\t\t"), "accepted");
  EXPECT_EQ(messageOf("r\t16\tt\t1\t15\t3-8:2,10-14:0\t3\t14\texact\texact\t9\t"), "accepted");
  const char* const kBroken[] = {
      "r\t16\tt\t1\t16\t3-17:2\t3\t17\texact\texact\t\t",            // beyond the read
      "r\t16\tt\t1\t16\t3-14:3\t3\t14\texact\texact\t\t",            // no such frame
      "r\t16\tt\t1\t16\t3-14\t3\t14\texact\texact\t\t",              // no frame
      "r\t16\tt\t1\t16\t3-9:2,9-14:0\t3\t14\texact\texact\t\t",      // overlap
      "r\t16\tt\t1\t16\t3-14:2\t4\t14\texact\texact\t\t",            // other start
      "r\t16\tt\t1\t16\t3-14:2\t3\t\texact\texact\t\t",              // no stop
      "r\t16\tt\t1\t16\t3-14:2\t3\t14\tsure\texact\t\t",             // no such kind
      "r\t16\tt\t1\t16\t\t\t\texact\t\t\t",                          // kind without region
      "r\t16\tt\t1\t16\t3-14:2\t3\t14\texact\texact\t3\t",           // at the first base
      "r\t16\tt\t1\t16\t3-14:2\t3\t14\texact\texact\t9\t",           // inserted and coding
      "r\t16\tt\t1\t15\t3-8:2,10-14:0\t3\t14\texact\texact\t9,9\t",  // inserted twice
      "r\t16\tt\t1\t16\t3-14:2\t3\t14\texact\texact\t\t9,8",         // descending
      "r\t16\tt\t0\t16\t3-14:2\t3\t14\texact\texact\t\t",            // 1-based
  };
  for (const char* row : kBroken) EXPECT_NE(messageOf(row), "accepted") << row;
}

// Bytes without end and without line feed.
class EndlessLine : public std::streambuf {
 protected:
  int_type underflow() override {
    setg(block_, block_, block_ + sizeof block_);
    return traits_type::to_int_type(*gptr());
  }

 private:
  char block_[2] = {'\t', ','};
};

TEST(TruthTable, EndlessLineIsRefused) {
  EndlessLine bytes;
  std::istream in(&bytes);
  try {
    readTruthTable(in, "truth.tsv");
    FAIL();
  } catch (const InputError& error) {
    EXPECT_STREQ(error.what(), "truth.tsv: line 1: line too long");
  }
}

TEST(TruthTable, RowOfManyColumnsIsRefusedByTheirNumber) {
  EXPECT_EQ(messageOf(std::string(99, '\t')), "truth.tsv: line 2: expected 12 columns, found 100");
}

}  // namespace
}  // namespace velto
