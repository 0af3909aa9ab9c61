#include "seqio/foreign_format.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace velto {
namespace {

TEST(ForeignFormat, IsNamedWithTheCommandThatMakesItReadable) {
  const std::vector<std::pair<std::string, std::string>> files = {
      {"\xef\xbb\xbf>a\nACGT\n", "tail -c +4"},
      {"\xff\xfe>", "iconv -f UTF-16"},
      {"\xfe\xff", "iconv -f UTF-16"},
      {"BZh91AY", "bzip2 -dc"},
      {std::string("\xfd"
                   "7zXZ\0\0",
                   7),
       "xz -dc"},
      {"\x28\xb5\x2f\xfd\x04", "zstd -dc"},
      {"PK\x03\x04\x14", "unzip -p"},
      {"PK\x05\x06", "empty zip"},
      {"CRAM\x03", "samtools fastq"},
      {"\x1f\x8b", "gzip header truncated"},
      {"@HD\tVN:1.6\tSO:unsorted\n", "samtools fastq"},
      {"@SQ\tSN:chr1\tLN:1000\n", "samtools fastq"},
      {"r1\t4\t*\t0\t0\t*\t*\t0\t0\tACGT\tIIII\n", "samtools fastq"},
      {"r1\t16\tc\t1\t60\t4M\t*\t0\t0\tACGT\tIIII\tNM:i:0", "samtools fastq"}};
  for (const auto& [start, command] : files) {
    EXPECT_NE(foreignFormat(start).find(command), std::string::npos) << start;
  }
}

TEST(ForeignFormat, SequenceFilesAndOtherTextAreNone) {
  for (const std::string start :
       {"", ">", ">a\nACGT\n", "@a\nACGT\n+\nIIII\n", "@HD\nACGT\n+\nIIII\n", "@HD\tx y\nA\n+\nI\n",
        "BAM\1", "PK", "BZ", "\x1f", "ACGT",
        ">a\t1\t*\t0\t0\t*\t*\t0\t0\tACGT\tIIII\n",    // a header with eleven fields
        "a\tb\t*\t0\t0\t*\t*\t0\t0\tACGT\tIIII\n"}) {  // the second one no number
    EXPECT_EQ(foreignFormat(start), "") << start;
  }
}

}  // namespace
}  // namespace velto
