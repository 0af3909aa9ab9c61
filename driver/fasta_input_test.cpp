#include "driver/fasta_input.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "driver/web_predict.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

FastaRead readText(const std::string& text) {
  std::istringstream in(text);
  return readFasta(in);
}

using Codes = std::vector<short>;

TEST(FastaInput, JoinsLinesWithAnyLineEnds) {
  const FastaRead read = readText(">x\r\nAC\r\nG\nT\r\n\n");
  EXPECT_EQ(read.codes, (Codes{0, 3, 2, 1}));
  EXPECT_EQ(read.header, "x\r");  // the carriage return belongs to the header
}

TEST(FastaInput, LowerCaseAndOtherLettersAreUnknownBases) {
  EXPECT_EQ(readText(">\nacgt").codes, (Codes{-1, -1, -1, -1}));
  EXPECT_EQ(readText(">\nACGN U*").codes, (Codes{0, 3, 2, -1, -1, -1, -1}));
}

TEST(FastaInput, WithoutAHeaderLineTheFirstCharacterIsABase) {
  const FastaRead read = readText("ACGT\n");
  EXPECT_EQ(read.codes, (Codes{0, 3, 2, 1}));
  EXPECT_EQ(read.header, "");
}

TEST(FastaInput, LineBreakAtTheVeryBeginningIsAnUnknownBase) {
  EXPECT_EQ(readText("\nAC\nG").codes, (Codes{-1, 0, 3, 2}));
  EXPECT_EQ(readText("\r\nAC").codes, (Codes{-1, 0, 3}));
}

TEST(FastaInput, SecondHeaderLineIsCodedLikeBases) {
  EXPECT_EQ(readText(">a\nAC\n>CAT\nG").codes, (Codes{0, 3, -1, 3, 0, 1, 2}));
}

TEST(FastaInput, HeaderWithoutALineFeedEndsAtTheEndOfTheFile) {
  const FastaRead read = readText(">only a header");
  EXPECT_EQ(read.header, "only a header");
  EXPECT_TRUE(read.codes.empty());
  EXPECT_TRUE(readText(">").codes.empty());
  EXPECT_TRUE(readText("").codes.empty());
}

TEST(FastaInput, HeaderKeepsFurtherMarksAndBytesOfAnyKind) {
  const std::string header = std::string(">b\0c\xff", 5);
  EXPECT_EQ(readText(">" + header + "\nA").header, header);
}

TEST(FastaInput, LineOfAMillionBasesIsReadWhole) {
  EXPECT_EQ(readText(">x\n" + std::string(1000000, 'G') + "\nA").codes.size(), 1000001U);
}

class ReadFile : public testing::Test {
 protected:
  int read(const std::string& text) {
    test::writeFile(path_, text);
    return predictor_.GetArrayFromFile(path_.data());
  }

  test::TempDir directory_;
  std::string path_ = directory_.file("in.fa");
  WebPredict predictor_;
};

TEST_F(ReadFile, ThirtyBasesAreAccepted) {
  EXPECT_EQ(read(">thirty\n" + std::string(15, 'A') + "\n" + std::string(15, 'C') + "\n"), 0);
  EXPECT_EQ(predictor_.arrayLen, 30);
  EXPECT_EQ(predictor_.seqLength, 30);
  EXPECT_EQ(predictor_.gcPressure, 50.0);
  EXPECT_EQ(predictor_.fastaHeader, "thirty");
  EXPECT_EQ(predictor_.seqArray[14], 0);
  EXPECT_EQ(predictor_.seqArray[15], 3);
}

TEST_F(ReadFile, HeaderIsAppendedToWhatTheMemberHolds) {
  predictor_.fastaHeader = "before ";
  read(">thirty\n" + std::string(30, 'A') + "\n");
  EXPECT_EQ(predictor_.fastaHeader, "before thirty");
}

TEST_F(ReadFile, GcContentIsTakenOverAllCharacters) {
  read(">x\n" + std::string(10, 'G') + std::string(10, 'N') + std::string(10, 'a') + "\n");
  EXPECT_EQ(predictor_.gcPressure, 10 * 100.0 / 30);
  EXPECT_EQ(predictor_.arrayLen, 30);
}

TEST_F(ReadFile, LowerCaseReadHasNoGc) {
  read(">x\n" + std::string(40, 'c') + "\n");
  EXPECT_EQ(predictor_.gcPressure, 0.0);
}

TEST_F(ReadFile, TwentyNineBasesAndEmptyFilesEndTheProcess) {
  EXPECT_EXIT(read(">x\n" + std::string(29, 'A') + "\n"), testing::ExitedWithCode(1), "^$");
  EXPECT_EXIT(read(""), testing::ExitedWithCode(1), "^$");
  EXPECT_EXIT(read(">no line feed"), testing::ExitedWithCode(1), "^$");
}

TEST_F(ReadFile, MissingFileIsReportedOnStandardErrorAndEndsTheProcess) {
  std::string missing = directory_.file("missing.fa");
  EXPECT_EXIT(predictor_.GetArrayFromFile(missing.data()), testing::ExitedWithCode(1),
              "^CAN NOT FIND FILE: .*/missing.fa\n$");
}

class ReadStandardInput : public testing::Test {
 protected:
  void read(const std::string& text) {
    std::istringstream in(text);
    std::streambuf* const usual = std::cin.rdbuf(in.rdbuf());
    std::cin.clear();
    EXPECT_EQ(predictor_.GetArrayFromCin(), 0);
    std::cin.rdbuf(usual);
    std::cin.clear();
  }

  std::vector<short> codes() const {
    return {predictor_.seqArray, predictor_.seqArray + predictor_.arrayLen};
  }

  WebPredict predictor_;
};

TEST_F(ReadStandardInput, StopsAtTheExitLine) {
  read("one\ntwo\n6\nACG\nTGN\nexit now\nAAA\n");
  EXPECT_EQ(codes(), (Codes{0, 3, 2, 1, 2, -1}));
  EXPECT_EQ(predictor_.seqLength, 6);
  EXPECT_EQ(predictor_.gcPressure, 3 * 100.0 / 6);
}

TEST_F(ReadStandardInput, NothingBehindTheExitLineIsRead) {
  read("a\nb\n8\nACG\nexit\nGGGGG\n");
  EXPECT_EQ(codes(), (Codes{0, 3, 2, -1, -1, -1, -1, -1}));
  EXPECT_EQ(predictor_.gcPressure, 2 * 100.0 / 8);
}

TEST_F(ReadStandardInput, ExitCountsAtTheBeginningOfALineOnly) {
  read("a\nb\n6\n exit\nG\nexit\n");
  EXPECT_EQ(codes(), (Codes{-1, -1, -1, -1, -1, 2}));
}

TEST_F(ReadStandardInput, NeverStoresMoreThanTheAnnouncedLengthButCountsGAndCOfAllCharacters) {
  read("a\nb\n4\nACGTACGT\nACGTN\nexit\n");
  EXPECT_EQ(codes(), (Codes{0, 3, 2, 1}));
  EXPECT_EQ(predictor_.seqLength, 4);
  EXPECT_EQ(predictor_.gcPressure, 6 * 100.0 / 4);  // two a line of four
}

TEST_F(ReadStandardInput, MissingBasesAreUnknown) {
  read("a\nb\n5\nGG\n");
  EXPECT_EQ(codes(), (Codes{2, 2, -1, -1, -1}));
  EXPECT_EQ(predictor_.gcPressure, 40.0);
}

TEST_F(ReadStandardInput, LengthThatIsNotPositiveIsAnEmptyRead) {
  for (const char* length : {"0", "-3", "x", ""}) {
    read(std::string("a\nb\n") + length + "\nACGT\nexit\n");
    EXPECT_EQ(predictor_.seqLength, 0) << length;
    EXPECT_EQ(predictor_.gcPressure, 0.0) << length;
  }
  read("");
  EXPECT_EQ(predictor_.seqLength, 0);
}

}  // namespace
}  // namespace velto
