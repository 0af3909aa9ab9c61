#include "batch/record_batches.h"

#include <gtest/gtest.h>

#include "seqio/input_error.h"
#include "seqio/record_reader.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

TEST(RecordBatches, GoThroughAllFilesInOrder) {
  const test::TempDir directory;
  std::string first;
  for (int i = 0; i < 300; ++i) first += ">a" + std::to_string(i) + "\nACGT\n";
  test::writeFile(directory.file("1.fa"), first);
  test::writeFile(directory.file("2.fa"), "");
  test::writeFile(directory.file("3.fa"), ">b\nAC\n");
  RecordBatches batches(
      filesInOrder({directory.file("1.fa"), directory.file("2.fa"), directory.file("3.fa")}));
  std::vector<std::string> names;
  for (RecordBatch batch = batches.next(); !batch.records.empty(); batch = batches.next()) {
    EXPECT_EQ(batch.firstOrdinal, static_cast<long>(names.size()) + 1);
    EXPECT_LE(batch.records.size(), 128U);
    for (const Record& record : batch.records) names.push_back(record.name);
  }
  ASSERT_EQ(names.size(), 301U);
  EXPECT_EQ(names[0], "a0");
  EXPECT_EQ(names[299], "a299");
  EXPECT_EQ(names[300], "b");
  EXPECT_EQ(batches.error(), nullptr);
}

TEST(RecordBatches, ALongRecordEndsItsBatch) {
  const test::TempDir directory;
  test::writeFile(directory.file("1.fa"), ">a\nAC\n>b\n" + std::string(200000, 'A') + "\n>c\nAC\n");
  RecordBatches batches(filesInOrder({directory.file("1.fa")}));
  EXPECT_EQ(batches.next().records.size(), 2U);
  EXPECT_EQ(batches.next().records.size(), 1U);
}

TEST(RecordBatches, LongHeadersEndABatchAndTheReadingAhead) {
  const test::TempDir directory;
  const std::string header(3 << 20, 'h');  // bytes
  std::string fasta;
  for (int i = 0; i < 50; ++i) fasta += ">a " + header + "\nACGT\n";
  test::writeFile(directory.file("1.fa"), fasta);
  RecordBatches batches(filesInOrder({directory.file("1.fa")}));
  const auto& ahead = batches.readAhead(300, 1000000);
  EXPECT_EQ(ahead.size(), 22U);  // of one record each: 66 MB
  EXPECT_EQ(ahead.front().records.size(), 1U);
}

TEST(RecordBatches, ReadAheadAreHandedOutInOrderAllTheSame) {
  const test::TempDir directory;
  std::string fasta;
  for (int i = 0; i < 1000; ++i) fasta += ">" + std::to_string(i) + "\nACGT\n";
  test::writeFile(directory.file("1.fa"), fasta);
  RecordBatches batches(filesInOrder({directory.file("1.fa")}));
  EXPECT_EQ(batches.readAhead(300, 1000000).size(), 3U);  // of 128 records
  for (int i = 0; i < 1000;) {
    const RecordBatch batch = batches.next();
    ASSERT_FALSE(batch.records.empty());
    EXPECT_EQ(batch.firstOrdinal, i + 1);
    for (const Record& record : batch.records) EXPECT_EQ(record.name, std::to_string(i++));
  }
  EXPECT_TRUE(batches.next().records.empty());
}

TEST(RecordBatches, ReadAheadStopAtTheBoundOfBasesTheEndAndDamage) {
  const test::TempDir directory;
  test::writeFile(directory.file("1.fa"), ">a\n" + std::string(70000, 'A') + "\n>b\nAC\n");
  test::writeFile(directory.file("2.fq"), "@a\nACGT\n+\nIIII\n@b\nACGT\n+\nI\n");
  EXPECT_EQ(RecordBatches(filesInOrder({directory.file("1.fa")})).readAhead(300, 50000).size(), 1U);
  EXPECT_EQ(RecordBatches(filesInOrder({directory.file("1.fa")})).readAhead(300, 1000000).size(),
            2U);
  RecordBatches damaged(filesInOrder({directory.file("2.fq")}));
  EXPECT_EQ(damaged.readAhead(300, 1000000).size(), 1U);
  EXPECT_EQ(damaged.next().records.size(), 1U);
  EXPECT_TRUE(damaged.next().records.empty());
  EXPECT_NE(damaged.error(), nullptr);
}

TEST(RecordBatches, EndBeforeTheDamageAndKeepTheError) {
  const test::TempDir directory;
  test::writeFile(directory.file("1.fq"), "@a\nACGT\n+\nIIII\n@b\nACGT\n+\nI\n");
  RecordBatches batches(filesInOrder({directory.file("1.fq"), directory.file("1.fq")}));
  const RecordBatch batch = batches.next();
  ASSERT_EQ(batch.records.size(), 1U);
  EXPECT_EQ(batch.records[0].name, "a");
  EXPECT_TRUE(batches.next().records.empty());
  ASSERT_NE(batches.error(), nullptr);
  EXPECT_THROW(std::rethrow_exception(batches.error()), InputError);
}

}  // namespace
}  // namespace velto
