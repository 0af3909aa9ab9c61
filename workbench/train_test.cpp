// Runs the command as a process on inputs that fail; a whole training is too slow for a test.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace velto {
namespace {

namespace fs = std::filesystem;

class Train : public testing::Test {
 protected:
  void SetUp() override {
    directory_ = fs::path(testing::TempDir()) / ("train_test." + std::to_string(getpid()));
    fs::create_directory(directory_);
    // CC ATG AAA GGG TAG TT, one with a stop inside, and a non-coding record.
    write("coding.fa", ">t CDS=3-14 chr1\nCCATGAAAGGGTAGTT\n>u CDS=1-9\nATGTAATAG\n");
    write("noncoding.fa", ">n chr1\nACGTACGT\n");
  }
  void TearDown() override { fs::remove_all(directory_); }

  void write(const std::string& name, const std::string& text) {
    std::ofstream(directory_ / name) << text;
  }

  // Runs `velto train` with these arguments; returns its status and keeps its messages.
  int run(const std::string& arguments) {
    const std::string command = "cd '" + directory_.string() + "' && '" VELTO_PROGRAM "' train " +
                                arguments + " > stdout 2> stderr";
    const int raw = std::system(command.c_str());
    std::ifstream in(directory_ / "stderr");
    errors_.assign(std::istreambuf_iterator<char>(in), {});
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  }

  std::size_t entries() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory_), fs::directory_iterator()));
  }

  fs::path directory_;
  std::string errors_;
};

TEST_F(Train, TooLittleDataIsSaidAtOnceAndLeavesNothing) {
  EXPECT_EQ(run("--coding coding.fa --noncoding noncoding.fa -o model"), 1);
  EXPECT_NE(errors_.find("velto: too little data: 1 coding transcripts, at least 50 are needed"),
            std::string::npos)
      << errors_;
  EXPECT_EQ(entries(), 4U);  // the two inputs and the two streams
}

TEST_F(Train, EveryDecoderNeedsFiftyTranscriptsOfEitherKind) {
  std::string mrnas;
  for (int i = 0; i < 50; ++i) mrnas += ">t" + std::to_string(i) + " CDS=1-6\nATGTAG\n";
  write("many.fa", mrnas);
  for (const char* decoder : {"vote", "hmm"}) {
    const std::string chosen = std::string("--decoder ") + decoder + " -o model ";
    EXPECT_EQ(run(chosen + "--coding coding.fa --noncoding noncoding.fa"), 1);
    EXPECT_NE(errors_.find("1 coding transcripts, at least 50"), std::string::npos) << errors_;
    EXPECT_EQ(run(chosen + "--coding many.fa --noncoding noncoding.fa"), 1);
    EXPECT_NE(errors_.find("1 non-coding transcripts, at least 50"), std::string::npos) << errors_;
  }
}

TEST_F(Train, TranscriptsAreReadByTheGeneticCode) {
  write("ciliate.fa", ">t CDS=1-9\nATGTAATGA\n");
  EXPECT_EQ(run("--code 6 --coding ciliate.fa --noncoding noncoding.fa -o model"), 1);
  EXPECT_EQ(errors_.find("refused"), std::string::npos) << errors_;
  EXPECT_NE(errors_.find("too little data: 1 coding"), std::string::npos) << errors_;
}

TEST_F(Train, StopCodonsThatDecodersDoNotKnowAreAnError) {
  EXPECT_EQ(run("--code 2 --coding coding.fa --noncoding noncoding.fa -o model"), 2);
  EXPECT_NE(errors_.find("stop codon AGA"), std::string::npos) << errors_;
  for (const char* code : {"4", "28"}) {  // TGA for Trp; all three for amino acids too
    EXPECT_EQ(run("--decoder vote --coding coding.fa --noncoding noncoding.fa -o model --code " +
                  std::string(code)),
              2);
    EXPECT_NE(errors_.find("the decoder vote takes"), std::string::npos) << errors_;
  }
}

TEST_F(Train, HeldBackTranscriptsDoNotReplaceAnInput) {
  EXPECT_EQ(run("--coding coding.fa --noncoding noncoding.fa -o model --held-back coding.fa"), 2);
  EXPECT_TRUE(fs::file_size(directory_ / "coding.fa") > 0);
}

TEST_F(Train, RefusedTranscriptsAreCountedByReason) {
  run("--coding coding.fa --noncoding noncoding.fa -o model");
  EXPECT_EQ(errors_.rfind("velto: 1 of 2 coding records refused:\n"
                          "  1 stop codon inside the coding region\n",
                          0),
            0U)
      << errors_;
}

TEST_F(Train, CommonReasonsOfRefusalComeWithAHint) {
  write("cut.fa", ">t CDS=1-6\nATGAAAGGG\n");
  run("--coding cut.fa --noncoding noncoding.fa -o model");
  EXPECT_NE(errors_.find("gffread --adj-stop"), std::string::npos) << errors_;
  write("bare.fa", ">t\nATGAAAGGG\n");
  run("--coding bare.fa --noncoding noncoding.fa -o model");
  EXPECT_NE(errors_.find("pc_transcripts.fa"), std::string::npos) << errors_;
  EXPECT_EQ(errors_.find("--adj-stop"), std::string::npos) << errors_;
}

TEST_F(Train, MissingNoncodingTranscriptsSayWhereSuchComeFrom) {
  EXPECT_EQ(run("--coding coding.fa -o model"), 2);
  EXPECT_NE(errors_.find("lncRNA_transcripts"), std::string::npos) << errors_;
}

TEST_F(Train, MissingFileAndNonEmptyOutputFail) {
  EXPECT_EQ(run("--coding missing.fa --noncoding noncoding.fa -o model"), 1);
  EXPECT_EQ(errors_.rfind("velto: missing.fa: ", 0), 0U) << errors_;
  fs::create_directory(directory_ / "model");
  write("model/kept", "text");
  EXPECT_EQ(run("--coding coding.fa --noncoding noncoding.fa -o model"), 1);
  EXPECT_TRUE(fs::exists(directory_ / "model" / "kept"));
}

TEST_F(Train, WrongCommandLinesAreUsageErrors) {
  for (const char* arguments :
       {"", "--coding coding.fa -o model", "--coding coding.fa --noncoding noncoding.fa",
        "--coding coding.fa --noncoding noncoding.fa -o model -t 0",
        "--coding coding.fa --noncoding noncoding.fa -o model --decoder none",
        "--coding coding.fa --noncoding noncoding.fa -o ''", "--coding - --noncoding - -o model",
        "--coding coding.fa --noncoding noncoding.fa -o model --seed x"}) {
    EXPECT_EQ(run(arguments), 2) << arguments;
  }
}

}  // namespace
}  // namespace velto
