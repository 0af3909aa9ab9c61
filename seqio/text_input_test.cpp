#include "seqio/text_input.h"

#include <gtest/gtest.h>

#include "seqio/test_files.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

class TextInputTest : public testing::Test {
 protected:
  // The lines of a file of these bytes, and the message of the error that ends them.
  std::vector<std::string> lines(const std::string& bytes) {
    store(name(), bytes);
    std::vector<std::string> lines;
    try {
      TextInput input(name());
      for (std::string line; std::getline(input.stream(), line);) lines.push_back(line);
    } catch (const InputError& error) {
      lines.push_back(error.what());
    }
    return lines;
  }
  std::string name() const { return folder_.file("text"); }
  test::TempDir folder_;
};

using Lines = std::vector<std::string>;

TEST_F(TextInputTest, PlainGzipAndBgzfGiveTheSameLines) {
  const std::string text = "one\n\ntwo\tthree";
  const Lines expected = {"one", "", "two\tthree"};
  EXPECT_EQ(lines(text), expected);
  EXPECT_EQ(lines(gzip("one\n\nt") + gzip("wo\tthree")), expected);
  EXPECT_EQ(lines(bgzfBlock(text) + bgzfBlock("")), expected);
  EXPECT_EQ(lines(""), Lines{});
}

// A line of 100,000 bytes is longer than the buffer.
TEST_F(TextInputTest, LinesOfAnyLengthAreWhole) {
  const std::string line(100000, 'x');
  EXPECT_EQ(lines(line + "\n" + line), (Lines{line, line}));
}

TEST_F(TextInputTest, DamageIsAnErrorWithItsLine) {
  EXPECT_EQ(lines(bgzfBlock("one\ntwo\nth")).back(),
            name() + ": line 3: truncated: the BGZF end-of-file block is missing");
  const std::string packed = gzip("one\ntwo\n");
  EXPECT_NE(lines(packed.substr(0, packed.size() - 3)).back().find(": line 1: gzip data"),
            std::string::npos);
}

TEST_F(TextInputTest, FileThatCannotBeOpenedIsAnError) {
  EXPECT_THROW(TextInput(folder_.file("none")), InputError);
  EXPECT_THROW(TextInput(folder_.path()), InputError);
}

}  // namespace
}  // namespace velto
