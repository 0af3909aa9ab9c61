#include "batch/scan_counts.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace velto {
namespace {

Prediction prediction(Prediction::Status status, int length, Strand strand = Strand::kPlus) {
  Prediction made;
  made.status = status;
  made.length = length;
  made.strand = strand;
  return made;
}

// Three coding reads, one of them on the minus strand, and one of each other status.
ScanCounts counted() {
  using Status = Prediction::Status;
  ScanCounts counts;
  counts.add(prediction(Status::kCoding, 100), 1);
  counts.add(prediction(Status::kCoding, 200), 0);
  counts.add(prediction(Status::kCoding, 300, Strand::kMinus), 0);
  counts.add(prediction(Status::kNoncoding, 400, Strand::kMinus), 201);
  counts.add(prediction(Status::kShort, 29), 29);
  counts.add(prediction(Status::kEmpty, 0), 0);
  return counts;
}

TEST(ScanCounts, AreToldWithTheStrandsOfTheCodingReads) {
  EXPECT_EQ(countsText(counted(), 1.5),
            "6 reads: 3 coding (2 on the plus strand, 1 on the minus strand), 1 non-coding, 2 "
            "refused (1 short, 1 empty); 1029 bases; 1.50 s");
}

TEST(ScanCounts, OfTwoBatchesAddUp) {
  ScanCounts sum = counted();
  sum.add(counted());
  EXPECT_EQ(countsText(sum, 0.0),
            "12 reads: 6 coding (4 on the plus strand, 2 on the minus strand), 2 non-coding, 4 "
            "refused (2 short, 2 empty); 2058 bases; 0.00 s");
}

// More than half of the bases: 201 of 400 and 29 of 29; in all 231 of 1029 are 22.4 %.
TEST(ScanCounts, OfReadsWithMostlyUnknownBasesWarn) {
  EXPECT_EQ(
      unknownBasesWarning(counted()),
      "2 of 6 reads have more unknown than known bases (22.4 % of all bases are unknown): masked "
      "sequence, or protein?");
  ScanCounts half;
  half.add(prediction(Prediction::Status::kCoding, 100), 50);
  EXPECT_EQ(unknownBasesWarning(half), "");
}

TEST(SummaryJson, HoldsTheRunAndItsCounts) {
  ScanRun run{"1.2.3", "models", "vote", {"a.fa", "b\xFF.fa"}, 11, {}, 4, 0.25};
  run.calibration.codingShare = 0.75;
  const auto json = nlohmann::json::parse(summaryJson(run, counted(), RunFigures()));
  EXPECT_EQ(json["version"], "1.2.3");
  EXPECT_EQ(json["figures"]["coding_bases"], 0);
  EXPECT_EQ(json["model"], "models");
  EXPECT_EQ(json["decoder"], "vote");
  EXPECT_EQ(json["inputs"], (std::vector<std::string>{"a.fa", "b\xEF\xBF\xBD.fa"}));
  EXPECT_EQ(json["genetic_code"], 11);
  EXPECT_EQ(json["calibration"]["coding_share"], 0.75);
  EXPECT_EQ(json["threads"], 4);
  EXPECT_EQ(json["seconds"], 0.25);
  EXPECT_EQ(json["reads"], 6);
  EXPECT_EQ(json["coding"], 3);
  EXPECT_EQ(json["coding_by_strand"]["plus"], 2);
  EXPECT_EQ(json["coding_by_strand"]["minus"], 1);
  EXPECT_EQ(json["noncoding"], 1);
  EXPECT_EQ(json["refused"]["short"], 1);
  EXPECT_EQ(json["refused"]["empty"], 1);
  EXPECT_EQ(json["bases"], 1029);
  EXPECT_EQ(json["unknown_bases"], 231);
}

}  // namespace
}  // namespace velto
