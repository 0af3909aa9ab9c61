// Runs `velto models`, and -d with names of installed models, as processes.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/process.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

namespace fs = std::filesystem;
using test::ProcessResult;

// A folder with the human model where programs look for it, and another model beside it.
class ModelsTest : public testing::Test {
 protected:
  ModelsTest() {
    fs::create_directory_symlink(VELTO_SOURCE "/param-human", work.file("param-human"));
    fs::create_directories(work.file("models/empty"));
    fs::copy(VELTO_SOURCE "/param-human", work.file("models/other"), fs::copy_options::recursive);
    test::writeFile(work.file("models/other/model.json"),
                    R"({"coding": {"accepted": 7}, "default": "vote",
                        "judged": {"vote": {"est": {"frame_f1": 0.5, "noncoding_called": 0.25},
                                            "mild": {"frame_f1": 0.625}}}})");
  }

  ProcessResult run(const std::vector<std::string>& arguments) {
    return test::runProcess(VELTO_PROGRAM, arguments, work.path());
  }

  test::TempDir work;
};

TEST_F(ModelsTest, ListsTheModelsThatHaveACardWithItsFigures) {
  const ProcessResult listed = run({"models"});
  EXPECT_EQ(listed.status, 0) << listed.err;
  EXPECT_EQ(listed.out.rfind("model  decoder  coding  noncoding  f1_est  f1_mild  ", 0), 0U);
  EXPECT_NE(listed.out.find("\nhuman  hmm "), std::string::npos) << listed.out;
  EXPECT_NE(
      listed.out.find("\nother  vote     7       -          0.500   0.625    -         0.250   "
                      "   ./models/other\nother  hmm      7       -          -       "),
      std::string::npos)
      << listed.out;
  EXPECT_EQ(listed.out.find("empty"), std::string::npos);
}

TEST_F(ModelsTest, SaysSoWhereThereAreNone) {
  fs::create_directory(work.file("elsewhere"));
  const ProcessResult listed = test::runProcess(VELTO_PROGRAM, {"models"}, work.file("elsewhere"));
  EXPECT_EQ(listed.status, 0);
  const bool hasNone = listed.out.find('\n') + 1 == listed.out.size();  // the header alone
  EXPECT_EQ(listed.err, hasNone ? "velto: no model is installed; -d takes a directory too\n" : "");
}

TEST_F(ModelsTest, NamesStandForInstalledModelsWhereverAModelIsAskedFor) {
  EXPECT_EQ(run({"check-model", "other"}).out.rfind("./models/other: ", 0), 0U);
  EXPECT_EQ(run({"check-model", "human"}).out.rfind("./param-human: ", 0), 0U);
  test::writeFile(work.file("read.fa"), ">a\nACGTACGTACGTACGTACGTACGTACGTACGTACGT\n");
  for (const char* command : {"scan", "show"}) {
    EXPECT_EQ(run({command, "-d", "other", "read.fa"}).status, 0) << command;
    EXPECT_EQ(run({command, "-d", "nosuch", "read.fa"}).status, 2) << command;
  }
  const ProcessResult unknown =
      run({"evaluate", "-d", "human", "--compare", "nosuch", "--coding", "read.fa"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_NE(unknown.err.find("'nosuch' is no model directory and no installed model"),
            std::string::npos)
      << unknown.err;
}

TEST_F(ModelsTest, ASlashMakesAPathOfAName) {
  EXPECT_EQ(run({"check-model", "./other"}).status, 1);
  fs::copy(work.file("models/other"), work.file("other"), fs::copy_options::recursive);
  EXPECT_EQ(run({"check-model", "./other"}).out.rfind("./other: ", 0), 0U);
  EXPECT_EQ(run({"check-model", "other"}).out.rfind("./models/other: ", 0), 0U);
}

}  // namespace
}  // namespace velto
