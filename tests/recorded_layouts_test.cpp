// The training and evaluation operations against recorded layouts and what was printed for them.
//
// tests/data/layouts.txt holds blocks: CASE name; LAYOUTS k and k layouts, each START a STOP b and
// eleven rows "name count values"; CHK 1 and the line of CHKLayout; PRINT m and the m lines of
// PrintLayout; CHAIN 4 and the file of MakeMalkovChain; CHAINMEM 16 and malkovChain behind it;
// MODEFY k and the three rows of classes of each layout behind ModefyLayout; END.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "decoder/tester.h"
#include "model/model_tables.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

struct RecordedCase {
  std::string name;
  std::vector<layout> layouts;
  std::string accuracy;  // printed by CHKLayout
  std::string printed;   // printed by PrintLayout
  std::string chain;     // written by MakeMalkovChain
  double chainValues[16];
  std::vector<std::vector<int>> smoothed;  // [3 x layout + frame]
};

std::vector<int> readRow(std::istream& in) {
  std::string label;
  size_t count = 0;
  in >> label >> count;
  std::vector<int> values(count);
  for (int& value : values) in >> value;
  return values;
}

layout readLayout(std::istream& in) {
  layout lay;
  std::string word;
  in >> word >> lay.start >> word >> lay.stop;
  for (auto* rows : {&lay.met, &lay.crr, &lay.cls}) {
    for (std::vector<int>& row : *rows) row = readRow(in);
  }
  lay.errMark = readRow(in);
  lay.rfm = readRow(in);
  return lay;
}

// Reads "LABEL count" and that many whole lines.
std::string readLines(std::istream& in) {
  std::string line;
  std::string text;
  int count = 0;
  in >> line >> count;
  std::getline(in, line);
  for (int i = 0; i < count; ++i) {
    std::getline(in, line);
    text += line + "\n";
  }
  return text;
}

bool readCase(std::istream& in, RecordedCase& recorded) {
  std::string word;
  size_t count = 0;
  if (!(in >> word >> recorded.name)) return false;
  in >> word >> count;
  for (size_t i = 0; i < count; ++i) recorded.layouts.push_back(readLayout(in));
  recorded.accuracy = readLines(in);
  recorded.printed = readLines(in);
  recorded.chain = readLines(in);
  in >> word >> word;
  for (double& value : recorded.chainValues) {
    in >> word;
    value = std::strtod(word.c_str(), nullptr);
  }
  in >> word >> count;
  for (size_t i = 0; i < 3 * count; ++i) recorded.smoothed.push_back(readRow(in));
  in >> word;
  EXPECT_EQ(word, "END") << recorded.name;
  return true;
}

// A printed not-a-number may carry a sign.
std::string withoutNanSigns(std::string text) {
  for (size_t at; (at = text.find("-nan")) != std::string::npos;) text.erase(at, 1);
  return text;
}

void expectSame(const RecordedCase& recorded) {
  const test::TempDir directory;
  Test tester;
  *tester.layoutList = recorded.layouts;

  testing::internal::CaptureStdout();
  tester.CHKLayout();
  EXPECT_EQ(withoutNanSigns(testing::internal::GetCapturedStdout()),
            withoutNanSigns(recorded.accuracy));

  testing::internal::CaptureStdout();
  EXPECT_EQ(tester.PrintLayout(), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), recorded.printed);

  tester.MakeMalkovChain(directory.file("chain.txt"));
  EXPECT_EQ(withoutNanSigns(test::readFile(directory.file("chain.txt"))),
            withoutNanSigns(recorded.chain));
  for (int k = 0; k < 16; ++k) {
    if (std::isnan(recorded.chainValues[k])) {
      EXPECT_TRUE(std::isnan(malkovChain[k])) << k;
    } else {
      EXPECT_EQ(malkovChain[k], recorded.chainValues[k]) << k;
    }
  }

  tester.ModefyLayout();
  ASSERT_EQ(recorded.smoothed.size(), 3 * recorded.layouts.size());
  for (size_t i = 0; i < recorded.smoothed.size(); ++i) {
    EXPECT_EQ((*tester.layoutList)[i / 3].cls[i % 3], recorded.smoothed[i]) << "row " << i;
  }
}

TEST(RecordedLayouts, EveryOperationRepeatsWhatWasRecorded) {
  std::ifstream in("tests/data/layouts.txt");
  ASSERT_TRUE(in.is_open());
  int cases = 0;
  for (RecordedCase recorded; readCase(in, recorded); recorded = RecordedCase()) {
    SCOPED_TRACE(recorded.name);
    expectSame(recorded);
    ++cases;
  }
  EXPECT_EQ(cases, 118);
}

}  // namespace
}  // namespace velto
