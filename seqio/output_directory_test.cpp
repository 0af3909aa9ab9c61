#include "seqio/output_directory.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "seqio/test_files.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

namespace fs = std::filesystem;

class OutputDirectoryTest : public testing::Test {
 protected:
  std::string name() const { return folder_.file("model"); }
  std::string errorOfMaking(const std::string& path) {
    try {
      OutputDirectory directory(path);
    } catch (const OutputError& error) {
      return error.what();
    }
    return "";
  }
  void makeOld() {
    fs::create_directory(name());
    store(name() + "/old", "old");
  }
  test::TempDir folder_;
};

TEST_F(OutputDirectoryTest, AppearsWithItsFilesOnlyAtCommit) {
  OutputDirectory directory(name());
  directory.write("a", "text");
  EXPECT_FALSE(fs::exists(name()));
  directory.commit();
  EXPECT_EQ(test::readFile(name() + "/a"), "text");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputDirectoryTest, WithoutCommitNothingIsLeft) {
  {
    OutputDirectory directory(name());
    directory.write("a", "text");
  }
  EXPECT_EQ(folder_.entries(), 0U);
}

TEST_F(OutputDirectoryTest, EmptyFolderIsTakenOver) {
  fs::create_directory(name());
  OutputDirectory directory(name() + "/");
  directory.write("a", "text");
  directory.commit();
  EXPECT_EQ(test::readFile(name() + "/a"), "text");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputDirectoryTest, FolderWithFilesIsRefusedAndStays) {
  makeOld();
  EXPECT_EQ(errorOfMaking(name()), name() + ": will not replace: Directory not empty");
  EXPECT_EQ(test::readFile(name() + "/old"), "old");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputDirectoryTest, FolderFilledMeanwhileIsRefusedAtCommit) {
  {
    OutputDirectory directory(name());
    makeOld();
    EXPECT_THROW(directory.commit(), OutputError);
  }
  EXPECT_EQ(test::readFile(name() + "/old"), "old");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputDirectoryTest, WriteMakesFilesAndTheFoldersTheyAreIn) {
  OutputDirectory directory(name());
  directory.write("card.json", "{}");
  directory.write("a/b/one", "1");
  directory.write("a/b/two", "2");
  directory.commit();
  EXPECT_EQ(test::readFile(name() + "/card.json"), "{}");
  EXPECT_EQ(test::readFile(name() + "/a/b/one") + test::readFile(name() + "/a/b/two"), "12");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputDirectoryTest, FileInTheWayOfAFolderIsAnError) {
  OutputDirectory directory(name());
  directory.write("a", "");
  EXPECT_THROW(directory.write("a/b", ""), OutputError);
}

TEST_F(OutputDirectoryTest, FileAndMissingParentAreRefused) {
  store(name(), "text");
  EXPECT_EQ(errorOfMaking(name()), name() + ": cannot replace: Not a directory");
  EXPECT_NE(errorOfMaking(folder_.file("none/model")).find("No such file or directory"),
            std::string::npos);
  EXPECT_EQ(errorOfMaking(""), ": cannot make folder: No such file or directory");
}

TEST_F(OutputDirectoryTest, LongNameWorks) {
  const std::string path = folder_.file(std::string(250, 'x'));
  OutputDirectory directory(path);
  directory.commit();
  EXPECT_TRUE(fs::is_directory(path));
}

TEST_F(OutputDirectoryTest, RelativeNameWorks) {
  const fs::path before = fs::current_path();
  fs::current_path(folder_.path());
  OutputDirectory directory("model");
  fs::current_path(before);
  directory.commit();
  EXPECT_TRUE(fs::is_directory(name()));
}

}  // namespace
}  // namespace velto
