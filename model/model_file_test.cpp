// 1. Parameter file  2. Lines and fields  3. Matrix file  4. Writing and status
#include "model/model_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <locale>
#include <sstream>

#include "tests/support/models.h"

namespace velto {
namespace {

ModelFileStatus load(const std::string& text, ModelTables& tables, int rounds = 500) {
  std::istringstream in(text);
  return readParameterFile(in, rounds, tables);
}

// A parameter file of zeros whose first lines are these.
std::string fileBeginningWith(const std::string& lines) {
  const auto count = static_cast<size_t>(std::count(lines.begin(), lines.end(), '\n'));
  std::string rest = parameterFileText(ModelTables());
  size_t at = 0;
  for (size_t i = 0; i < count; ++i) at = rest.find('\n', at) + 1;
  return lines + rest.substr(at);
}

fnlHypo firstHypothesis(const std::string& line) {
  ModelTables tables;
  load(fileBeginningWith(line + "\n"), tables);
  return tables.fh.at(0);
}

void expectHypothesis(const fnlHypo& h, int kind, int elem1, int elem2, int elem3, int gap,
                      double alpha) {
  EXPECT_EQ(h.kind, kind);
  EXPECT_EQ(h.elem1, elem1);
  EXPECT_EQ(h.elem2, elem2);
  EXPECT_EQ(h.elem3, elem3);
  EXPECT_EQ(h.gap, gap);
  EXPECT_EQ(h.alpha, alpha);
}

// Tables whose every entry differs, exact in six decimals.
ModelTables distinctTables() {
  ModelTables tables;
  int n = 1;
  const auto next = [&n] { return n++ / 64.0; };
  for (int i = 0; i < 500; ++i) {
    tables.fh.push_back({i % 5, next(), i % 4, i % 3, i % 2, i % 4});
    tables.codonTrsld[i] = {i % 2, next()};
    tables.pairAcidTrsld[i] = {i % 3, next()};
    tables.snglAcidTrsld[i] = {-(i % 2), i};
  }
  for (auto& ofGap : tables.pairAcidPriproTable) {
    for (auto& ofFirst : ofGap) {
      for (auto& prior : ofFirst) {
        prior[0] = next();
        prior[1] = -next();
      }
    }
  }
  for (auto& prior : tables.snglAcidPriproTable) {
    prior[0] = next();
    prior[1] = next();
  }
  return tables;
}

// ---- 1. Parameter file

TEST(ParameterFile, Has3785LinesInAFixedOrder) {
  const ModelTables tables = distinctTables();
  std::istringstream text(parameterFileText(tables));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  ASSERT_EQ(lines.size(), 3785U);
  EXPECT_EQ(lines[1], "1,1,1,1,1,0.062500");  // fh[1]: the fourth number, 4 / 64
  EXPECT_EQ(lines[501], "1,0.078125");        // codonTrsld[1]: the fifth
  EXPECT_EQ(lines[1001], "1,0.093750");       // pairAcidTrsld[1]: the sixth
  EXPECT_EQ(lines[1503], "-1,3");             // snglAcidTrsld[3]
  // 1500 numbers stand before the priors; pair [0][0][1] takes numbers 1503 and 1504 of them.
  EXPECT_EQ(lines[2001], "23.484375,-23.500000");
  // 3528 pair prior numbers more; single [0] takes numbers 5029 and 5030.
  EXPECT_EQ(lines[3764], "78.578125,78.593750");
}

TEST(ParameterFile, WrittenAndReadGivesTheSameTables) {
  const ModelTables tables = distinctTables();
  ModelTables again;
  EXPECT_TRUE(load(parameterFileText(tables), again).regular());
  ASSERT_EQ(again.fh.size(), 500U);
  for (size_t i = 0; i < 500; ++i) {
    const fnlHypo& h = tables.fh[i];
    expectHypothesis(again.fh[i], h.kind, h.elem1, h.elem2, h.elem3, h.gap, h.alpha);
    EXPECT_EQ(again.codonTrsld[i].polarity, tables.codonTrsld[i].polarity);
    EXPECT_EQ(again.codonTrsld[i].trsld, tables.codonTrsld[i].trsld);
    EXPECT_EQ(again.pairAcidTrsld[i].polarity, tables.pairAcidTrsld[i].polarity);
    EXPECT_EQ(again.pairAcidTrsld[i].trsld, tables.pairAcidTrsld[i].trsld);
    EXPECT_EQ(again.snglAcidTrsld[i].polarity, tables.snglAcidTrsld[i].polarity);
    EXPECT_EQ(again.snglAcidTrsld[i].trsld, tables.snglAcidTrsld[i].trsld);
  }
  EXPECT_EQ(parameterFileText(again), parameterFileText(tables));
}

TEST(ParameterFile, RandomTablesSurviveWritingUpToSixDecimals) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(test::testSeed());
  const ModelTables tables = test::usualRandomModel(random);
  ModelTables again;
  EXPECT_TRUE(load(parameterFileText(tables), again).regular());
  for (size_t i = 0; i < 500; ++i) {
    EXPECT_NEAR(again.fh[i].alpha, tables.fh[i].alpha, 5e-7);
    EXPECT_NEAR(again.codonTrsld[i].trsld, tables.codonTrsld[i].trsld, 5e-7);
  }
  for (int a = 0; a < kAminoAcids; ++a) {
    EXPECT_NEAR(again.snglAcidPriproTable[a][1], tables.snglAcidPriproTable[a][1], 5e-7);
    EXPECT_NEAR(again.pairAcidPriproTable[3][a][20][0], tables.pairAcidPriproTable[3][a][20][0],
                5e-7);
  }
}

TEST(ParameterFile, HundredRoundsSkipFourHundredLinesAndReadAllOtherSections) {
  const ModelTables tables = distinctTables();
  ModelTables again;
  EXPECT_TRUE(load(parameterFileText(tables), again, 100).regular());
  ASSERT_EQ(again.fh.size(), 100U);
  EXPECT_EQ(again.fh[99].alpha, tables.fh[99].alpha);
  EXPECT_EQ(again.codonTrsld[0].trsld, tables.codonTrsld[0].trsld);
  EXPECT_EQ(again.codonTrsld[499].trsld, tables.codonTrsld[499].trsld);
  EXPECT_EQ(again.snglAcidTrsld[499].trsld, 499);
  EXPECT_EQ(again.pairAcidPriproTable[3][20][20][1], tables.pairAcidPriproTable[3][20][20][1]);
  EXPECT_EQ(again.snglAcidPriproTable[20][1], tables.snglAcidPriproTable[20][1]);
}

TEST(ParameterFile, NoRoundsReadNoHypothesisButAllOtherSections) {
  for (const int rounds : {0, -3}) {
    ModelTables again;
    load(parameterFileText(distinctTables()), again, rounds);
    EXPECT_TRUE(again.fh.empty());
    EXPECT_EQ(again.snglAcidTrsld[499].trsld, 499);
  }
}

TEST(ParameterFile, LoadingTwiceAppendsHypothesesAndReadsTheFirstOnesAgain) {
  ModelTables tables;
  load(fileBeginningWith("3,9,15,0,2,0.412\n"), tables);
  load(fileBeginningWith("2,1,0,0,0,0.5\n"), tables);
  ASSERT_EQ(tables.fh.size(), 1000U);
  expectHypothesis(tables.fh[0], 2, 1, 0, 0, 0, 0.5);
  expectHypothesis(tables.fh[500], 0, 0, 0, 0, 0, 0.0);
}

TEST(ParameterFile, SecondLoadOfFewerRoundsLeavesTheOtherHypotheses) {
  ModelTables tables;
  load(fileBeginningWith("2,1,0,0,0,0.5\n2,2,0,0,0,0.25\n"), tables, 2);
  load(fileBeginningWith("2,3,0,0,0,0.75\n"), tables, 1);
  ASSERT_EQ(tables.fh.size(), 3U);
  EXPECT_EQ(tables.fh[0].alpha, 0.75);
  EXPECT_EQ(tables.fh[1].alpha, 0.25);
  EXPECT_EQ(tables.fh[2].alpha, 0.0);
}

TEST(ParameterFile, ShortFileLeavesTheRestZero) {
  const std::string whole = parameterFileText(distinctTables());
  size_t at = 0;
  for (int i = 0; i < 600; ++i) at = whole.find('\n', at) + 1;
  ModelTables tables;
  const ModelFileStatus status = load(whole.substr(0, at), tables);
  EXPECT_EQ(tables.fh.size(), 500U);
  EXPECT_NE(tables.codonTrsld[99].trsld, 0.0);
  EXPECT_EQ(tables.codonTrsld[100].trsld, 0.0);
  EXPECT_EQ(tables.snglAcidTrsld[499].trsld, 0);
  EXPECT_EQ(tables.snglAcidPriproTable[20][0], 0.0);
  EXPECT_EQ(status.line, 601);
  EXPECT_EQ(status.reason, "the file ends early");
}

TEST(ParameterFile, EmptyFileGives500HypothesesOfZeros) {
  ModelTables tables;
  load("", tables);
  ASSERT_EQ(tables.fh.size(), 500U);
  expectHypothesis(tables.fh[499], 0, 0, 0, 0, 0, 0.0);
}

// ---- 2. Lines and fields

TEST(ParameterLine, PairHypothesisOfLeuAndSer) {
  expectHypothesis(firstHypothesis("3,9,15,0,2,0.412"), 3, 9, 15, 0, 2, 0.412);
}

TEST(ParameterLine, SingleFieldIsReadForEveryField) {
  expectHypothesis(firstHypothesis("7"), 7, 7, 7, 7, 7, 7.0);
}

TEST(ParameterLine, LastFieldIsRepeatedWhenCommasAreMissing) {
  expectHypothesis(firstHypothesis("3,9,15"), 3, 9, 15, 15, 15, 15.0);
  expectHypothesis(firstHypothesis("2,4.75"), 2, 4, 4, 4, 4, 4.75);
}

TEST(ParameterLine, EmptyLineReadsAsZeros) {
  expectHypothesis(firstHypothesis(""), 0, 0, 0, 0, 0, 0.0);
}

TEST(ParameterLine, TextReadsAsZeroOrAsItsNumericPrefix) {
  expectHypothesis(firstHypothesis("x,12y, 3,-,+4,1e-2z"), 0, 12, 3, 0, 4, 0.01);
  expectHypothesis(firstHypothesis(",,,,,"), 0, 0, 0, 0, 0, 0.0);
}

TEST(ParameterLine, IntegersWrapAndBlanksSignsAndHexadecimalRealsAreTaken) {
  expectHypothesis(firstHypothesis("4294967298, 1,+2,0x3,-4294967293, 0x1p-2"), 2, 1, 2, 0, 3,
                   0.25);
}

TEST(ParameterLine, FieldsBehindTheLastAreIgnored) {
  expectHypothesis(firstHypothesis("2,1,0,0,0,0.5,9,9"), 2, 1, 0, 0, 0, 0.5);
}

TEST(ParameterLine, IndicesOutOfRangeAreKeptAsTheyAre) {
  expectHypothesis(firstHypothesis("3,99,-4,0,7,0.5"), 3, 99, -4, 0, 7, 0.5);
}

TEST(ParameterLine, CarriageReturnBeforeTheLineFeedChangesNothing) {
  expectHypothesis(firstHypothesis("3,9,15,0,2,0.412\r"), 3, 9, 15, 0, 2, 0.412);
}

TEST(ParameterLine, Of255CharactersIsReadWholeAndTheNextLineToo) {
  const std::string line = "2,1,0,0,0,0.5" + std::string(242, ' ');
  ASSERT_EQ(line.size(), 255U);
  ModelTables tables;
  load(fileBeginningWith(line + "\n2,3,0,0,0,0.25\n"), tables);
  expectHypothesis(tables.fh[0], 2, 1, 0, 0, 0, 0.5);
  expectHypothesis(tables.fh[1], 2, 3, 0, 0, 0, 0.25);
}

TEST(ParameterLine, Of256CharactersIsCutAndEverythingBehindReadsAsEmptyLines) {
  // The alpha's last digit is the 256th character.
  const std::string line = "2,1,0,0,0," + std::string(243, ' ') + "0.5";
  ASSERT_EQ(line.size(), 256U);
  ModelTables tables;
  const ModelFileStatus status = load(fileBeginningWith(line + "\n2,3,0,0,0,0.25\n"), tables);
  expectHypothesis(tables.fh[0], 2, 1, 0, 0, 0, 0.0);
  expectHypothesis(tables.fh[1], 0, 0, 0, 0, 0, 0.0);
  EXPECT_EQ(status.line, 1);
  EXPECT_EQ(status.reason, "the line is longer than 255 characters");
}

TEST(ParameterLine, Of255CharactersAtTheEndOfTheFileIsRead) {
  ModelTables tables;
  load("2,1,0,0,0,0.5" + std::string(242, ' '), tables);
  expectHypothesis(tables.fh[0], 2, 1, 0, 0, 0, 0.5);
  expectHypothesis(tables.fh[1], 0, 0, 0, 0, 0, 0.0);
}

// ---- 3. Matrix file

void expectMatrix(const std::string& text, const double (&expected)[16]) {
  std::istringstream in(text);
  double matrix[16];
  std::fill(std::begin(matrix), std::end(matrix), 77.0);
  readMatrixFile(in, matrix);
  for (int k = 0; k < 16; ++k) EXPECT_EQ(matrix[k], expected[k]) << k;
}

TEST(MatrixFile, FourLinesFillTheMatrixRowByRow) {
  expectMatrix("0,-1,-2,-3\n-4,-5,-6,-7\n-8,-9,-10,-11\n-12,-13,-14,-15\n",
               {0, -1, -2, -3, -4, -5, -6, -7, -8, -9, -10, -11, -12, -13, -14, -15});
}

TEST(MatrixFile, LineOfOneNumberFillsItsRow) {
  expectMatrix("1.5\n-0.1,-2.5\n1,2,3\n", {1.5, 1.5, 1.5, 1.5, -0.1, -2.5, -2.5, -2.5,  //
                                           1, 2, 3, 3, 0, 0, 0, 0});
}

TEST(MatrixFile, ThreeLinesLeaveTheLastRowZero) {
  expectMatrix("1,2,3,4\n1,2,3,4\n1,2,3,4\n", {1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4, 0, 0, 0, 0});
}

TEST(MatrixFile, CommaBehindTheFourthNumberAndFurtherLinesAreIgnored) {
  expectMatrix("1,2,3,4,\n5,6,7,8,\n9,10,11,12,\n13,14,15,16,\n99,99,99,99\n",
               {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
}

TEST(MatrixFile, LineOf256CharactersEndsTheReadablePart) {
  expectMatrix("1,2,3,4" + std::string(249, ' ') + "\n5,6,7,8\n",
               {1, 2, 3, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
}

TEST(MatrixFile, WrittenAndReadGivesTheSameMatrix) {
  double matrix[16];
  for (int k = 0; k < 16; ++k) matrix[k] = 1000.0 - 123.4375 * k;
  expectMatrix(matrixFileText(matrix), matrix);
}

// ---- 4. Writing and status

TEST(ParameterFileText, WritesMissingHypothesesAsZerosAndLeavesOutThoseBeyond500) {
  ModelTables tables;
  EXPECT_EQ(parameterFileText(tables).substr(0, 19), "0,0,0,0,0,0.000000\n");
  tables.fh.resize(501);
  tables.fh[500].alpha = 0.75;
  EXPECT_EQ(parameterFileText(tables), parameterFileText(ModelTables()));
}

TEST(ParameterFileText, HoldsNumbersOfAnySize) {
  ModelTables tables;
  tables.fh.resize(500);
  tables.fh[0].alpha = -1e308;
  const std::string line = parameterFileText(tables).substr(0, 400);
  EXPECT_EQ(line.find('\n'), 10U + 1 + 309 + 7);  // five fields, sign, digits, decimals
}

struct Irregularity {
  const char* line;
  const char* reason;
};

// A decimal comma for the whole process while the object lives, if the system has such a locale.
class DecimalComma {
 public:
  DecimalComma() {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "it_IT.UTF-8"}) {
      if (!isSet_) isSet_ = std::setlocale(LC_NUMERIC, name) != nullptr;
    }
  }
  ~DecimalComma() { std::setlocale(LC_NUMERIC, "C"); }
  DecimalComma(const DecimalComma&) = delete;
  DecimalComma& operator=(const DecimalComma&) = delete;

  bool isSet() const { return isSet_; }

 private:
  bool isSet_ = false;
};

TEST(ModelFiles, AreReadAndWrittenAlikeWhereNumbersHaveADecimalComma) {
  const ModelTables tables = distinctTables();
  const std::string text = parameterFileText(tables);
  const double matrix[16] = {-1.5, 0.25};
  const std::string matrixText = matrixFileText(matrix);
  const DecimalComma comma;
  if (!comma.isSet()) GTEST_SKIP() << "the system has no locale with a decimal comma";
  EXPECT_EQ(parameterFileText(tables), text);
  EXPECT_EQ(matrixFileText(matrix), matrixText);
  ModelTables loaded;
  EXPECT_EQ(load(text, loaded).reason, "");
  EXPECT_EQ(parameterFileText(loaded), text);
  EXPECT_EQ(firstHypothesis("0,0,0,0,0,1.5e-3").alpha, 0.0015);
}

// Points between the thousands and a comma before the decimals, as German has them.
class GermanNumbers : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(ModelFiles, AreReadAndWrittenAlikeWhateverLocaleStreamsHave) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new GermanNumbers));
  ModelTables tables;
  tables.fh.push_back({0, 1234.5, 0, 0, 0, 0});
  const std::string text = parameterFileText(tables);
  EXPECT_EQ(text.substr(0, text.find('\n')), "0,0,0,0,0,1234.500000");
  EXPECT_EQ(firstHypothesis("0,0,0,0,0,1234.5").alpha, 1234.5);
  EXPECT_EQ(firstHypothesis("0,0,0,0,0,1e-400").alpha, 0.0);
  std::locale::global(before);
}

TEST(ModelFileStatus, NamesTheFirstIrregularLine) {
  const Irregularity cases[] = {
      {"3,9,15,0,2,0.412", ""},
      {"3,9,15,0,2,0.412,", ""},
      {"3,9,15,0,2,0.412\r", ""},
      {"7", "a field is missing"},
      {"3,9,x,0,2,0.412", "a field is not a number"},
      {"3,9,15,0,2,0.412,1", "there are more fields than the format has"},
      {"3,9,15,0,2,inf", "a number is not finite"},
      {"3,21,15,0,2,0.412", "an index points outside its table"},
      {"3,20,20,0,4,0.412", "an index points outside its table"},
      {"2,-1,0,0,0,0.412", "an index points outside its table"},
      {"0,4,0,0,0,0.412", "an index points outside its table"},
      {"2147483648,1,0,0,0,0.412", "a number is out of range"},
      {"2,-2147483649,0,0,0,0.412", "a number is out of range"},
      {"4294967298,1,0,0,0,0.412", "a number is out of range"},  // 2 when it wraps
      {"99999999999999999999,1,0,0,0,0.412", "a number is out of range"},
      {"2147483647,1,-2147483648,0,0,0.412", ""},
      {"0x2,1,0,0,0,0.412", "a field is not a number"},
      {"+2,1,0,0,0,0.412", "a field is not a number"},
      {" 2,1,0,0,0,0.412", "a field is not a number"},
      {"2 ,1,0,0,0,0.412", "a field is not a number"},
      {"2,1,0,0,0, 0.412", "a field is not a number"},
      {"2,1,0,0,0,+0.412", "a field is not a number"},
      {"2,1,0,0,0,0x1p-2", "a field is not a number"},
      {"2,1,0,0,0,", "a field is not a number"},
      {"2,1,0,0,0,-", "a field is not a number"},
      {"2,1,0,0,0,-.5e-3", ""},
      {"2,1,0,0,0,1e+1", ""},
  };
  for (const Irregularity& c : cases) {
    ModelTables tables;
    const std::string lines = "2,1,0,0,0,0.5\n" + std::string(c.line) + "\n";
    const ModelFileStatus status = load(fileBeginningWith(lines), tables);
    EXPECT_EQ(status.reason, c.reason) << c.line;
    EXPECT_EQ(status.line, *c.reason == '\0' ? 0 : 2) << c.line;
  }
}

TEST(ModelFileStatus, NamesALineWithAZeroByte) {
  for (const std::string& line :
       {std::string("2,1,0,0,0,0.5\0", 14), std::string("2,1,0,0,0,0.5\0,,\r", 17)}) {
    ModelTables tables;
    const ModelFileStatus status = load(fileBeginningWith(line + "\n"), tables);
    EXPECT_EQ(status.reason, "the line holds a zero byte");
    EXPECT_EQ(status.line, 1);
    expectHypothesis(tables.fh[0], 2, 1, 0, 0, 0, 0.5);
  }
}

TEST(ModelFileStatus, LastLineNeedsNoLineBreak) {
  ModelTables tables;
  std::string text = parameterFileText(tables);
  text.pop_back();
  EXPECT_TRUE(load(text, tables).regular());
}

TEST(ModelFileStatus, NamesLinesBehindTheEnd) {
  ModelTables tables;
  const ModelFileStatus status = load(parameterFileText(tables) + "\n", tables);
  EXPECT_EQ(status.line, 3786);
  EXPECT_EQ(status.reason, "there are more lines than the format has");
}

TEST(IndicesInRange, KnowsTheBoundsOfEachKind) {
  EXPECT_TRUE(indicesInRange({kCodonKind, 1.0, 3, 3, 3, 99}));
  EXPECT_FALSE(indicesInRange({kCodonKind, 1.0, 3, 3, 4, 0}));
  EXPECT_FALSE(indicesInRange({kCodonKind, 1.0, -1, 3, 3, 0}));
  EXPECT_TRUE(indicesInRange({kSingleAcidKind, 1.0, 20, -5, 99, 99}));
  EXPECT_FALSE(indicesInRange({kSingleAcidKind, 1.0, 21, 0, 0, 0}));
  EXPECT_TRUE(indicesInRange({kPairKind, 1.0, 20, 20, -1, 3}));
  EXPECT_FALSE(indicesInRange({kPairKind, 1.0, 20, 21, 0, 3}));
  EXPECT_FALSE(indicesInRange({kPairKind, 1.0, 20, 20, 0, 4}));
  EXPECT_FALSE(indicesInRange({kPairKind, 1.0, 20, 20, 0, -1}));
  EXPECT_TRUE(indicesInRange({1, 1.0, 99, 99, 99, 99}));  // never counted, never out of range
}

}  // namespace
}  // namespace velto
