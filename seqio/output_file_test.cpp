#include "seqio/output_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

#include "seqio/test_files.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

std::string errorOfWriting(const std::string& path, const std::string& text) {
  try {
    OutputFile file(path);
    file.write(text);
    file.commit();
  } catch (const OutputError& error) {
    return error.what();
  }
  return "";
}

class OutputFileTest : public testing::Test {
 protected:
  std::string name() const { return folder_.file("out"); }
  test::TempDir folder_;
};

TEST_F(OutputFileTest, AppearsWithItsTextOnlyAtCommit) {
  OutputFile file(name());
  file.write("one\n");
  file.write("");
  file.write("two\n");
  EXPECT_FALSE(std::filesystem::exists(name()));
  EXPECT_EQ(folder_.entries(), 1U);
  file.commit();
  EXPECT_EQ(test::readFile(name()), "one\ntwo\n");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputFileTest, WithoutCommitNothingIsLeftAndTheOldFileStays) {
  store(name(), "old");
  { OutputFile(name()).write("new"); }
  EXPECT_EQ(test::readFile(name()), "old");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputFileTest, CommitReplacesTheOldFile) {
  store(name(), "old and long");
  EXPECT_EQ(errorOfWriting(name(), "new"), "");
  EXPECT_EQ(test::readFile(name()), "new");
}

TEST_F(OutputFileTest, FileWithoutTextIsMade) {
  EXPECT_EQ(errorOfWriting(name(), ""), "");
  EXPECT_TRUE(std::filesystem::exists(name()));
  EXPECT_EQ(test::readFile(name()), "");
}

// A block is 65280 bytes.
TEST_F(OutputFileTest, TextAroundTheBlockSizeIsKeptWhole) {
  for (const std::size_t length : {65279U, 65280U, 65281U, 200000U}) {
    const std::string text(length, 'x');
    for (const std::string& path : {name(), name() + ".gz"}) {
      OutputFile file(path);
      file.write(">a\n");
      file.write(text);
      file.write("y");
      file.commit();
      EXPECT_EQ(readAll(path).records.at(0).bases, text + "y");
    }
  }
}

TEST_F(OutputFileTest, GzipIsChosenByNameOrFlag) {
  const auto isGzip = [](const std::string& path) {
    return test::readFile(path).substr(0, 2) == "\x1f\x8b";
  };
  const auto write = [](const std::string& path, OutputFile::Format format) {
    OutputFile file(path, format);
    file.write(">a\nACGT\n");
    file.commit();
    const Outcome outcome = readAll(path);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.records.at(0).bases, "ACGT");
  };
  write(name(), OutputFile::Format::kByName);
  EXPECT_FALSE(isGzip(name()));
  write(name(), OutputFile::Format::kGzip);
  EXPECT_TRUE(isGzip(name()));
  write(name() + ".gz", OutputFile::Format::kByName);
  EXPECT_TRUE(isGzip(name() + ".gz"));
  write(name() + ".gz", OutputFile::Format::kPlain);
  EXPECT_FALSE(isGzip(name() + ".gz"));
}

TEST_F(OutputFileTest, EmptyGzipIsWhole) {
  EXPECT_EQ(errorOfWriting(name() + ".gz", ""), "");
  EXPECT_EQ(test::readFile(name() + ".gz"), bgzfBlock(""));
}

TEST_F(OutputFileTest, SymbolicLinkStaysAndItsTargetIsReplaced) {
  store(name(), "old");
  std::filesystem::create_symlink(name(), folder_.file("link"));
  EXPECT_EQ(errorOfWriting(folder_.file("link"), "new"), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder_.file("link")));
  EXPECT_EQ(test::readFile(name()), "new");
}

TEST_F(OutputFileTest, DeviceIsWrittenDirectly) {
  EXPECT_EQ(errorOfWriting("/dev/null", "text"), "");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(OutputFileTest, FullDiskIsAnError) {
  EXPECT_EQ(errorOfWriting("/dev/full", "text"),
            "/dev/full: cannot write: No space left on device");
  EXPECT_EQ(errorOfWriting("/dev/full", std::string(100000, 'x')),
            "/dev/full: cannot write: No space left on device");
}

TEST_F(OutputFileTest, PipeIsWrittenDirectlyAndStaysAPipe) {
  ASSERT_EQ(mkfifo(name().c_str(), 0600), 0);
  const int reader = open(name().c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_EQ(errorOfWriting(name(), "text"), "");
  char got[8];
  EXPECT_EQ(read(reader, got, sizeof got), 4);
  close(reader);
  EXPECT_TRUE(std::filesystem::is_fifo(name()));
  EXPECT_EQ(folder_.entries(), 1U);
}

// What stands in the redirected file already must stay, and the file must not be renamed over.
TEST_F(OutputFileTest, StandardOutputIsWrittenBehindWhatItHolds) {
  for (const char* path : {"-", "/dev/stdout", "/dev/fd/1"}) {
    const int target = open(name().c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
    ASSERT_EQ(write(target, "head\n", 5), 5);
    std::fflush(stdout);
    const int saved = dup(STDOUT_FILENO);
    dup2(target, STDOUT_FILENO);
    const std::string error = errorOfWriting(path, "text\n");
    dup2(saved, STDOUT_FILENO);
    close(saved);
    close(target);
    EXPECT_EQ(error, "");
    EXPECT_EQ(test::readFile(name()), "head\ntext\n") << path;
    EXPECT_EQ(folder_.entries(), 1U);
  }
}

TEST_F(OutputFileTest, ClosedPipeIsTold) {
  std::signal(SIGPIPE, SIG_IGN);
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  close(ends[0]);
  OutputFile file("/dev/fd/" + std::to_string(ends[1]));
  file.write("text");
  bool closedPipe = false;
  try {
    file.commit();
  } catch (const OutputError& error) {
    closedPipe = error.closedPipe();
  }
  close(ends[1]);
  EXPECT_TRUE(closedPipe);
  EXPECT_FALSE(OutputError("-", "cannot write", ENOSPC).closedPipe());
}

TEST_F(OutputFileTest, NameThatCannotBeMadeIsRefusedAtOnce) {
  EXPECT_EQ(errorOfWriting(folder_.path(), ""), folder_.path() + ": cannot open: Is a directory");
  EXPECT_EQ(errorOfWriting("", ""), ": cannot open: No such file or directory");
  const std::string path = folder_.file("none/out");
  EXPECT_EQ(errorOfWriting(path, ""), path + ": cannot open: No such file or directory");
}

TEST_F(OutputFileTest, OfTwoFilesOfOneNameTheLastOneStays) {
  {
    OutputFile first(name());
    OutputFile second(name());
    first.write("first");
    second.write("second");
    first.commit();
    second.commit();
    EXPECT_EQ(test::readFile(name()), "second");
  }
  EXPECT_EQ(test::readFile(name()), "second");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputFileTest, TakenBackTheOldFileStandsThereAgain) {
  store(name(), "old");
  {
    OutputFile file(name());
    file.write("new");
    file.commit();
    EXPECT_EQ(test::readFile(name()), "new");
    file.takeBack();
    EXPECT_EQ(test::readFile(name()), "old");
  }
  EXPECT_EQ(test::readFile(name()), "old");
  EXPECT_EQ(folder_.entries(), 1U);
}

// An exchange of names would succeed, and the folder go with the temporary file.
TEST_F(OutputFileTest, FolderMadeUnderTheNameMeanwhileStaysWithAllItHolds) {
  {
    OutputFile file(name());
    std::filesystem::create_directory(name());
    store(name() + "/inside", "text");
    EXPECT_THROW(file.commit(), OutputError);
  }
  EXPECT_EQ(test::readFile(name() + "/inside"), "text");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputFileTest, FinishedFileAppearsAtCommit) {
  OutputFile file(name());
  file.write("text");
  file.finish();
  EXPECT_FALSE(std::filesystem::exists(name()));
  file.commit();
  EXPECT_EQ(test::readFile(name()), "text");
}

mode_t modeOf(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 ? status.st_mode & ALLPERMS : 0;
}

TEST_F(OutputFileTest, ReplacedFileHandsItsPermissionsOn) {
  const mode_t before = umask(027);
  EXPECT_EQ(errorOfWriting(name(), "new"), "");
  EXPECT_EQ(modeOf(name()), 0640U);
  for (const mode_t mode : {0600U, 0666U, 0755U}) {
    chmod(name().c_str(), mode);
    EXPECT_EQ(errorOfWriting(name(), "again"), "");
    EXPECT_EQ(modeOf(name()), mode);
  }
  umask(before);
}

TEST_F(OutputFileTest, ReadOnlyFileIsNotReplaced) {
  store(name(), "old");
  chmod(name().c_str(), 0444);
  EXPECT_EQ(errorOfWriting(name(), "new"), name() + ": cannot open: Permission denied");
  EXPECT_EQ(test::readFile(name()), "old");
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputFileTest, DanglingLinkStaysAndItsTargetIsMade) {
  std::filesystem::create_directory(folder_.file("a"));
  std::filesystem::create_symlink("a/target", folder_.file("second"));
  std::filesystem::create_symlink("second", folder_.file("first"));
  EXPECT_EQ(errorOfWriting(folder_.file("first"), "new"), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder_.file("first")));
  EXPECT_EQ(test::readFile(folder_.file("a/target")), "new");
}

TEST_F(OutputFileTest, LinkInACircleIsAnError) {
  std::filesystem::create_symlink("out", name());
  EXPECT_NE(errorOfWriting(name(), "new"), "");
  EXPECT_TRUE(std::filesystem::is_symlink(name()));
  EXPECT_EQ(folder_.entries(), 1U);
}

TEST_F(OutputFileTest, NameAsLongAsTheSystemTakesWorks) {
  const std::string path = folder_.file(std::string(255, 'x'));
  EXPECT_EQ(errorOfWriting(path, "text"), "");
  EXPECT_EQ(test::readFile(path), "text");
}

TEST_F(OutputFileTest, FailedRenameIsAnErrorAndLeavesNothing) {
  OutputFile file(name());
  std::filesystem::create_directory(name());
  EXPECT_THROW(file.commit(), OutputError);
  std::filesystem::remove(name());
}

}  // namespace
}  // namespace velto
