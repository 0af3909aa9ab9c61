#include "simulation/transcript.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velto {
namespace {

ParsedTranscript coding(const char* description, const char* letters) {
  return parseTranscript("t1", description, letters, TranscriptKind::kCoding);
}

Refusal refusalOf(const char* description, const char* letters) {
  return coding(description, letters).refusal;
}

TEST(Transcript, GffreadHeaderGivesTheRegionCountedFromZero) {
  const ParsedTranscript parsed = coding("CDS=3-11 chr17", "CCATGAAATAGCC");
  EXPECT_EQ(parsed.refusal, Refusal::kNone);
  EXPECT_EQ(parsed.transcript.name, "t1");
  EXPECT_EQ(parsed.transcript.cdsStart, 2);
  EXPECT_EQ(parsed.transcript.cdsStop, 10);
}

TEST(Transcript, GencodeHeaderGivesRegionIdAndGene) {
  const ParsedTranscript parsed = parseTranscript(
      "ENST01.2|ENSG07.3|-|-|OR4F5-201|OR4F5|9|CDS:1-9|", "", "ATGAAATAG", TranscriptKind::kCoding);
  EXPECT_EQ(parsed.refusal, Refusal::kNone);
  EXPECT_EQ(parsed.transcript.name, "ENST01.2");
  EXPECT_EQ(parsed.transcript.group, "ENSG07.3");
  EXPECT_EQ(parsed.transcript.cdsStart, 0);
  EXPECT_EQ(parsed.transcript.cdsStop, 8);
}

TEST(Transcript, GroupIsTheChromosomeThenTheGeneThenTheName) {
  const auto group = [](const char* description) {
    return parseTranscript("n", description, "A", TranscriptKind::kNoncoding).transcript.group;
  };
  EXPECT_EQ(group("gene=BRCA1 chr17"), "chr17");
  EXPECT_EQ(group("gene=BRCA1"), "BRCA1");
  EXPECT_EQ(group("geneID=g7 gene_name=x"), "g7");
  EXPECT_EQ(group("gene_id=g8"), "g8");
  EXPECT_EQ(group("CDS=1-3 gene_name=BRCA2 loc:2|1-9|+"), "BRCA2");
  EXPECT_EQ(group("cdna chromosome:GRCz11:9:1:22:1 gene:ENSDARG01.2 gene_biotype:x"),
            "ENSDARG01.2");
  EXPECT_EQ(group("chromosome:1:2 chr3"), "chr3");
  EXPECT_EQ(group("loc:NC_4.1|100-200|- segs:1-9"), "NC_4.1");
  EXPECT_EQ(group("loc:chr4(+)100-200"), "chr4");
  EXPECT_EQ(group("gene= chromosome:1"), "n");
  EXPECT_EQ(group("some words"), "n");
  EXPECT_EQ(group(""), "n");
}

TEST(Transcript, KnowsTheWordThatGaveTheGroup) {
  const auto word = [](const char* name, const char* description) {
    return parseTranscript(name, description, "A", TranscriptKind::kNoncoding).transcript.groupWord;
  };
  EXPECT_EQ(word("ENST1|ENSG2|", ""), "GENCODE gene");
  EXPECT_EQ(word("n", "chrX"), "chr");
  EXPECT_EQ(word("n", "gene:a"), "gene:");
  EXPECT_EQ(word("n", "loc:a|1-2|+"), "loc:");
  EXPECT_EQ(word("n", "words"), "");
}

TEST(Transcript, PipesOfOtherDatabasesStayInTheName) {
  const ParsedTranscript parsed =
      parseTranscript("gi|123|ref", "", "A", TranscriptKind::kNoncoding);
  EXPECT_EQ(parsed.transcript.name, "gi|123|ref");
  EXPECT_EQ(parsed.transcript.group, "gi|123|ref");
}

TEST(Transcript, LowerCaseAndUCountAndOtherLettersAreUnknown) {
  const ParsedTranscript parsed = parseTranscript("n", "", "atgcUuNR-", TranscriptKind::kNoncoding);
  EXPECT_EQ(parsed.transcript.bases, (std::vector<short>{0, 1, 2, 3, 1, 1, -1, -1, -1}));
}

TEST(Transcript, UnknownBaseInsideTheRegionIsAccepted) {
  EXPECT_EQ(refusalOf("CDS=1-9", "ATGTNATAG"), Refusal::kNone);
}

TEST(Transcript, AllThreeStopCodonsEndARegion) {
  EXPECT_EQ(refusalOf("CDS=1-6", "ATGTAA"), Refusal::kNone);
  EXPECT_EQ(refusalOf("CDS=1-6", "ATGTAG"), Refusal::kNone);
  EXPECT_EQ(refusalOf("CDS=1-6", "ATGTGA"), Refusal::kNone);
}

TEST(Transcript, EmptyRecordIsRefused) { EXPECT_EQ(refusalOf("CDS=1-6", ""), Refusal::kNoBases); }

TEST(Transcript, HeaderWithoutRegionIsRefusedAsCodingAndAcceptedAsNoncoding) {
  EXPECT_EQ(refusalOf("chr1", "ATGTAA"), Refusal::kNoRegion);
  const auto parsed = parseTranscript("t1", "chr1", "ATGTAA", TranscriptKind::kNoncoding);
  EXPECT_EQ(parsed.refusal, Refusal::kNone);
  EXPECT_FALSE(parsed.transcript.isCoding());
}

TEST(Transcript, NoncodingRecordWithARegionIsRefused) {
  const auto parsed = parseTranscript("t1", "CDS=1-6", "ATGTAA", TranscriptKind::kNoncoding);
  EXPECT_EQ(parsed.refusal, Refusal::kUnexpectedRegion);
}

TEST(Transcript, RegionThatIsNotTwoNumbersIsRefused) {
  for (const char* region : {"CDS=", "CDS=6", "CDS=1-", "CDS=-6", "CDS=1-6x", "CDS=1--6",
                             "CDS=1-99999999999", "CDS=a-b"}) {
    EXPECT_EQ(refusalOf(region, "ATGTAA"), Refusal::kUnreadableRegion) << region;
  }
}

TEST(Transcript, RegionOutOfRangeIsRefused) {
  EXPECT_EQ(refusalOf("CDS=0-5", "ATGTAA"), Refusal::kOutOfRange);
  EXPECT_EQ(refusalOf("CDS=1-7", "ATGTAA"), Refusal::kOutOfRange);
  EXPECT_EQ(refusalOf("CDS=6-1", "ATGTAA"), Refusal::kOutOfRange);
}

TEST(Transcript, RegionOfBrokenCodonsIsRefused) {
  EXPECT_EQ(refusalOf("CDS=1-7", "ATGTAAA"), Refusal::kBrokenCodon);
}

TEST(Transcript, RegionWithoutStartCodonIsRefused) {
  EXPECT_EQ(refusalOf("CDS=1-6", "CTGTAA"), Refusal::kNoStartCodon);
}

TEST(Transcript, RegionWithAStopInFrameIsRefused) {
  EXPECT_EQ(refusalOf("CDS=1-9", "ATGTGATAA"), Refusal::kStopInside);
  EXPECT_EQ(refusalOf("CDS=1-12", "ATGATGATCTAA"), Refusal::kNone);  // TGA only out of frame
}

TEST(Transcript, RegionWithoutStopCodonIsRefused) {
  EXPECT_EQ(refusalOf("CDS=1-6", "ATGAAA"), Refusal::kNoStopCodon);
}

Refusal refusalBy(int code, const char* description, const char* letters) {
  return parseTranscript("t1", description, letters, TranscriptKind::kCoding, *geneticCode(code))
      .refusal;
}

TEST(Transcript, TheGeneticCodeSaysWhatAStopCodonIs) {
  // In code 4 TGA stands for Trp, in code 6 TAA for Gln.
  EXPECT_EQ(refusalBy(4, "CDS=1-9", "ATGTGATAA"), Refusal::kNone);
  EXPECT_EQ(refusalBy(4, "CDS=1-6", "ATGTGA"), Refusal::kNoStopCodon);
  EXPECT_EQ(refusalBy(6, "CDS=1-9", "ATGTAATGA"), Refusal::kNone);
  EXPECT_EQ(refusalBy(6, "CDS=1-9", "ATGTGATGA"), Refusal::kStopInside);
}

TEST(Transcript, AStopCodonThatStandsForAnAminoAcidTooEndsARegionOnly) {
  EXPECT_EQ(refusalBy(27, "CDS=1-9", "ATGTGATGA"), Refusal::kNone);
}

TEST(RefusalCounts, ReasonsAreCountedAndListed) {
  RefusalCounts counts;
  EXPECT_EQ(counts.text(), "");
  counts.add(Refusal::kNone);
  counts.add(Refusal::kStopInside);
  counts.add(Refusal::kStopInside);
  counts.add(Refusal::kNoRegion);
  EXPECT_EQ(counts.accepted(), 1);
  EXPECT_EQ(counts.refused(), 3);
  EXPECT_EQ(counts.text(),
            "  1 no coding region in the header\n  2 stop codon inside the coding region\n");
}

}  // namespace
}  // namespace velto
