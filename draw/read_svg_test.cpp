// Drawings of 686 pixels: the lanes reach from 74 to 674, 10 pixels a base for reads of 60 bases.
#include "draw/read_svg.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "draw/test_read.h"

namespace velto {
namespace {

using Kind = Frameshift::Kind;
using Status = Prediction::Status;
using test::KnownRead;

std::string drawing(const KnownRead& read) { return readSvg(read.drawn(), {686, "r", false}); }

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

int countOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
  return count;
}

// One row of labels, 17, and the strip of signs, 18: the first lane is from 35 to 77, the others
// 60 and 120 below.
TEST(ReadSvg, ThePathRunsAlongTheFloorsOfTheLanes) {
  const std::string svg = drawing(test::codingRead());
  EXPECT_TRUE(holds(svg, "class=\"path\" d=\"M134 77H274V197H429V77H584\"")) << svg;
  EXPECT_TRUE(holds(svg, "class=\"lane\" x=\"74\" y=\"155\" width=\"600\" height=\"42\""));
}

TEST(ReadSvg, EndsStandAtTheBordersOfTheRegion) {
  const std::string svg = drawing(test::codingRead());
  EXPECT_TRUE(holds(svg, "<circle class=\"end\" cx=\"134\" cy=\"77\""));
  EXPECT_TRUE(holds(svg, "<rect class=\"end\" x=\"579.5\" y=\"72.5\""));
  EXPECT_TRUE(holds(svg, ">start 7<"));
  EXPECT_TRUE(holds(svg, ">stop 51<"));
}

TEST(ReadSvg, EndsAreLabelledHoweverManyFrameshiftsThereAre) {
  test::KnownRead read = test::longRead(1000, 0.5, 0.9);
  read.prediction.start = 100;
  read.prediction.stop = 899;
  for (int position = 110; position < 900; position += 10) {
    read.prediction.frameshifts.push_back({Frameshift::Kind::kDeletion, position, 0.5});
  }
  for (const int width : {358, 960}) {
    const std::string svg = readSvg(read.drawn(), {width, "read", true});
    EXPECT_TRUE(holds(svg, ">start 101<"));
    EXPECT_TRUE(holds(svg, ">stop 900<"));
  }
}

TEST(ReadSvg, FrameshiftsDifferInShapeAndTellTheirConfidence) {
  const std::string svg = drawing(test::codingRead());
  EXPECT_TRUE(holds(svg, "d=\"M424 21H434L429 31Z\"")) << "a triangle around (429, 26)";
  EXPECT_TRUE(holds(svg, "d=\"M274 20.5L279.5 26L274 31.5L268.5 26Z\"")) << "a diamond";
  EXPECT_TRUE(holds(svg, ">\u22121 before 21 \u00B7 93\u00A0%<"));
  EXPECT_TRUE(holds(svg, "<title>One base is extra at 36, confidence 20\u00A0%.</title>"));
}

TEST(ReadSvg, LettersOfTheProteinStandOverTheMiddlesOfTheirCodons) {
  // The first codon is bases 6 to 8, middle 7.5; the fifth has bases 18 and 19 and lost one.
  const std::string svg = drawing(test::codingRead());
  EXPECT_TRUE(holds(svg, "class=\"acids\" x=\"149 179 209 239 264 ")) << svg;
  EXPECT_TRUE(holds(svg, ">MPPPXPPPPPPPPP*<"));
}

TEST(ReadSvg, ProteinsWithoutRoomForLettersAreCounted) {
  const std::string svg = drawing(test::longRead(6000, 0.5, 0.9));  // 0.3 pixels a codon
  EXPECT_FALSE(holds(svg, "class=\"acids\""));
  EXPECT_TRUE(holds(svg, "class=\"acid\""));
  EXPECT_TRUE(holds(svg, ">200</text>"));
}

TEST(ReadSvg, AnIncompleteLastCodonHasNoLetter) {
  KnownRead read = test::longRead(32, 0.5, 0.9);
  read.prediction.stop = 33;
  EXPECT_TRUE(holds(drawing(read), ">PPPPPPPPPP<"));
}

TEST(ReadSvg, PositionsAreRoundAndInTheMiddleOfTheirBases) {
  const std::string svg = drawing(test::codingRead());
  EXPECT_TRUE(holds(svg, "x=\"169\" y=\"232\">10<")) << svg;  // base 9.5; 62 / 10 rounds up to 10
  EXPECT_TRUE(holds(svg, ">60<"));
  EXPECT_FALSE(holds(svg, ">70<"));
}

TEST(ReadSvg, StartAndStopCodonsDifferInShape) {
  KnownRead read = test::otherRead(Status::kNoncoding, 60);
  read.letters.replace(9, 3, "ATG");   // frame 0, x 164, below the floor at 60
  read.letters.replace(31, 3, "TAA");  // frame 1, x 384, below the floor at 120
  const std::string svg = drawing(read);
  EXPECT_TRUE(holds(svg, "class=\"startcodon\" d=\"M161 70L164 64L167 70Z\"")) << svg;
  EXPECT_TRUE(holds(svg, "class=\"stopcodon\" d=\"M384 123V131\"")) << svg;
}

TEST(ReadSvg, ProbabilitiesRiseFromTheFloor) {
  // 60 bases of 0.5: half of 42 above the floor at 77; inner points of the level curve are left
  // out.
  const std::string svg = drawing(test::longRead(60, 0.5, 0.9));
  EXPECT_TRUE(holds(svg, "class=\"curve\" d=\"M74 77L74 56L79 56L669 56L674 56V77Z\"")) << svg;
  EXPECT_TRUE(holds(svg, "class=\"curve called\" d=\"M74 77L74 56L79 56L669 56L674 56V77Z\""));
  EXPECT_EQ(countOf(svg, "curve called"), 1);
}

TEST(ReadSvg, VotesRiseAndFallFromTheMiddle) {
  KnownRead read = test::longRead(60, -1.0, std::nan(""));
  read.prediction.scores[0].assign(60, 2.0);
  const std::string svg = drawing(read);
  EXPECT_TRUE(holds(svg, "d=\"M74 56L74 35L79 35L669 35L674 35V56Z\"")) << svg;  // the largest
  EXPECT_TRUE(holds(svg, "d=\"M74 116L74 126.5L79 126.5L669 126.5L674 126.5V116Z\"")) << svg;
}

TEST(ReadSvg, TheDrawingDescribesItself) {
  const std::string svg = drawing(test::codingRead());
  EXPECT_TRUE(holds(svg, "role=\"img\" aria-labelledby=\"r-title r-text\""));
  EXPECT_TRUE(holds(svg, "<title id=\"r-title\">Read known</title>"));
  EXPECT_TRUE(holds(svg, "<desc id=\"r-text\">Bases 7 to 51 code for a protein of 14 amino acids"));
}

TEST(ReadSvg, HostileNamesStayText) {
  KnownRead read = test::codingRead();
  read.name = "</title><script>alert(1)</script>\x01\xFF";
  const std::string svg = drawing(read);
  EXPECT_FALSE(holds(svg, "<script"));
  EXPECT_TRUE(holds(svg, "&lt;/title&gt;&lt;script&gt;alert(1)&lt;/script&gt;\uFFFD\uFFFD<"));
}

TEST(ReadSvg, TheLegendNamesWhatIsDrawn) {
  const std::string all = readSvg(test::codingRead().drawn(), {686, "r", true});
  EXPECT_TRUE(holds(all, ">extra base<"));
  EXPECT_FALSE(holds(all, ">probability of the frame, 0 to 1<"));
  const std::string none =
      readSvg(test::otherRead(Status::kNoncoding, 60).drawn(), {686, "r", true});
  EXPECT_FALSE(holds(none, ">extra base<"));
  EXPECT_TRUE(holds(none, ">stop codon<"));
}

TEST(ReadSvg, NarrowDrawingsShortenTheLabels) {
  const std::string svg = readSvg(test::codingRead().drawn(), {358, "r", false});
  EXPECT_TRUE(holds(svg, ">+1 36<"));
  EXPECT_FALSE(holds(svg, ">Frame 1<"));
}

TEST(ReadSvg, ShortReadsAreDrawnAndEmptyOnesAreNot) {
  EXPECT_TRUE(holds(drawing(test::otherRead(Status::kShort, 1)), "class=\"lane\""));
  EXPECT_EQ(drawing(test::otherRead(Status::kEmpty, 0)), "");
}

// A million bases, every tenth a frameshift, a curve that never rests.
TEST(ReadSvg, TheSizeDoesNotGrowWithTheRead) {
  KnownRead read = test::longRead(1000000, 0.5, 0.9);
  Prediction& p = read.prediction;
  for (std::size_t b = 0; b < p.frame.size(); ++b) {
    p.frame[b] = static_cast<std::int8_t>(b / 10 % 3);
    for (auto& scores : p.scores) scores[b] = static_cast<double>(b * 7919 % 1009) / 1009;
    read.letters[b] = "ATGTAAC"[b % 7];
  }
  for (int b = 10; b < p.length; b += 10) {
    p.frameshifts.push_back({b % 20 == 0 ? Kind::kInsertion : Kind::kDeletion, b, 0.5});
  }
  EXPECT_LT(readSvg(read.drawn()).size(), 200000U);
}

}  // namespace
}  // namespace velto
