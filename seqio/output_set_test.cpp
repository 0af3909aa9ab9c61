#include "seqio/output_set.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "seqio/test_files.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

class OutputSetTest : public testing::Test {
 protected:
  std::string one() const { return folder_.file("one"); }
  std::string two() const { return folder_.file("two"); }
  test::TempDir folder_;
};

TEST_F(OutputSetTest, AllFilesAppearAtCommit) {
  OutputSet outputs;
  OutputFile& first = outputs.add(one());
  outputs.add(two(), OutputFile::Format::kGzip).write("2");
  first.write("1");
  EXPECT_EQ(folder_.entries(), 2U);  // the temporary ones
  EXPECT_FALSE(std::filesystem::exists(one()));
  outputs.commit();
  EXPECT_EQ(test::readFile(one()), "1");
  EXPECT_EQ(unpacked(two()), "2");
  EXPECT_EQ(folder_.entries(), 2U);
}

TEST_F(OutputSetTest, OutputThatFailsLeavesTheOthersAsTheyWere) {
  store(one(), "old");
  for (const bool fullFirst : {true, false}) {
    OutputSet outputs;
    if (fullFirst) outputs.add("/dev/full").write("text");
    outputs.add(one()).write("new");
    outputs.add(two()).write("new");
    if (!fullFirst) outputs.add("/dev/full").write("text");
    EXPECT_THROW(outputs.commit(), OutputError);
  }
  EXPECT_EQ(test::readFile(one()), "old");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputSetTest, NameThatCannotBeGivenLeavesAllFilesAsTheyWere) {
  const std::string three = folder_.file("three");
  store(one(), "old");
  std::filesystem::permissions(one(), std::filesystem::perms(0640));
  {
    OutputSet outputs;
    outputs.add(one()).write("new");
    outputs.add(two()).write("new");
    outputs.add(three).write("new");
    std::filesystem::create_directory(three);  // since the output was opened
    EXPECT_THROW(outputs.commit(), OutputError);
  }
  EXPECT_EQ(test::readFile(one()), "old");
  EXPECT_FALSE(std::filesystem::exists(two()));
  EXPECT_TRUE(std::filesystem::is_directory(three));
  EXPECT_EQ(folder_.entries(), 2U);
}

TEST_F(OutputSetTest, FolderGoneSinceTheOpeningLeavesTheOthersAsTheyWere) {
  store(one(), "old");
  const std::string gone = folder_.file("gone");
  std::filesystem::create_directory(gone);
  OutputSet outputs;
  outputs.add(one()).write("new");
  outputs.add(gone + "/two").write("new");
  std::filesystem::remove_all(gone);
  EXPECT_THROW(outputs.commit(), OutputError);
  EXPECT_EQ(test::readFile(one()), "old");
}

TEST_F(OutputSetTest, AfterAFailureOnlyStreamsGetTheirText) {
  store(two(), "");
  const int descriptor = open(two().c_str(), O_WRONLY);
  {
    OutputSet outputs;
    outputs.add(one()).write("1");
    outputs.add("/dev/fd/" + std::to_string(descriptor)).write("2");
    outputs.finishStreams();
  }
  close(descriptor);
  EXPECT_EQ(test::readFile(two()), "2");
  EXPECT_EQ(folder_.entries(), 1U);
}

}  // namespace
}  // namespace velto
