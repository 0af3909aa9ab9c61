#include "simulation/labelled_read.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "seqio/input_error.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

class LabelledReads : public testing::Test {
 protected:
  // Rows of non-coding reads of four bases.
  static std::string row(const std::string& name) { return name + "\t4\tt\t1\t4\t\t\t\t\t\t\t\n"; }

  std::vector<LabelledRead> load(const std::string& fasta, const std::string& rows) const {
    test::writeFile(directory_.file("r.fa"), fasta);
    test::writeFile(directory_.file("t.tsv"), truthHeader() + rows);
    return loadLabelled(directory_.file("r.fa"), directory_.file("t.tsv"));
  }

  std::string messageOf(const std::string& fasta, const std::string& rows) const {
    try {
      load(fasta, rows);
    } catch (const InputError& error) {
      return error.what();
    }
    return "accepted";
  }

  test::TempDir directory_;
};

TEST_F(LabelledReads, RowsAreFoundByNameInAnyOrder) {
  const auto reads = load(">b x\nACGT\n>a\nacgn\n", row("a") + row("b"));
  ASSERT_EQ(reads.size(), 2U);
  EXPECT_EQ(reads[0].truth.read, "b");
  EXPECT_EQ(reads[0].bases, "ACGT");
  EXPECT_EQ(reads[1].truth.read, "a");
  EXPECT_EQ(reads[1].bases, "acgn");
}

TEST_F(LabelledReads, ReadsAndRowsThatDoNotBelongTogetherAreRefusedByName) {
  const std::string read = ">a\nACGT\n";
  EXPECT_NE(messageOf(">z\nACGT\n", row("a")).find("read 'z'"), std::string::npos);
  EXPECT_NE(messageOf(read + read, row("a")).find("record 2"), std::string::npos);
  EXPECT_NE(messageOf(read, row("a") + row("a")).find("two rows for read 'a'"), std::string::npos);
  EXPECT_NE(messageOf(read, row("a") + row("b")).find("1 of 2 rows have no read"),
            std::string::npos);
  EXPECT_NE(messageOf(">a\nACG\n", row("a")).find("has 3 bases, 4 in"), std::string::npos);
}

TEST_F(LabelledReads, ReversedReadsAreTurnedBack) {
  test::writeFile(directory_.file("r.fa"), ">a\nAACN\n>b\nAACN\n");
  test::writeFile(directory_.file("t.tsv"), truthHeader(Strands::kNamed) +
                                                "a\t4\tt\t1\t4\t\t\t\t\t\t\t\t-\n" +
                                                "b\t4\tt\t1\t4\t\t\t\t\t\t\t\t+\n");
  const auto reads = loadLabelled(directory_.file("r.fa"), directory_.file("t.tsv"));
  EXPECT_EQ(reads.at(0).bases, "NGTT");
  EXPECT_EQ(reads.at(1).bases, "AACN");
}

TEST_F(LabelledReads, MissingFilesAreNamed) {
  EXPECT_THROW(loadLabelled(directory_.file("none.fa"), directory_.file("none.tsv")), InputError);
}

TEST_F(LabelledReads, WrittenReadsAndTruthReadBackAreTheSimulatedOnes) {
  const std::vector<Transcript> transcripts = {
      parseTranscript("t", "CDS=3-14", "CCATGAAAGGGTAGTT", TranscriptKind::kCoding).transcript};
  ReadSampling sampling;
  sampling.errors.rates = {0.1, 0.1, 0.1, 0.1};
  sampling.perTranscript = 50;
  const std::vector<LabelledRead> simulated = simulateLabelled(sampling, transcripts);
  std::string fasta, rows;
  for (const LabelledRead& read : simulated) {
    fasta += ">" + read.truth.read + "\n" + read.bases + "\n";
    rows += truthLine(read.truth);
  }
  const std::vector<LabelledRead> loaded = load(fasta, rows);
  ASSERT_EQ(loaded.size(), 50U);
  for (std::size_t i = 0; i < loaded.size(); ++i) {
    EXPECT_EQ(loaded[i].bases, simulated[i].bases);
    EXPECT_EQ(truthLine(loaded[i].truth), truthLine(simulated[i].truth));
    EXPECT_EQ(loaded[i].truth.frames(), simulated[i].truth.frames());
  }
}

TEST(LabelledRead, ExampleReadsBelongToTheirTruth) {
  const auto reads = loadLabelled("examples/reads.fastq", "examples/truth.tsv");
  ASSERT_EQ(reads.size(), 30U);
  const auto count = [&](auto&& property) {
    return std::count_if(reads.begin(), reads.end(), property);
  };
  EXPECT_EQ(count([](const LabelledRead& read) { return read.truth.reversed; }), 15);
  EXPECT_EQ(count([](const LabelledRead& read) { return read.truth.isCoding(); }), 15);
}

// Stop codons within the intervals of a read, those that end an interval left out.
int innerStops(const LabelledRead& read) {
  const std::string& letters = read.bases;
  int stops = 0;
  for (const CodingInterval& interval : read.truth.coding) {
    int p = interval.first;
    while (p % 3 != interval.frame) ++p;
    for (; p + 5 <= interval.last; p += 3) {
      const std::string codon = letters.substr(static_cast<std::size_t>(p), 3);
      stops += codon == "TAA" || codon == "TAG" || codon == "TGA";
    }
  }
  return stops;
}

TEST(LabelledRead, ExampleReadsHaveNoStopCodonInTheirFrames) {
  for (const LabelledRead& read : loadLabelled("examples/reads.fastq", "examples/truth.tsv")) {
    EXPECT_EQ(innerStops(read), 0) << read.truth.read;
  }
}

TEST(LabelledRead, UnknownBasesCountInTheShareOfGc) {
  LabelledRead read;
  read.bases = "GCNA";  // 50 %; without the unknown base it were 67 %
  EXPECT_EQ(read.readClass().gcId, 1);
  read.bases.clear();
  EXPECT_EQ(read.readClass().name(), "96L0G0");
}

}  // namespace
}  // namespace velto
