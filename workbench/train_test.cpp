// Runs the command as a process, mostly on inputs that fail: a training of the vote is too slow for
// a test.
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include "tests/support/process.h"
#include "tests/support/temp_dir.h"

namespace velto {
namespace {

// Transcripts in which TAA and TAG are the commonest of codons and TGA alone is a stop codon.
class CiliateSpecies {
 public:
  std::string codingTranscripts(int count) {
    std::string records;
    for (int i = 0; i < count; ++i) {
      const std::string before = bases(60 + below(60));
      std::string region = "ATG";
      for (int codons = 100 + below(80); codons > 0; --codons) region += codon();
      region += "TGA";
      const std::size_t first = before.size() + 1;
      records += name() + " CDS=" + std::to_string(first) + "-" +
                 std::to_string(before.size() + region.size()) + "\n" + before + region +
                 bases(60 + below(60)) + "\n";
    }
    return records;
  }

  std::string noncodingTranscripts(int count) {
    std::string records;
    for (int i = 0; i < count; ++i) records += name() + "\n" + bases(400 + below(300)) + "\n";
    return records;
  }

 private:
  int below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  std::string name() { return ">t" + std::to_string(next_++); }
  std::string bases(int count) {
    std::string letters;
    for (; count > 0; --count) letters += "ACGT"[below(4)];
    return letters;
  }
  std::string codon() {
    if (below(2) == 0) {
      return std::array{"TAA", "TAG", "AAA", "GAA", "AAT", "ATT", "GAT", "AGA"}.at(
          static_cast<std::size_t>(below(8)));
    }
    const std::string any = bases(3);
    return any == "TGA" ? "TGT" : any;
  }

  std::mt19937 random_{6};
  int next_ = 0;
};

std::size_t lines(const std::string& text, const std::string& word) {
  std::size_t count = 0;
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
    ++count;
  return count;
}

class Train : public testing::Test {
 protected:
  void SetUp() override {
    // CC ATG AAA GGG TAG TT, one with a stop inside, and a non-coding record.
    write("coding.fa", ">t CDS=3-14 chr1\nCCATGAAAGGGTAGTT\n>u CDS=1-9\nATGTAATAG\n");
    write("noncoding.fa", ">n chr1\nACGTACGT\n");
  }

  void write(const std::string& name, const std::string& text) {
    test::writeFile(directory_.file(name), text);
  }

  std::string read(const std::string& name) const { return test::readFile(directory_.file(name)); }

  bool exists(const std::string& name) const { return test::fileExists(directory_.file(name)); }

  // Runs `velto train` with these arguments; returns its status and keeps its messages.
  int run(const std::string& arguments) { return velto("train " + arguments); }

  // The arguments are those of the shell.
  int velto(const std::string& arguments) {
    const test::ProcessResult result =
        test::runShell("'" VELTO_PROGRAM "' " + arguments, directory_.path());
    errors_ = result.err;
    return result.status;
  }

  test::TempDir directory_;
  std::string errors_;
};

TEST_F(Train, TooLittleDataIsSaidAtOnceAndLeavesNothing) {
  EXPECT_EQ(run("--coding coding.fa --noncoding noncoding.fa -o model"), 1);
  EXPECT_NE(errors_.find("velto: too little data: 1 coding transcripts, at least 50 are needed"),
            std::string::npos)
      << errors_;
  EXPECT_EQ(directory_.entries(), 2U);  // the two inputs
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

// The default model is damaged, which costs the comparison only.
TEST_F(Train, ModelOfAnotherGeneticCodeReadsThroughWhatStopsElsewhere) {
  write("param-human/model.json", "{");
  CiliateSpecies species;
  write("coding.fa", species.codingTranscripts(60));
  write("noncoding.fa", species.noncodingTranscripts(60));
  const std::string lists = "--decoder hmm --quick --coding coding.fa --noncoding noncoding.fa ";
  EXPECT_EQ(run(lists + "-o model"), 1);
  EXPECT_EQ(errors_.rfind("velto: 60 of 60 coding records refused:\n"
                          "  60 stop codon inside the coding region\n",
                          0),
            0U)
      << errors_;
  ASSERT_EQ(run(lists + "--code 6 -o model"), 0) << errors_;
  EXPECT_EQ(lines(errors_, "not compared with the default one: ./param-human/model.json: "), 1U)
      << errors_;

  write("new.fa", species.codingTranscripts(50));
  ASSERT_EQ(velto("scan --quiet --strand plus -d model --code 6 -o found.tsv new.fa"), 0)
      << errors_;
  EXPECT_GE(lines(read("found.tsv"), "\tcomplete\t"), 45U) << read("found.tsv");
  ASSERT_EQ(velto("scan --quiet --strand plus -d model -o found.tsv new.fa"), 0) << errors_;
  EXPECT_GE(lines(read("found.tsv"), "\tinterrupted\t"), 45U) << read("found.tsv");
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
  EXPECT_NE(read("coding.fa"), "");
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
  write("model/kept", "text");
  EXPECT_EQ(run("--coding coding.fa --noncoding noncoding.fa -o model"), 1);
  EXPECT_TRUE(exists("model/kept"));
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
