// What the record reader makes of files that are cut or altered at any place.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "seqio/byte_source.h"
#include "seqio/test_bam.h"
#include "seqio/test_files.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

const char kFasta[] = ">a first\nACGTACGTTAGC\nGATTACA\n>b\nTTGACCA\n>c\nG\n";
const char kFastq[] = "@a first\nACGTAC\n+\nIIIIII\n@b\nTTG\nAC\n+\n@@@\n+I\n@c\nG\n+\nI\n";

class DamagedInputTest : public testing::Test {
 protected:
  Outcome readBytes(const std::string& bytes) { return readAll(store(name(), bytes)); }
  std::string bamFile() {
    const std::vector<TestRead> reads = {{"a", BAM_FUNMAP, "ACGTACGT"},
                                         {"b", BAM_FREVERSE, "TTGACCANNNN"},
                                         {"c", BAM_FSECONDARY, "AC"},
                                         {"d", BAM_FUNMAP, "G"}};
    return storeBam(folder_.file("bam"), reads);
  }
  std::string name() const { return folder_.file("reads"); }

  // Every cut but those at the lengths of `legal` must be an error, and what was read before it
  // must be the first records of the whole file.
  void expectCutsAreErrors(const std::string& bytes, const std::set<std::size_t>& legal) {
    const std::vector<std::string> whole = describe(readBytes(bytes).records);
    ASSERT_FALSE(whole.empty());
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      const Outcome cut = readBytes(bytes.substr(0, length));
      const bool mayEnd = legal.count(length) > 0;
      EXPECT_EQ(cut.error.empty(), mayEnd) << "cut to " << length;
      EXPECT_TRUE(mayEnd || cut.error.find(name() + ": record ") == 0) << cut.error;
      const std::vector<std::string> lines = describe(cut.records);
      ASSERT_LE(lines.size(), whole.size());
      for (std::size_t i = 0; i < lines.size(); ++i) EXPECT_EQ(lines[i], whole[i]) << length;
    }
  }

  test::TempDir folder_;
};

TEST_F(DamagedInputTest, GzipCutAnywhereIsAnError) { expectCutsAreErrors(gzip(kFasta), {0}); }

TEST_F(DamagedInputTest, GzipCutBetweenMembersIsAWholeFile) {
  const std::string first = gzip(">a\nACGT\n");
  const std::string second = gzip(">b\nTT\n");
  expectCutsAreErrors(first + second, {0, first.size()});
}

TEST_F(DamagedInputTest, BgzfCutAnywhereIsAnError) {
  expectCutsAreErrors(bgzfBlock(">a\nACGT\n") + bgzfBlock(">b\nTT\n") + bgzfBlock(""), {0});
  expectCutsAreErrors(bgzfBlock(kFastq) + bgzfBlock(""), {0});
}

TEST_F(DamagedInputTest, BamCutAnywhereIsAnError) {
  expectCutsAreErrors(test::readFile(bamFile()), {0});
}

TEST_F(DamagedInputTest, UncompressedBamCutWithinARecordIsAnError) {
  const std::string bytes = unpacked(bamFile());
  std::size_t complete = 0;
  for (std::size_t length = 1; length < bytes.size(); ++length) {
    if (readBytes(bytes.substr(0, length)).error.empty()) ++complete;
  }
  EXPECT_EQ(complete, 4U);  // after the header and after each record but the last
}

// A cut within the last line feeds leaves the records whole.
TEST_F(DamagedInputTest, FastqCutAnywhereGivesNoPartOfARecord) {
  const std::string text = kFastq;
  const std::vector<std::string> whole = describe(readBytes(text).records);
  for (std::size_t length = 0; length < text.size(); ++length) {
    const std::vector<std::string> lines = describe(readBytes(text.substr(0, length)).records);
    ASSERT_LE(lines.size(), whole.size());
    for (std::size_t i = 0; i < lines.size(); ++i) EXPECT_EQ(lines[i], whole[i]) << length;
  }
}

// 8 bytes a record, 5000 records a block: the third block's damage costs no record of the others.
TEST_F(DamagedInputTest, RecordsBeforeADamagedBlockAreReturned) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += ">r\nACGT\n";
  std::string third = bgzfBlock(text);
  third[third.size() / 2] = static_cast<char>(third[third.size() / 2] ^ 0x55);
  const std::string block = bgzfBlock(text);
  const Outcome outcome = readBytes(block + block + third + bgzfBlock(""));
  EXPECT_EQ(outcome.records.size(), 9999U);  // the last may go on in the third block
  EXPECT_EQ(outcome.error,
            name() + ": record 10000, line 20001: compressed data truncated or corrupt");
}

TEST_F(DamagedInputTest, BytesAfterTheLastGzipMemberAreAnError) {
  EXPECT_NE(readBytes(gzip(kFasta) + "rubbish, longer than a header").error, "");
  EXPECT_NE(readBytes(bgzfBlock(kFasta) + bgzfBlock("") + "rubbish, longer than a header").error,
            "");
}

TEST_F(DamagedInputTest, WrongChecksumIsAnError) {
  const auto damaged = [](std::string bytes) {
    bytes[bytes.size() - 8] = static_cast<char>(bytes[bytes.size() - 8] ^ 1);
    return bytes;
  };
  const std::string here = name() + ": record 1, line 1: ";
  EXPECT_EQ(readBytes(damaged(bgzfBlock(kFasta)) + bgzfBlock("")).error,
            here + "compressed data truncated or corrupt");
  EXPECT_EQ(
      readBytes(damaged(gzip(kFasta))).error,
      here +
          "gzip data truncated or corrupt, here or earlier; do not use any result from this file");
}

// A BAM header that promises 4 GB of text or 2^32 references ends without taking that memory.
TEST_F(DamagedInputTest, HugeCountsInABamHeaderAreAnError) {
  const std::string error = name() + ": record 1: BAM header truncated";
  EXPECT_EQ(readBytes("BAM\1\xff\xff\xff\xff").error, error);
  EXPECT_EQ(readBytes(std::string("BAM\1\0\0\0\0", 8) + "\xff\xff\xff\xff").error, error);
}

// Overwrites, cuts out, repeats or inserts a few bytes.
std::string mutate(std::string bytes, std::mt19937& random) {
  const auto below = [&](std::size_t limit) { return random() % limit; };
  for (std::size_t edits = 1 + below(4); edits > 0 && !bytes.empty(); --edits) {
    const std::size_t at = below(bytes.size());
    const char byte = static_cast<char>(below(256));
    switch (below(4)) {
      case 0:
        bytes[at] = byte;
        break;
      case 1:
        bytes.erase(at, below(8));
        break;
      case 2:
        bytes.insert(at, bytes.substr(at, below(16)));
        break;
      default:
        bytes.insert(at, 1 + below(4), byte);
    }
  }
  return bytes;
}

// What catches the library's errors catches these too, wherever bytes are read without records.
TEST(ByteSource, WhatCannotBeReadIsAnErrorOfTheLibrary) {
  EXPECT_THROW(ByteSource("no such file"), Error);
  EXPECT_THROW(ByteSource("/"), Error);
}

TEST_F(DamagedInputTest, AlteredBytesGiveRecordsOrAnInputError) {
  constexpr unsigned kSeed = 20240611;
  constexpr int kRounds = 150;
  RecordProperty("seed", static_cast<int>(kSeed));
  std::mt19937 random(kSeed);
  int errors = 0;
  const std::vector<std::string> files = {kFasta,
                                          kFastq,
                                          gzip(kFasta),
                                          test::readFile(bamFile()),
                                          unpacked(bamFile()),
                                          bgzfBlock(kFastq) + bgzfBlock("")};
  for (const std::string& file : files) {
    for (int round = 0; round < kRounds; ++round) {
      const std::string bytes = mutate(file, random);
      const Outcome outcome = readBytes(bytes);
      if (!outcome.error.empty()) ++errors;
      // Deflate packs at most 1032-fold, and each record takes a byte.
      EXPECT_LE(outcome.records.size(), bytes.size() * 1032);
    }
  }
  EXPECT_GT(errors, kRounds);  // the compressed files at least
}

}  // namespace
}  // namespace velto
