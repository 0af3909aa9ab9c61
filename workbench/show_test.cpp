// Runs `velto show` as a process: the text, the page and its well-formedness, and failures.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/process.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

using test::ProcessResult;

class ShowTest : public testing::Test {
 protected:
  // Runs `velto show` with the human model in a directory of its own.
  ProcessResult show(const std::vector<std::string>& arguments, const std::string& input) {
    std::vector<std::string> all = {"show", "-d", VELTO_SOURCE "/param-human", "--decoder", "vote"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return test::runProcess(VELTO_PROGRAM, all, work.path(), input);
  }

  static bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }

  const std::string sample = test::readFile(VELTO_SOURCE "/sample.txt");
  test::TempDir work;
};

TEST_F(ShowTest, TellsTheReadInOneSentence) {
  const ProcessResult shown = show({"-", "--columns", "120"}, sample);
  EXPECT_EQ(shown.status, 0) << shown.err;
  EXPECT_TRUE(holds(shown.out,
                    "Bases 91 to 702 code for a protein of 203 amino acids; one base is missing "
                    "before 297 and one is extra at 522."))
      << shown.out;
  EXPECT_FALSE(holds(shown.out, "\x1b")) << "no colours into a pipe";
  EXPECT_TRUE(holds(show({"-", "--colour", "always"}, sample).out, "\x1b[0;34m"));
}

TEST_F(ShowTest, FindsReadsByNameAndByNumber) {
  const std::string reads = ">a\nACGTACGT\n>b\nACG\n>a\n\n";
  EXPECT_TRUE(holds(show({"-", "--read", "b"}, reads).out, "The read has 3 bases;"));
  EXPECT_TRUE(holds(show({"-", "--number", "3"}, reads).out, "a\nThe read has no bases."));
  EXPECT_TRUE(holds(show({"-"}, reads).out, "The read has 8 bases;"));
  const ProcessResult none = show({"-", "--read", "c\x1b"}, reads);
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.err, "velto: -: there is no read named 'c\uFFFD'\n");
  EXPECT_EQ(show({"-", "--number", "4"}, reads).err, "velto: -: there is no read number 4\n");
}

TEST_F(ShowTest, WritesAPageThatIsWellFormed) {
  const std::string hostile = "<script>alert('1')</script>&\"\x01\xFF\xC3 <b>\x1b]0;x\x07";
  const std::string read = ">" + hostile + sample.substr(sample.find('\n'));
  const ProcessResult shown = show({"-", "-o", "page.html"}, read);
  ASSERT_EQ(shown.status, 0) << shown.err;
  EXPECT_EQ(shown.out, "");
  const std::string page = test::readFile(work.file("page.html"));
  EXPECT_FALSE(holds(page, "<script"));
  EXPECT_FALSE(holds(page, "<b>"));
  EXPECT_TRUE(holds(page, "<h1>&lt;script&gt;alert(&#39;1&#39;)&lt;/script&gt;&amp;&quot;"));
  EXPECT_TRUE(holds(page, "<td>&lt;b&gt;"));
  if (test::runShell("command -v python3", "/").status != 0) {
    GTEST_SKIP() << "python3 is not installed";
  }
  const ProcessResult parsed = test::runShell(
      "python3 -c 'import xml.dom.minidom as m; m.parse(\"page.html\")'", work.path());
  EXPECT_EQ(parsed.status, 0) << parsed.err;
}

TEST_F(ShowTest, TakesWhatARunOverTheFileLearnt) {
  const auto shown = [&](const std::vector<std::string>& more) {
    std::vector<std::string> all = {"show",      "-d",  VELTO_SOURCE "/param-human",
                                    "--columns", "200", "-"};
    all.insert(all.end(), more.begin(), more.end());
    return test::runProcess(VELTO_PROGRAM, all, work.path(), sample);
  };
  EXPECT_TRUE(holds(shown({}).out, "one is extra at"));
  test::writeFile(work.file("none.json"), R"({"calibration": {"reads": 100, "error_rates":
    {"insertion": 0, "deletion": 0, "substitution": 0}, "coding_share": 0.5,
    "truncated_share": 0.5, "qualities": []}})");
  const ProcessResult clean = shown({"--calibration", "none.json"});
  EXPECT_TRUE(holds(clean.out, "no base is missing or extra")) << clean.out << clean.err;
  EXPECT_EQ(shown({"--calibration", "missing.json"}).status, 1);
}

TEST_F(ShowTest, BadCommandLinesHaveStatus2) {
  EXPECT_EQ(show({}, "").status, 2);
  EXPECT_EQ(show({"-", "--read", "a", "--number", "2"}, "").status, 2);
  EXPECT_EQ(show({"-", "--number", "0"}, "").status, 2);
  EXPECT_EQ(show({"-", "--columns", "10"}, "").status, 2);
  EXPECT_EQ(show({"-", "-o", ""}, "").status, 2);
}

TEST_F(ShowTest, AnInputIsNotWrittenOver) {
  test::writeFile(work.file("in.fa"), sample);
  EXPECT_EQ(show({"in.fa", "-o", "in.fa"}, "").status, 2);
  EXPECT_EQ(test::readFile(work.file("in.fa")), sample);
}

}  // namespace
}  // namespace velto
