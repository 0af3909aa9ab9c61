// Every output format on one read worked by hand.
#include <gtest/gtest.h>

#include "batch/formats/bed_rows.h"
#include "batch/formats/gff3_rows.h"
#include "batch/formats/json_rows.h"
#include "batch/formats/score_rows.h"
#include "batch/formats/sequence_rows.h"
#include "batch/formats/tsv_rows.h"
#include "predict/coding_sequence.h"

namespace velto {
namespace {

using Kind = Frameshift::Kind;

// Bases 2 to 16 are ATG AAA (T) CCC GG. TAA: an inserted T at 8, a base lost before 14.
constexpr char kLetters[] = "GGATGAAATCCCGGTAAGG";

Prediction handMade() {
  Prediction prediction;
  prediction.status = Prediction::Status::kCoding;
  prediction.length = 19;
  prediction.gcPercent = 900.0 / 19;
  prediction.model = "96L0G1";
  prediction.score = 12.34567;
  prediction.start = 2;
  prediction.stop = 16;
  prediction.frameshifts = {{Kind::kInsertion, 8}, {Kind::kDeletion, 14}};
  return prediction;
}

struct HandMadeRead {
  explicit HandMadeRead(Prediction found, const std::string& name = "r;1",
                        const std::string& letters = kLetters)
      : record{name, "a \"note\"", letters, 1, 1},
        prediction(std::move(found)),
        coding(codingSequence(prediction, letters, *geneticCode(1))) {}

  ScannedRead read() const { return {record, 7, prediction, coding}; }

  Record record;
  Prediction prediction;
  CodingSequence coding;
};

HandMadeRead onMinus() {
  Prediction prediction = handMade();
  prediction.strand = Strand::kMinus;
  return HandMadeRead(prediction);
}

HandMadeRead noncoding() {
  Prediction prediction;
  prediction.status = Prediction::Status::kNoncoding;
  prediction.length = 40;
  prediction.model = "96L0G0";
  prediction.score = -10.0;
  return HandMadeRead(prediction);
}

HandMadeRead tooShort() {
  Prediction prediction;
  prediction.status = Prediction::Status::kShort;
  prediction.length = 12;
  prediction.gcPercent = 25.0;
  return HandMadeRead(prediction);
}

template <typename Append>
std::string written(const HandMadeRead& hand, Append append) {
  std::string text;
  append(hand.read(), text);
  return text;
}

TEST(TsvRows, HaveTheColumnsOfTheHeader) {
  EXPECT_EQ(tsvHeader(),
            "read\tlength\tgc\tmodel\tstrand\tscore\tstart\tstop\tinsertions\tdeletions\ttype\t"
            "cds_length\tstatus\tinner_stops\tprobability\tinsertion_confidences\t"
            "deletion_confidences\n");
  EXPECT_EQ(written(HandMadeRead(handMade()), appendTsvRow),
            "r;1\t19\t47.3684\t96L0G1\t+\t12.346\t3\t17\t9\t15\tcomplete\t15\tcoding\t0\t\t\t\n");
  EXPECT_EQ(written(noncoding(), appendTsvRow),
            "r;1\t40\t0\t96L0G0\t+\t-10\t\t\t\t\t\t\tnoncoding\t\t\t\t\n");
  EXPECT_EQ(written(tooShort(), appendTsvRow), "r;1\t12\t25\t\t\t\t\t\t\t\t\t\tshort\t\t\t\t\n");
  EXPECT_EQ(written(HandMadeRead(Prediction()), appendTsvRow),
            "r;1\t0\t\t\t\t\t\t\t\t\t\t\tempty\t\t\t\t\n");
}

// The lines of a read of 19 bases, whose CDS has these columns 4 and 5.
std::string gff3Lines(char strand, const std::vector<std::vector<int>>& extents) {
  const std::string score = std::string("\t12.346\t") + strand + '\t';
  std::string text = "##sequence-region r%3B1 1 19\nr%3B1\tvelto\tmRNA\t1\t19" + score +
                     ".\tID=r%3B1;type=complete;inner_stops=0;insertions=9;deletions=15\n";
  for (const std::vector<int>& extent : extents) {
    text += "r%3B1\tvelto\tCDS\t" + std::to_string(extent[0]) + '\t' + std::to_string(extent[1]) +
            score + "0\tID=r%3B1/CDS;Parent=r%3B1\n";
  }
  return text;
}

TEST(Gff3Rows, LeaveOutInsertedBaseAndBrokenCodon) {
  EXPECT_EQ(gff3Header(), "##gff-version 3\n");
  EXPECT_EQ(written(HandMadeRead(handMade()), appendGff3Rows),
            gff3Lines('+', {{3, 8}, {10, 12}, {15, 17}}));
  EXPECT_EQ(written(noncoding(), appendGff3Rows), "");
}

TEST(Gff3Rows, OfTheMinusStrandAscendOnTheReadAsGiven) {
  // Base p of the strand is base 19 - p of the read, counted from 1.
  EXPECT_EQ(written(onMinus(), appendGff3Rows), gff3Lines('-', {{3, 5}, {8, 10}, {12, 17}}));
}

TEST(Gff3Rows, GiveThePhaseOfAPartThatBeginsInsideACodon) {
  Prediction prediction = handMade();
  prediction.frameshifts = {{Kind::kInsertion, 9}};
  const std::string text = written(HandMadeRead(prediction), appendGff3Rows);
  EXPECT_NE(text.find("\tCDS\t3\t9\t12.346\t+\t0\t"), std::string::npos) << text;
  EXPECT_NE(text.find("\tCDS\t11\t15\t12.346\t+\t2\t"), std::string::npos) << text;
}

TEST(Gff3Rows, OfARegionWithoutAWholeCodonAreNone) {
  Prediction prediction = handMade();
  prediction.start = 15;
  EXPECT_EQ(written(HandMadeRead(prediction), appendGff3Rows), "");
}

// With a probability of .9375 and frameshifts of 1/2 and 1/4.
Prediction sure() {
  Prediction prediction = handMade();
  prediction.probability = 0.9375;
  prediction.frameshifts[0].confidence = 0.5;
  prediction.frameshifts[1].confidence = 0.25;
  return prediction;
}

TEST(TsvRows, ShowProbabilitiesWhereTheDecoderGivesThem) {
  Prediction prediction = sure();
  EXPECT_TRUE(
      written(HandMadeRead(prediction), appendTsvRow).ends_with("\t0\t0.9375\t0.5\t0.25\n"));
  prediction.frameshifts = {{Kind::kInsertion, 8, 0.5}, {Kind::kInsertion, 12, 0.12345}};
  EXPECT_TRUE(written(HandMadeRead(prediction), appendTsvRow).ends_with("\t0.9375\t0.5,0.123\t\n"));
  prediction = noncoding().prediction;
  prediction.probability = 1.0 / 3;
  EXPECT_TRUE(
      written(HandMadeRead(prediction), appendTsvRow).ends_with("\tnoncoding\t\t0.333333\t\t\n"));
}

TEST(Gff3Rows, ShowProbabilitiesWhereTheDecoderGivesThem) {
  EXPECT_NE(written(HandMadeRead(sure()), appendGff3Rows)
                .find(";deletions=15;probability=0.9375;insertion_confidences=0.5;"
                      "deletion_confidences=0.25\n"),
            std::string::npos);
}

TEST(JsonRows, ShowProbabilitiesWhereTheDecoderGivesThem) {
  EXPECT_NE(written(HandMadeRead(sure()), appendJsonRow)
                .find(R"("probability":0.9375,"insertion_confidences":[0.5],)"
                      R"("deletion_confidences":[0.25]})"),
            std::string::npos);
}

TEST(BedRows, HaveTheProbabilityAsScoreWhereTheDecoderGivesIt) {
  EXPECT_NE(written(HandMadeRead(sure()), appendBedRow).find("\t938\t+"), std::string::npos);
}

TEST(BedRows, HaveOneBlockBetweenInsertedBases) {
  EXPECT_EQ(written(HandMadeRead(handMade()), appendBedRow),
            "r;1\t2\t17\tr;1\t12\t+\t2\t17\t0\t2\t6,8,\t0,7,\n");
  EXPECT_EQ(written(onMinus(), appendBedRow), "r;1\t2\t17\tr;1\t12\t-\t2\t17\t0\t2\t8,6,\t0,9,\n");
  EXPECT_EQ(written(noncoding(), appendBedRow), "");
}

TEST(BedRows, HaveScoresFrom0To1000) {
  Prediction prediction = handMade();
  prediction.score = -3.0;
  EXPECT_NE(written(HandMadeRead(prediction), appendBedRow).find("\t0\t+"), std::string::npos);
  prediction.score = 12345.6;
  EXPECT_NE(written(HandMadeRead(prediction), appendBedRow).find("\t1000\t+"), std::string::npos);
}

auto proteinsWith(InnerStops innerStops) {
  return [innerStops](const ScannedRead& read, std::string& text) {
    appendProteinFasta(read, innerStops, text);
  };
}

TEST(SequenceRows, AreFastaRecords) {
  const std::string header =
      ">r;1 strand=+ start=3 stop=17 type=complete score=12.346 inner_stops=0\n";
  EXPECT_EQ(written(HandMadeRead(handMade()), appendCodingFasta), header + "ATGAAACCCGGNTAA\n");
  for (const InnerStops choice : {InnerStops::kKeep, InnerStops::kX, InnerStops::kSplit}) {
    EXPECT_EQ(written(HandMadeRead(handMade()), proteinsWith(choice)), header + "MKPX*\n");
    EXPECT_EQ(written(noncoding(), proteinsWith(choice)), "");
  }
  EXPECT_EQ(written(noncoding(), appendCodingFasta), "");
}

// The prediction of a whole read that is one region without errors.
HandMadeRead region(const std::string& letters) {
  Prediction prediction = handMade();
  prediction.length = static_cast<int>(letters.size());
  prediction.start = 0;
  prediction.stop = prediction.length - 1;
  prediction.frameshifts.clear();
  return HandMadeRead(prediction, "r", letters);
}

TEST(SequenceRows, ShowInnerStopsAsAskedFor) {
  const HandMadeRead read = region("ATGTGATAGGCTTAAAAATAA");  // M * * A * K *
  const auto header = [](const std::string& name) {
    return '>' + name + " strand=+ start=1 stop=21 type=interrupted score=12.346 inner_stops=3\n";
  };
  EXPECT_EQ(written(read, proteinsWith(InnerStops::kKeep)), header("r") + "M**A*K*\n");
  EXPECT_EQ(written(read, proteinsWith(InnerStops::kX)), header("r") + "MXXAXK*\n");
  EXPECT_EQ(written(read, proteinsWith(InnerStops::kSplit)),
            header("r.part1") + "M\n" + header("r.part2") + "A\n" + header("r.part3") + "K*\n");
}

TEST(OutputRows, AreNotSplitByANameOfAnyBytes) {
  const HandMadeRead hand(handMade(), "a\tb\nc d");
  EXPECT_TRUE(written(hand, appendTsvRow).starts_with("a%09b%0Ac d\t19\t"));
  EXPECT_TRUE(written(hand, appendBedRow).starts_with("a%09b%0Ac%20d\t2\t17\ta%09b%0Ac%20d\t"));
  EXPECT_TRUE(written(hand, appendGff3Rows)
                  .starts_with("##sequence-region a%09b%0Ac%20d 1 19\na%09b%0Ac%20d\tvelto\t"));
  EXPECT_TRUE(written(hand, appendCodingFasta).starts_with(">a%09b%0Ac%20d strand="));
  EXPECT_TRUE(written(hand, appendJsonRow).starts_with(R"({"read":"a\tb\nc d",)"));
}

TEST(SequenceRows, NameANamelessRecordByItsPlace) {
  EXPECT_EQ(written(HandMadeRead(handMade(), ""), appendCodingFasta).substr(0, 9), ">record7 ");
}

TEST(JsonRows, HaveTheColumnsOfTheTable) {
  Prediction prediction = handMade();
  prediction.score = 12.5;
  prediction.gcPercent = 47.25;
  EXPECT_EQ(
      written(HandMadeRead(prediction), appendJsonRow),
      R"({"read":"r;1","description":"a \"note\"","length":19,"gc":47.25,)"
      R"("model":"96L0G1","strand":"+","score":12.5,"start":3,"stop":17,"insertions":[9],)"
      R"("deletions":[15],"type":"complete","cds_length":15,"status":"coding","inner_stops":0,)"
      R"("probability":null,"insertion_confidences":[null],"deletion_confidences":[null]})"
      "\n");
  EXPECT_EQ(written(HandMadeRead(Prediction()), appendJsonRow),
            R"({"read":"r;1","description":"a \"note\"","length":0,"gc":null,"model":null,)"
            R"("strand":null,"score":null,"start":null,"stop":null,"insertions":null,)"
            R"("deletions":null,"type":null,"cds_length":null,"status":"empty","inner_stops":null,)"
            R"("probability":null,"insertion_confidences":null,"deletion_confidences":null})"
            "\n");
}

TEST(JsonRows, ReplaceBytesThatAreNoUtf8) {
  EXPECT_NE(written(HandMadeRead(handMade(), "caf\xE9"), appendJsonRow).find("caf\xEF\xBF\xBD"),
            std::string::npos);
}

TEST(ScoreRows, ShowTheScoresOfABaseFrameByFrame) {
  Prediction prediction = handMade();
  prediction.scores[0].assign(19, 0.5);
  prediction.scores[1].assign(19, -2.0);
  prediction.scores[2].assign(19, 0.0);
  prediction.scores[0][1] = 1.25;
  const auto append = [](const ScannedRead& read, std::string& text) {
    appendScoreRows(read, Letters::kFolded, text);
  };
  const std::string text = written(HandMadeRead(prediction), append);
  EXPECT_EQ(text.substr(0, 30), ">r;1 +\nG,0.5,-2,0\nG,1.25,-2,0\n");
  EXPECT_EQ(written(tooShort(), append), "");
}

}  // namespace
}  // namespace velto
