#include "simulation/transcript_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "seqio/input_error.h"

namespace velto {
namespace {

// A file with this text that lives as long as the test.
class TextFile {
 public:
  TextFile(const std::string& name, const std::string& text)
      : path_(testing::TempDir() + name + "." + std::to_string(getpid())) {
    std::ofstream(path_) << text;
  }
  ~TextFile() { std::remove(path_.c_str()); }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

TEST(TranscriptFile, AcceptedRecordsKeepTheOrderOfFilesAndRefusedAreCounted) {
  const TextFile first("first.fa", ">a CDS=1-6 chr1\nATG\nTAA\n>b CDS=1-6 chr1\nATGAAA\n");
  const TextFile second("second.fa", ">c CDS=2-7 chr2\nCatguaa\n>d\nATGTAA\n");
  const TranscriptSet set = loadTranscripts({first.path(), second.path()}, TranscriptKind::kCoding);
  ASSERT_EQ(set.transcripts.size(), 2U);
  EXPECT_EQ(set.transcripts[0].name, "a");
  EXPECT_EQ(set.transcripts[1].name, "c");
  EXPECT_EQ(set.transcripts[1].group, "chr2");
  EXPECT_EQ(set.transcripts[1].cdsStart, 1);
  EXPECT_EQ(set.counts.accepted(), 2);
  EXPECT_EQ(set.counts.of(Refusal::kNoStopCodon), 1);
  EXPECT_EQ(set.counts.of(Refusal::kNoRegion), 1);
}

TEST(TranscriptFile, RecordsOfTranscriptsReadBack) {
  const std::string coding = ">a CDS=2-10\nCATGNNNTAAC\n", noncoding = ">b\nACG\n";
  const TextFile both("both.fa", coding + noncoding);
  const TranscriptSet first = loadTranscripts({both.path()}, TranscriptKind::kCoding);
  const TranscriptSet second = loadTranscripts({both.path()}, TranscriptKind::kNoncoding);
  ASSERT_EQ(first.transcripts.size(), 1U);
  ASSERT_EQ(second.transcripts.size(), 1U);
  EXPECT_EQ(fastaRecord(first.transcripts[0]), coding);
  EXPECT_EQ(fastaRecord(second.transcripts[0]), noncoding);
}

TEST(TranscriptFile, MissingFileIsAnInputError) {
  EXPECT_THROW(loadTranscripts({"no/such/file.fa"}, TranscriptKind::kCoding), InputError);
}

}  // namespace
}  // namespace velto
