#include "seqio/record_reader.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "seqio/test_bam.h"
#include "seqio/test_files.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

using Lines = std::vector<std::string>;
using Qualities = std::vector<std::uint8_t>;

class RecordReaderTest : public testing::Test {
 protected:
  Outcome readText(const std::string& bytes, std::size_t maxBases = kMaxRecordBases) {
    return readAll(store(name(), bytes), maxBases);
  }
  Lines records(const std::string& bytes) {
    const Outcome outcome = readText(bytes);
    EXPECT_EQ(outcome.error, "");
    return describe(outcome.records);
  }
  std::string errorOf(const std::string& bytes) { return readText(bytes).error; }
  std::string name() const { return folder_.file("reads"); }

  test::TempDir folder_;
};

const char kFasta[] = ">a first read\nACGU\nnn\n>b\nTT\n";
const Lines kFastaRecords = {"1:1 a|first read|ACGUnn", "2:4 b||TT"};
const char kFastq[] = "@a first read\nACGT\n+\n@+>!\n@b\nTT\n+b\nII\n";
const Lines kFastqRecords = {"1:1 a|first read|ACGT", "2:5 b||TT"};

// ---- FASTA

TEST_F(RecordReaderTest, FastaGivesNameDescriptionAndJoinedLines) {
  EXPECT_EQ(records(kFasta), kFastaRecords);
}

TEST_F(RecordReaderTest, NameEndsAtTheFirstBlankOrTab) {
  EXPECT_EQ(records(">a\tb c\nA\n>d e\tf\nC\n> g\nT\n"),
            (Lines{"1:1 a|b c|A", "2:3 d|e\tf|C", "3:5 |g|T"}));
}

TEST_F(RecordReaderTest, LastLineMayLackItsLineFeed) {
  EXPECT_EQ(records(">a\nAC\nGT"), Lines{"1:1 a||ACGT"});
  EXPECT_EQ(records(">a"), Lines{"1:1 a||"});
  EXPECT_EQ(records(">"), Lines{"1:1 ||"});
}

TEST_F(RecordReaderTest, CarriageReturnsBeforeLineFeedsAreLineEnds) {
  EXPECT_EQ(records("\r\n>a x\r\nAC\r\nGT\r\n\r\n>b\r\nT\r"), (Lines{"1:2 a|x|ACGT", "2:6 b||T"}));
  EXPECT_EQ(records("@a\r\nAC\r\n+\r\nII\r\n\r\n"), Lines{"1:1 a||AC"});
}

TEST_F(RecordReaderTest, BlankLinesAreSkipped) {
  EXPECT_EQ(records("\n \n>a\n\nAC\n\nGT\n\n\n>b\nT\n\n"), (Lines{"1:3 a||ACGT", "2:10 b||T"}));
}

TEST_F(RecordReaderTest, RecordWithoutSequenceIsReturnedEmpty) {
  EXPECT_EQ(records(">a\n>b\n\n>c\nA\n"), (Lines{"1:1 a||", "2:2 b||", "3:4 c||A"}));
}

TEST_F(RecordReaderTest, BlanksAndTabsLeaveTheSequence) {
  EXPECT_EQ(records(">a\nA C\tG T\n \t\n"), Lines{"1:1 a||ACGT"});
  EXPECT_EQ(records("@a\nA C\n+\nI I\n"), Lines{"1:1 a||AC"});
}

TEST_F(RecordReaderTest, LettersGapsAndStopsAreBases) {
  const std::string letters = "ACGTUacgtuRYSWKMBDHVNrymX-*EFILPQZ";
  EXPECT_EQ(records(">a\n" + letters + "\n"), Lines{"1:1 a||" + letters});
}

TEST_F(RecordReaderTest, AnyOtherByteOfASequenceIsAnError) {
  const auto expectError = [&](const std::string& byte, const std::string& shown) {
    const std::string reason =
        shown + " within a sequence, where only letters, '-' and '*' may stand";
    EXPECT_EQ(errorOf(">a\nAC\n>b\nGT\nA" + byte + "C\n"),
              name() + ": record 2, line 5: " + reason);
    EXPECT_EQ(errorOf("@a\nA" + byte + "C\n+\nIII\n"), name() + ": record 1, line 2: " + reason);
  };
  for (const std::string byte : {"0", "9", ";", ".", "@", "[", "`", "{", "=", ">", "+"}) {
    expectError(byte, "'" + byte + "'");
  }
  expectError("\r", "byte 13");
  expectError("\xff", "byte 255");
  expectError("\x7f", "byte 127");
  expectError(std::string(1, '\0'), "byte 0");
}

// What used to become one long read.
TEST_F(RecordReaderTest, FastaFollowedByAnotherFormatIsAnError) {
  EXPECT_NE(errorOf(">a\nACGT\n@b\nACGT\n+\nIIII\n").find("record 1, line 3: '@' within"),
            std::string::npos);
  EXPECT_NE(errorOf(">a\nACGT\n >b\nACGT\n").find("record 1, line 3: '>' within"),
            std::string::npos);
  EXPECT_NE(errorOf(">a\nACGT\n;b\nACGT\n").find("record 1, line 3: ';' within"),
            std::string::npos);
}

// ---- Line ends

TEST_F(RecordReaderTest, LoneCarriageReturnsEndLinesIfTheyEndTheFirst) {
  EXPECT_EQ(records(">a x\rAC\rGT\r\r>b\rTT\r"), (Lines{"1:1 a|x|ACGT", "2:5 b||TT"}));
  EXPECT_EQ(records(">a\rAC\r>b\rTT"), (Lines{"1:1 a||AC", "2:3 b||TT"}));
  EXPECT_EQ(records("@a\rAC\r+\rII\r@b\rA\r+\rI\r"), (Lines{"1:1 a||AC", "2:5 b||A"}));
  EXPECT_EQ(records(">a\r"), Lines{"1:1 a||"});
}

// The reader's buffer holds 2^18 bytes: the file's first line end is put on every place around its
// end, and a record behind it.
TEST_F(RecordReaderTest, FirstLineEndMayCrossTheBufferEnd) {
  for (std::size_t length = (1U << 18) - 5; length < (1U << 18) + 3; ++length) {
    const std::string header(length, 'h');
    for (const std::string end : {"\n", "\r\n", "\r"}) {
      EXPECT_EQ(records("> " + header + end + "AC" + end + ">b" + end + "T"),
                (Lines{"1:1 |" + header + "|AC", "2:3 b||T"}));
    }
  }
}

TEST_F(RecordReaderTest, HeaderThatHoldsALineEndOfAnotherSystemIsAnError) {
  const std::string reason = "header with the line end of another system inside";
  EXPECT_EQ(errorOf(">a\nAC\n>b\rGT\r>c\rTT\n"), name() + ": record 2, line 3: " + reason);
  EXPECT_EQ(errorOf(">a\rAC\r>b\nGT\r"), name() + ": record 2, line 3: " + reason);
}

// The reader's buffer holds 2^18 bytes: a CR LF is put on every place around its end.
TEST_F(RecordReaderTest, LinesOfAnyLengthCrossTheBufferEnd) {
  for (std::size_t length = (1U << 18) - 8; length < (1U << 18) + 8; ++length) {
    const std::string bases(length, 'A');
    EXPECT_EQ(records(">a\n" + bases + "\r\n>b\nC\n"), (Lines{"1:1 a||" + bases, "2:3 b||C"}));
    EXPECT_EQ(records("> " + bases + "\r\nC\n"), Lines{"1:1 |" + bases + "|C"});
  }
}

TEST_F(RecordReaderTest, NameAtTheLimitIsReadAndALongerOneIsAnError) {
  const std::string longest(10'000, 'n');
  EXPECT_EQ(records(">" + longest + " d\nAC\n"), Lines{"1:1 " + longest + "|d|AC"});
  EXPECT_EQ(errorOf(">a\nAC\n>" + longest + "n\nAC\n"),
            name() + ": record 2, line 3: name longer than 10000 bytes");
}

TEST_F(RecordReaderTest, SequenceAtTheLimitIsReadAndOneBaseMoreIsAnError) {
  EXPECT_EQ(readText(">a\nACGTACGT\nAC\n", 10).error, "");
  const Outcome outcome = readText(">a\nA\n>b\nACGTACGT\nACG\n", 10);
  EXPECT_EQ(outcome.records.size(), 1U);
  EXPECT_EQ(outcome.error, name() + ": record 2, line 5: sequence longer than 10 bases");
}

TEST_F(RecordReaderTest, SequenceOfTheWholeLimitIsRead) {
  std::string text = ">a\n";
  text.append(kMaxRecordBases, 'A');
  EXPECT_EQ(readText(text).records.at(0).bases.size(), kMaxRecordBases);
  EXPECT_NE(errorOf(text + "A").find("record 1, line 2: sequence longer than 100000000"),
            std::string::npos);
}

TEST_F(RecordReaderTest, EmptyFileHasNoRecords) {
  EXPECT_EQ(records(""), Lines{});
  EXPECT_EQ(records("\n\r\n"), Lines{});
  EXPECT_EQ(records(gzip("")), Lines{});
  EXPECT_EQ(records(bgzfBlock("")), Lines{});
}

// ---- FASTQ

TEST_F(RecordReaderTest, FastqOfFourLinesPerRecord) {
  EXPECT_EQ(records(kFastq), kFastqRecords);
  EXPECT_EQ(records("@a\nAC\n+\nII"), Lines{"1:1 a||AC"});
}

TEST_F(RecordReaderTest, FastqOfSeveralLinesMayStartQualityWithItsMarkers) {
  EXPECT_EQ(records("@a\nAC\nGT\nA\n+a\n@I\n+I\n>\n@b\nAC\n+\n@@\n"),
            (Lines{"1:1 a||ACGTA", "2:9 b||AC"}));
}

TEST_F(RecordReaderTest, FastqRecordWithoutSequenceIsReturnedEmpty) {
  EXPECT_EQ(records("@a\n\n+\n\n@b\n+\n@c\nA\n+\nI\n"), (Lines{"1:1 a||", "2:5 b||", "3:7 c||A"}));
}

TEST_F(RecordReaderTest, FastqBlankLinesBetweenRecordsAreSkipped) {
  EXPECT_EQ(records("@a\nA\n+\nI\n\n\n@b\nC\n+\nI\n"), (Lines{"1:1 a||A", "2:7 b||C"}));
}

TEST_F(RecordReaderTest, FastqErrorsNameFileRecordAndLine) {
  const std::string good = "@a\nA\n+\nI\n";
  const std::string second = name() + ": record 2, line ";
  EXPECT_EQ(errorOf(good + "@b\nAC\n"), second + "7: FASTQ record without its '+' line");
  EXPECT_EQ(errorOf(good + "@b\nAC\n@c\nA\n+\nI\n"),
            second + "7: FASTQ record without its '+' line");
  EXPECT_EQ(errorOf(good + "@b\nAC\n+\n"), second + "8: FASTQ record ends within its quality");
  EXPECT_EQ(errorOf(good + "@b\nAC\n+"), second + "7: FASTQ record ends within its quality");
  EXPECT_EQ(errorOf(good + "@b\nAC\n+\nI\n"), second + "8: FASTQ quality of length 1 for 2 bases");
  EXPECT_EQ(errorOf(good + "@b\nAC\n+\nIII\n"),
            second + "8: FASTQ quality of length 3 for 2 bases");
  EXPECT_EQ(errorOf(good + "@b\nA\nC\n+\nI\n"),
            second + "10: FASTQ record ends within its quality");
  EXPECT_EQ(errorOf(good + ">b\nAC\n"), second + "5: FASTQ record does not start with '@'");
  EXPECT_EQ(errorOf(good + "I\n"), second + "5: FASTQ record does not start with '@'");
}

// '!' is 0, '~' is 93, 'I' is 73 - 33 = 40; FASTA has none.
TEST_F(RecordReaderTest, QualitiesArePhredValues) {
  const std::vector<Record> reads = readText("@a\nACGT\n+\n!I~@\n@b\nAC\nG\n+\n@\n+ I\n").records;
  EXPECT_EQ(reads.at(0).qualities, (Qualities{0, 40, 93, 31}));
  EXPECT_EQ(reads.at(1).qualities, (Qualities{31, 10, 40}));
  EXPECT_EQ(readText(">a\nACGT\n").records.at(0).qualities, Qualities{});
}

TEST_F(RecordReaderTest, QualityLettersOutOfRangeAreAnError) {
  for (const std::string letter : {"\x1f", "\x7f", "\x80", "\xff"}) {
    EXPECT_EQ(errorOf("@a\nACGT\n+\nII" + letter + "I\n"),
              name() + ": record 1, line 4: FASTQ quality outside '!' to '~'");
  }
}

// ---- Other content

TEST_F(RecordReaderTest, FileOfNoKnownFormatIsRefused) {
  const std::string error = name() + ": record 1, line 1: neither FASTA ('>'), FASTQ ('@') nor BAM";
  for (const char* text : {"ACGT\n", ";c\n>a\nA\n", " >a\nA\n", "BAMBOO\n", "+\n", "\x1f"}) {
    EXPECT_EQ(errorOf(text), error) << text;
  }
  EXPECT_EQ(errorOf("\n\nACGT\n"),
            name() + ": record 1, line 3: neither FASTA ('>'), FASTQ ('@') nor BAM");
}

TEST_F(RecordReaderTest, FormatThatIsKnownButNotReadIsNamedEvenInGzip) {
  const std::string error =
      name() +
      ": record 1, line 1: bzip2 is not read; unpack it, as in: bzip2 -dc FILE | velto scan -";
  EXPECT_EQ(errorOf("BZh91AY&SY"), error);
  EXPECT_EQ(errorOf(gzip("BZh91AY&SY")), error);
}

TEST_F(RecordReaderTest, MissingFileAndFolderAreRefused) {
  EXPECT_EQ(readAll(folder_.file("none")).error,
            folder_.file("none") + ": cannot open: No such file or directory");
  EXPECT_EQ(readAll(folder_.path()).error, folder_.path() + ": is a directory");
}

TEST_F(RecordReaderTest, UnreadableFileIsRefused) {
  store(name(), kFasta);
  chmod(name().c_str(), 0);
  if (access(name().c_str(), R_OK) == 0) GTEST_SKIP() << "this user reads every file";
  EXPECT_EQ(readAll(name()).error, name() + ": cannot open: Permission denied");
}

TEST_F(RecordReaderTest, NameThatLooksLikeAnAddressIsAFile) {
  EXPECT_NE(readAll("https://localhost:1/a").error.find("No such file"), std::string::npos);
}

// ---- Compression

TEST_F(RecordReaderTest, GzipOfSeveralMembersIsReadWhateverTheName) {
  const std::string text = kFasta;
  EXPECT_EQ(records(gzip(text)), kFastaRecords);
  EXPECT_EQ(records(gzip(text.substr(0, 16)) + gzip("") + gzip(text.substr(16))), kFastaRecords);
  EXPECT_EQ(records(gzip(kFastq)), kFastqRecords);
}

TEST_F(RecordReaderTest, BgzfOfSeveralBlocksIsRead) {
  const std::string text = kFasta;
  const std::string end = bgzfBlock("");
  const std::string first = bgzfBlock(text.substr(0, 16));
  const std::string second = bgzfBlock(text.substr(16));
  EXPECT_EQ(records(first + second + end), kFastaRecords);
  EXPECT_EQ(records(first + end + second + end), kFastaRecords);
  EXPECT_EQ(records(bgzfBlock(kFastq) + end), kFastqRecords);
}

TEST_F(RecordReaderTest, PlainTextNamedGzIsRead) {
  EXPECT_EQ(describe(readAll(store(folder_.file("a.gz"), kFasta)).records), kFastaRecords);
}

// ---- BAM

const std::vector<TestRead> kReads = {
    {"u1", BAM_FUNMAP, "ACGTN"},   {"rev", BAM_FREVERSE, "AACGRYMKSWHBVDN"},
    {"sec", BAM_FSECONDARY, "AC"}, {"sup", BAM_FSUPPLEMENTARY, "AC"},
    {"none", BAM_FUNMAP, ""},      {"fwd", 0, "ACGT="},
};
// Reverse complement by hand: letters from last to first, each R<->Y, M<->K, H<->D, B<->V.
const Lines kReadRecords = {"1:0 u1||ACGTN", "2:0 rev||NHBVDWSMKRYCGTT", "5:0 none||",
                            "6:0 fwd||ACGT="};

TEST_F(RecordReaderTest, BamGivesPrimaryReadsOnTheSequencedStrand) {
  const Outcome outcome = readAll(storeBam(name(), kReads));
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(describe(outcome.records), kReadRecords);
}

TEST_F(RecordReaderTest, UncompressedBamIsRead) {
  const std::string bytes = unpacked(storeBam(name(), kReads));
  EXPECT_EQ(bytes.substr(0, 4), "BAM\1");
  EXPECT_EQ(records(bytes), kReadRecords);
  EXPECT_EQ(records(gzip(bytes)), kReadRecords);
}

TEST_F(RecordReaderTest, BamWithoutReadsHasNoRecords) {
  const Outcome outcome = readAll(storeBam(name(), {}));
  EXPECT_EQ(outcome.error, "");
  EXPECT_TRUE(outcome.records.empty());
}

TEST_F(RecordReaderTest, BamQualitiesFollowTheSequencedStrand) {
  const std::vector<TestRead> reads = {{"fwd", 0, "ACG", std::string("\0\x02\x5d", 3)},
                                       {"rev", BAM_FREVERSE, "ACG", "\x01\x02\x03"},
                                       {"none", BAM_FUNMAP, "ACG"}};
  const std::vector<Record> records = readAll(storeBam(name(), reads)).records;
  EXPECT_EQ(records.at(0).qualities, (Qualities{0, 2, 93}));
  EXPECT_EQ(records.at(1).qualities, (Qualities{3, 2, 1}));
  EXPECT_EQ(records.at(2).qualities, Qualities{});
}

TEST_F(RecordReaderTest, BamQualityAbove93IsAnError) {
  EXPECT_EQ(readAll(storeBam(name(), {{"a", 0, "AC", "\x02\x5e"}})).error,
            name() + ": record 1: quality above 93");
}

TEST_F(RecordReaderTest, BamReadBeyondTheLimitIsAnError) {
  const Outcome outcome = readAll(storeBam(name(), kReads), 5);
  EXPECT_EQ(outcome.records.size(), 1U);
  EXPECT_EQ(outcome.error, name() + ": record 2: longer than 5 bases");
}

// ---- Standard input

// Standard input is `bytes` while `action` runs, as a file or through a pipe.
template <typename Action>
void withStandardInput(const std::string& file, bool pipeIt, Action action) {
  const int saved = dup(STDIN_FILENO);
  int ends[2];
  if (pipeIt) {
    const std::string bytes = test::readFile(file);  // less than a pipe holds
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    close(ends[1]);
  } else {
    ends[0] = open(file.c_str(), O_RDONLY);
  }
  dup2(ends[0], STDIN_FILENO);
  close(ends[0]);
  action();
  dup2(saved, STDIN_FILENO);
  close(saved);
}

TEST_F(RecordReaderTest, StandardInputTakesEveryFormat) {
  const auto expect = [&](const Lines& lines) {
    for (const bool pipeIt : {false, true}) {
      withStandardInput(name(), pipeIt, [&] {
        const Outcome outcome = readAll("-");
        EXPECT_EQ(outcome.error, "");
        EXPECT_EQ(describe(outcome.records), lines);
      });
    }
  };
  for (const std::string& text :
       {std::string(kFasta), gzip(kFasta), bgzfBlock(kFasta) + bgzfBlock("")}) {
    store(name(), text);
    expect(kFastaRecords);
  }
  storeBam(name(), kReads);
  expect(kReadRecords);
}

TEST_F(RecordReaderTest, TruncatedStandardInputIsAnError) {
  store(name(), bgzfBlock(kFasta));
  withStandardInput(name(), true, [] {
    EXPECT_EQ(readAll("-").error,
              "standard input: record 2, line 6: truncated: the BGZF end-of-file block is missing");
  });
}

}  // namespace
}  // namespace velto
