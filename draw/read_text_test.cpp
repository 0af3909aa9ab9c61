#include "draw/read_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "draw/markup.h"
#include "draw/test_read.h"

namespace velto {
namespace {

using test::KnownRead;

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// 69 columns: nine of names, then one a base.
TEST(ReadText, DrawsPathMarksAndProtein) {
  KnownRead read = test::codingRead();
  read.letters.replace(1, 3, "TAG");
  read.letters.replace(6, 3, "ATG");
  read.letters.replace(55, 3, "ATG");
  EXPECT_EQ(readText(read.drawn(), {69, false}),
            "known\n"
            "Bases 7 to 51 code for a protein of 14 amino acids; one base is\n"
            "missing before 21 and one is extra at 36.\n"
            "\n"
            "        start 7│             │-1 before 21  │+1 at 36      │stop 51\n"
            "               ▶             ◇              ▼              ■\n"
            "frame 1\n"
            "               ━━━━━━━━━━━━━━┓              ┏━━━━━━━━━━━━━━━\n"
            "frame 2                      ┃              ┃\n"
            "          |                  ┃              ┃                   ^\n"
            "frame 3                      ┃              ┃\n"
            "                             ┗━━━━━━━━━━━━━━┛\n"
            "base              ╵10       ╵20       ╵30       ╵40       ╵50\n"
            "\n"
            "━ called path; ▼ extra base; ◇ missing base; ^ start codon;\n"
            "| stop codon\n"
            "One base is missing before 21, confidence 93\u00A0%.\n"
            "One base is extra at 36, confidence 20\u00A0%.\n"
            "\n"
            "       1 MPPPXPPPPP PPPP*\n");
}

TEST(ReadText, KeyNamesWhatIsDrawn) {
  const std::string probabilities = readText(test::longRead(90, 0.7, 0.98).drawn());
  EXPECT_NE(probabilities.find("▄ probability of the frame, up to 1; ^"), std::string::npos);
  const std::string votes =
      readText(test::longRead(90, 12.34, std::numeric_limits<double>::quiet_NaN()).drawn());
  EXPECT_NE(votes.find("▄ vote for the frame, up to 12.3; ^"), std::string::npos) << votes;
  const std::string nothing = readText(test::otherRead(Prediction::Status::kNoncoding, 60).drawn());
  EXPECT_NE(nothing.find("\n^ start codon; | stop codon\n"), std::string::npos);
}

TEST(ReadText, NoLineIsWiderThanTheTerminal) {
  KnownRead read = test::longRead(5000, 0.7, 0.98);
  for (const std::string& line : linesOf(readText(read.drawn(), {60, false}))) {
    EXPECT_LE(charactersOf(line), 60U) << line;
  }
}

TEST(ReadText, ColoursAreControlSequencesAndEndWithTheLine) {
  const KnownRead read = test::codingRead();
  EXPECT_EQ(readText(read.drawn(), {80, false}).find('\x1b'), std::string::npos);
  for (const std::string& line : linesOf(readText(read.drawn(), {80, true}))) {
    const std::size_t last = line.rfind("\x1b[0");
    EXPECT_TRUE(last == line.npos || line.substr(last) == "\x1b[0m") << line;
  }
}

TEST(ReadText, NamesCannotCommandTheTerminal) {
  KnownRead read = test::codingRead();
  read.name = "a\x1b]0;title\x07\n";
  EXPECT_EQ(linesOf(readText(read.drawn())).at(0), "a\uFFFD]0;title\uFFFD\uFFFD");
}

TEST(ReadText, ReadsWithoutARegionHaveTheirLanesToo) {
  const std::string text = readText(test::otherRead(Prediction::Status::kNoncoding, 60).drawn());
  EXPECT_NE(text.find("No coding region was found"), std::string::npos);
  EXPECT_NE(text.find("frame 3"), std::string::npos);
  EXPECT_EQ(readText(test::otherRead(Prediction::Status::kEmpty, 0).drawn()),
            "known\nThe read has no bases.\n\n");
}

}  // namespace
}  // namespace velto
