#include "report/web_listing.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "tests/support/reads.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

std::string listingOf(WebPredict& result) {
  testing::internal::CaptureStdout();
  const auto precision = std::cout.precision(6);
  EXPECT_EQ(result.OutWebResult(), 0);
  std::cout.precision(precision);
  return testing::internal::GetCapturedStdout();
}

TEST(WebListing, OfAHandMadeResultIsAsInTheGoldenFile) {
  WebPredict result;
  test::fill(result, {test::repeated("AC", 15), "", {-1, 0, 0, 1, -1}, 3, 11, 1.0});
  result.lay.cls[0] = {-1, -10, -100, -10, -1000};
  result.lay.cls[1] = {-1, -1, -1, -10};
  result.lay.met[0] = {-14, -21, -14, -14, -14};
  result.lay.met[1] = {-14, -14, -14, -14};
  result.frameScore[0] = {-10.0, 1.5, -10.0, 1.0 / 3, 12.345};
  result.frameScore[1] = {0.0, 0.0, 0.0, -1234.5};
  result.frameScore[2] = {1.0, 1.0, 1.0, 1.0};
  EXPECT_EQ(listingOf(result), test::readFile("tests/golden/listing.txt"));
  EXPECT_EQ(result.lay.met[0][2], kStopCodon);  // the layout is changed
}

TEST(WebListing, StopsAreMarkedUpToTheShortestFrameSoFar) {
  WebPredict result;
  result.setRead(test::baseCodes(test::repeated("A", 30)));
  result.lay.cls[0] = {-1, -1};
  result.lay.cls[1] = {-100, -1, -100};
  result.lay.cls[2] = {-100};
  for (auto& marks : result.lay.met) marks.assign(3, kOtherCodon);
  listingOf(result);
  EXPECT_EQ(result.lay.met[1], (std::vector<int>{-100, -14, -14}));
  EXPECT_EQ(result.lay.met[2], (std::vector<int>{-100, -14, -14}));
}

TEST(WebListing, EmptyFramesPrintTheirLabelsOnly) {
  WebPredict result;
  EXPECT_EQ(listingOf(result),
            "0%\n0\n0\n0\n0atg\n\n0frame\n\n0value\n1atg\n\n1frame\n\n1value\n2atg\n\n2frame\n\n"
            "2value\n\nexit\n");
}

TEST(WebListing, BreaksFollowEvery500thMarkAndEvery100thValue) {
  WebPredict result;
  result.setRead(test::baseCodes(test::repeated("A", 30)));
  result.lay.cls[0].assign(502, kNonCodingWindow);
  result.lay.met[0].assign(502, kOtherCodon);
  result.frameScore[0].assign(502, 1.0);
  const std::string listing = listingOf(result);
  EXPECT_NE(listing.find("0atg\n.\n" + test::repeated(".", 500) + "\n.\n0frame\n-\n" +
                         test::repeated("-", 500) + "\n-\n0value\n1,\n" +
                         test::repeated(test::repeated("1,", 100) + "\n", 5) + "1,1atg\n"),
            std::string::npos);
}

TEST(WebListing, ConsoleKeepsThreeDigits) {
  WebPredict result;
  result.lay.cls[0] = {-1};
  result.lay.met[0] = {kOtherCodon};
  std::ostringstream out;
  writeWebListing(out, result);
  EXPECT_EQ(out.precision(), 3);
}

// Recorded listings of whole predictions: a read, its model files, and what was listed for it right
// after the prediction.
TEST(WebListing, OfRecordedReadsIsAsRecorded) {
  for (const char* name : {"shortest_read", "placed_shift", "long_read"}) {
    const std::string folder = std::string("tests/data/listings/") + name;
    std::string input = folder + "/read.fa";
    std::string model = folder + "/model";
    processModel = ModelTables();
    WebPredict result;
    result.inputFile = input.data();
    result.paramDir = model.data();
    testing::internal::CaptureStderr();
    result.GetResult();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(listingOf(result), test::readFile(folder + "/listing.txt")) << name;
  }
}

}  // namespace
}  // namespace velto
