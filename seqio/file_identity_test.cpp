#include "seqio/file_identity.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "seqio/test_files.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

namespace fs = std::filesystem;

class FileIdentityTest : public testing::Test {
 protected:
  FileIdentityTest() {
    store(in_, ">a\nACGT\n");
    fs::create_directory(folder_.file("sub"));
  }

  // What clashOf() says while a descriptor stands for another file or stream.
  static std::string clashWhile(int descriptor, int replacement,
                                const std::vector<std::string>& inputs,
                                const std::vector<std::string>& outputs) {
    const int saved = dup(descriptor);
    dup2(replacement, descriptor);
    const std::string clash = clashOf(inputs, outputs);
    dup2(saved, descriptor);
    close(saved);
    return clash;
  }

  test::TempDir folder_;
  const std::string in_ = folder_.file("in");
  const std::string out_ = folder_.file("out");
};

TEST_F(FileIdentityTest, DifferentFilesDoNotClash) {
  store(out_, "");
  EXPECT_EQ(clashOf({in_, in_, folder_.file("none"), folder_.file("none")},
                    {out_, folder_.file("new"), folder_.file("sub/new")}),
            "");
}

TEST_F(FileIdentityTest, OutputThatIsAnInputIsRefusedByAnyOfItsNames) {
  fs::create_symlink("in", folder_.file("link"));
  fs::create_hard_link(in_, folder_.file("hard"));
  const std::string dotted = folder_.file("sub/../in");
  for (const std::string& output : {in_, folder_.file("link"), folder_.file("hard"), dotted}) {
    EXPECT_EQ(clashOf({"-", in_}, {out_, output}),
              "the output '" + output + "' would overwrite the input '" + in_ + "'");
  }
}

TEST_F(FileIdentityTest, RedirectedInputIsTheFileBehindIt) {
  const int file = open(in_.c_str(), O_RDONLY);
  for (const std::string& output : {in_, "/dev/fd/" + std::to_string(file)}) {
    EXPECT_EQ(clashWhile(STDIN_FILENO, file, {"-"}, {output}),
              "the output '" + output + "' would overwrite the input standard input");
  }
  EXPECT_EQ(clashWhile(STDIN_FILENO, file, {"-", "-"}, {}), "standard input can be read only once");
  close(file);
}

TEST_F(FileIdentityTest, TwoOutputsToOneFileAreRefusedBeforeItIsThere) {
  fs::create_symlink("out", folder_.file("dangling"));
  fs::create_symlink("sub", folder_.file("linked_folder"));
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {out_, out_},
      {out_, folder_.file("sub/../out")},
      {out_, folder_.file("dangling")},
      {folder_.file("sub/new"), folder_.file("linked_folder/new")}};
  for (const auto& [first, second] : pairs) {
    EXPECT_EQ(clashOf({in_}, {first, second}), "two outputs go to '" + second + "'");
  }
}

TEST_F(FileIdentityTest, TwoOutputsToOneStreamAreRefused) {
  const std::string pipe = folder_.file("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(clashOf({}, {pipe, pipe}), "two outputs go to '" + pipe + "'");
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  EXPECT_EQ(clashWhile(STDOUT_FILENO, ends[1], {}, {"-", out_}), "");
  EXPECT_EQ(clashWhile(STDOUT_FILENO, ends[1], {}, {"/dev/stdout", "-"}),
            "two outputs go to standard output");
  close(ends[0]);
  close(ends[1]);
}

TEST_F(FileIdentityTest, NullDeviceTakesEverything) {
  EXPECT_EQ(clashOf({"/dev/null", "/dev/null"}, {"/dev/null", "/dev/null"}), "");
}

TEST_F(FileIdentityTest, StreamIsReadOnlyOnce) {
  const std::string pipe = folder_.file("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(clashOf({pipe, pipe}, {}), "'" + pipe + "' can be read only once");
  const int ends = open(pipe.c_str(), O_RDWR);
  EXPECT_EQ(clashWhile(STDIN_FILENO, ends, {"-", in_, "-"}, {}),
            "standard input can be read only once");
  close(ends);
}

TEST_F(FileIdentityTest, ResolvedPathIsThatOfTheFileAtTheEndOfAllLinks) {
  const std::string real = fs::canonical(folder_.path()).string();
  fs::create_symlink("sub/../new", folder_.file("link"));
  EXPECT_EQ(resolvedPath(folder_.file("link")), real + "/new");
  EXPECT_EQ(resolvedPath(folder_.file("sub/x")), real + "/sub/x");
  EXPECT_EQ(resolvedPath("none/such"), "none/such");
  EXPECT_EQ(resolvedPath("new"), fs::current_path().string() + "/new");
}

}  // namespace
}  // namespace velto
