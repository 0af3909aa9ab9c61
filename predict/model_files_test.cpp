// Models of folders and of memory, and the decoders that they name.
#include <gtest/gtest.h>

#include <filesystem>

#include "model/model_file.h"
#include "model/read_class.h"
#include "tests/support/model_directory.h"
#include "tests/support/models.h"
#include "tests/support/temp_dir.h"
#include "tests/support/trained_models.h"
#include "velto/velto.h"

namespace velto {
namespace {

using Names = std::vector<std::string>;

class ModelFilesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    tables = species.model(random, test::PriorForm::kNearlyConstant, 196);
    test::writeModelDirectory(directory.path(), tables);
  }

  void writeCard(const std::string& text) { test::writeFile(directory.file("model.json"), text); }

  Names decoders() const { return Model(directory.path()).decoders(); }

  // The message of the error that asking for the decoders ends in, behind the card's path.
  std::string cardError(const std::string& card) {
    writeCard(card);
    try {
      return "no error but " + decoders().front();
    } catch (const ModelError& error) {
      EXPECT_EQ(error.file(), directory.file("model.json"));
      return std::string(error.what()).substr(error.file().size());
    }
  }

  // The texts of the folder's files by name.
  std::map<std::string, std::string> texts() const {
    std::map<std::string, std::string> texts;
    for (int i = 0; i < kReadClasses; ++i) {
      const ReadClass readClass = readClassAt(i);
      texts[readClass.parameterFile()] = parameterFileText(tables);
      texts[readClass.matrixFile()] = matrixFileText(tables.malkovChain);
    }
    return texts;
  }

  test::Random random{test::testSeed()};
  test::MadeUpSpecies species{random};
  ModelTables tables;
  test::TempDir directory;
};

TEST_F(ModelFilesTest, ModelWithoutACardHasTheDecodersThatItHasFilesFor) {
  EXPECT_EQ(decoders(), Names{"vote"});
}

TEST_F(ModelFilesTest, CardNamesTheDecoders) {
  writeCard(R"({"format": 1, "decoders": ["vote"], "default": "vote"})");
  EXPECT_EQ(decoders(), Names{"vote"});
}

TEST_F(ModelFilesTest, CardWithoutDecodersLeavesThemToTheFiles) {
  writeCard(R"({"format": 1})");
  EXPECT_EQ(decoders(), Names{"vote"});
}

TEST_F(ModelFilesTest, DamagedCardIsNamedWithItsLine) {
  EXPECT_EQ(cardError("{\"format\": 1,\n\"decoders\": [}"), ": line 2: is not JSON");
  EXPECT_EQ(cardError(""), ": line 1: is not JSON");
  EXPECT_EQ(cardError(R"({"seed": 1e999})"), ": holds a number that is too large");
  EXPECT_EQ(cardError("[1]"), ": is not a JSON object");
  EXPECT_EQ(cardError(R"({"decoders": "vote"})"), ": the member 'decoders' is of a wrong type");
  EXPECT_EQ(cardError(R"({"decoders": [1]})"), ": the member 'decoders' is of a wrong type");
  EXPECT_EQ(cardError(R"({"default": []})"), ": the member 'default' is of a wrong type");
}

TEST_F(ModelFilesTest, CardOfANewerFormatIsRefused) {
  const std::string newer = ": is of a newer model format than this program's 1";
  EXPECT_EQ(cardError(R"({"format": 2})"), newer);
  EXPECT_EQ(cardError(R"({"format": 4294967297})"), newer);
  EXPECT_EQ(cardError(R"({"format": 18446744073709551615})"), newer);
}

TEST_F(ModelFilesTest, FormatThatIsNoWholeNumberIsRefused) {
  for (const char* format : {"true", "1.5", "1e300", "\"1\""}) {
    EXPECT_EQ(cardError(std::string("{\"format\": ") + format + "}"),
              ": the member 'format' is of a wrong type");
  }
}

TEST_F(ModelFilesTest, CardOfMoreThan1MBIsRefused) {
  EXPECT_EQ(cardError(std::string((1 << 20) + 1, ' ')), ": is larger than 1 MB");
}

TEST_F(ModelFilesTest, FileBehindLinksThatLeadNowhereCannotBeOpened) {
  writeCard(R"({"decoders": ["hmm"]})");
  std::filesystem::create_symlink("hmm", directory.file("hmm"));
  try {
    Predictor(directory.path());
    FAIL();
  } catch (const ModelError& error) {
    EXPECT_EQ(error.file(), directory.file("hmm/posterior.txt"));
  }
}

TEST_F(ModelFilesTest, CardThatNamesAnUnknownDecoderIsRefused) {
  EXPECT_EQ(cardError(R"({"decoders": ["vote", "oracular"]})"), ": there is no decoder 'oracular'");
  EXPECT_EQ(cardError(R"({"default": "oracular"})"), ": there is no decoder 'oracular'");
}

TEST_F(ModelFilesTest, DefaultDecoderMustBeOneOfTheModels) {
  EXPECT_EQ(cardError(R"({"decoders": ["vote"], "default": "hmm"})"),
            ": the default decoder 'hmm' is not one of the model's");
}

TEST_F(ModelFilesTest, FolderWithoutFilesHasNoDecoder) {
  const test::TempDir empty;
  try {
    Model(empty.path()).decoders();
    FAIL() << "no error";
  } catch (const ModelError& error) {
    EXPECT_EQ(std::string(error.what()),
              empty.file("paramater32/paramL0G0-ex0.txt") +
                  ": cannot be opened, and no decoder has files there: is it a model directory?");
  }
}

TEST_F(ModelFilesTest, DecoderThatTheModelLacksIsNamed) {
  EXPECT_EQ(Predictor(directory.path(), "vote").decoder(), "vote");
  EXPECT_EQ(Predictor(directory.path()).decoder(), "vote");
  try {
    const Predictor predictor(directory.path(), "oracular");
    FAIL() << "no error";
  } catch (const ModelError& error) {
    EXPECT_STREQ(error.what(), "the model has no decoder 'oracular'");
  }
}

TEST_F(ModelFilesTest, ModelInMemoryPredictsAsThatOfItsFolder) {
  const Predictor ofFolder(directory.path());
  const Predictor ofMemory{Model(texts())};
  Workspace workspace;
  int coding = 0;
  for (int i = 0; i < 20; ++i) {
    const std::string read = species.read(random, 700, 0.01);
    const Prediction wanted = ofFolder.predict(read, workspace);
    const Prediction found = ofMemory.predict(read, workspace);
    EXPECT_EQ(found.score, wanted.score);
    EXPECT_EQ(found.frame, wanted.frame);
    coding += found.isCoding();
  }
  EXPECT_GT(coding, 0);
}

TEST_F(ModelFilesTest, MissingAndDamagedTextsInMemoryAreNamed) {
  auto missing = texts();
  missing.erase("paramater/matrixL2G3-ex0.txt");
  EXPECT_THROW(Predictor{Model(missing)}, ModelError);
  auto damaged = texts();
  damaged["paramater/matrixL2G3-ex0.txt"] = "1,2,3,4\n";
  try {
    const Predictor predictor{Model(damaged)};
    FAIL() << "no error";
  } catch (const ModelError& error) {
    EXPECT_STREQ(error.what(), "paramater/matrixL2G3-ex0.txt: line 2: the file ends early");
    EXPECT_EQ(error.line(), 2);
  }
}

}  // namespace
}  // namespace velto
