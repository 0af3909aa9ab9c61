// Malformed FASTA and model files by the hundred through the whole prediction and every report:
// nothing may crash, hang or read outside its arrays, which the sanitizers watch.
#include <gtest/gtest.h>

#include <sstream>

#include "driver/fasta_input.h"
#include "model/model_file.h"
#include "model/read_class.h"
#include "report/html_page.h"
#include "report/score_file.h"
#include "report/text_report.h"
#include "report/web_listing.h"
#include "tests/support/models.h"
#include "tests/support/reads.h"

namespace velto {
namespace {

using test::chance;
using test::randomInt;

// Cuts, doubles, exchanges and overwrites pieces of a text.
std::string mutated(test::Random& random, std::string text) {
  static const char* const kPieces[] = {
      "\n",          "\r\n", ",",     ">",      "-",
      "nan",         "-inf", "1e999", "0x1p-9", "99999999999999999999",
      "-2147483648", "N",    "ATG",   "TAA",    ""};
  const int changes = randomInt(random, 1, 12);
  for (int i = 0; i < changes; ++i) {
    const auto size = static_cast<int>(text.size());
    const auto at = static_cast<size_t>(randomInt(random, 0, size));
    const auto length = static_cast<size_t>(randomInt(random, 0, chance(random, 0.2) ? size : 20));
    switch (randomInt(random, 0, 5)) {
      case 0:
        text.erase(at, length);
        break;
      case 1:
        text.insert(at, text.substr(at, std::min<size_t>(length, 2000)));
        break;
      case 2:
        text.replace(at, std::min<size_t>(length, 5), kPieces[randomInt(random, 0, 14)]);
        break;
      case 3:
        text.insert(at, std::string(static_cast<size_t>(randomInt(random, 0, 400)),
                                    static_cast<char>(randomInt(random, -128, 127))));
        break;
      case 4:
        if (at < text.size()) text[at] = static_cast<char>(randomInt(random, -128, 127));
        break;
      default:
        if (chance(random, 0.3)) text.resize(at);
    }
  }
  return text;
}

// The prediction and all reports of a read with the process-wide model.
size_t reportEverything(const FastaRead& read, int width) {
  WebPredict result;
  result.fastaHeader = read.header;
  result.setRead(read.codes);
  WINDOW_WIDTH = classifyRead(result.seqLength, result.gcPressure).windowWidth;
  result.predictRead();
  std::ostringstream out;
  writeTextReport(out, result, static_cast<unsigned>(width));
  writeHtmlPage(out, result, width);
  writeScoreFile(out, result);
  testing::internal::CaptureStdout();
  result.OutWebResult();
  return out.str().size() + testing::internal::GetCapturedStdout().size();
}

FastaRead parse(const std::string& text) {
  std::istringstream in(text);
  return readFasta(in);
}

std::string randomFasta(test::Random& random) {
  const int length = randomInt(random, 30, chance(random, 0.2) ? 900 : 300);
  return ">read\n" + test::randomLetters(random, length, 0.01) + "\n";
}

TEST(MalformedFiles, FastaOfAnyKindIsReportedOrRefused) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  int reported = 0;
  for (int round = 0; round < 500; ++round) {
    if (round % 20 == 0) processModel = test::usualRandomModel(random);
    const FastaRead read = parse(mutated(random, randomFasta(random)));
    if (read.codes.size() < kLeastBases) continue;
    EXPECT_GT(reportEverything(read, randomInt(random, -3, 100)), 0U);
    ++reported;
  }
  EXPECT_GT(reported, 250);
}

TEST(MalformedFiles, ModelsOfAnyKindAreReadAndVote) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  const std::string usual = parameterFileText(test::usualRandomModel(random));
  const std::string wild = parameterFileText(test::wildRandomModel(random));
  int irregular = 0;
  for (int round = 0; round < 400; ++round) {
    std::istringstream parameters(mutated(random, round % 2 == 0 ? usual : wild));
    std::istringstream matrix(mutated(random, "0,-1,-2,-3\n-4,5,-6,-7\n8,9,-1,-1\n-2,3,-4,5\n"));
    processModel = ModelTables();
    const ModelFileStatus status = readParameterFile(parameters, 500, processModel);
    readMatrixFile(matrix, malkovChain);
    EXPECT_EQ(fh.size(), 500U);
    irregular += !status.regular();
    EXPECT_GT(reportEverything(parse(randomFasta(random)), 60), 0U);
  }
  EXPECT_GT(irregular, 200);
}

TEST(MalformedFiles, TablesOfAnyKindPredict) {
  test::Random random(test::testSeed());
  SCOPED_TRACE(testing::Message() << "seed " << test::testSeed());
  for (int round = 0; round < 200; ++round) {
    processModel = test::wildRandomModel(random);
    EXPECT_GT(reportEverything(parse(randomFasta(random)), 60), 0U);
  }
}

}  // namespace
}  // namespace velto
