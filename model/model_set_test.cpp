#include "model/model_set.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/model_directory.h"
#include "tests/support/models.h"
#include "tests/support/temp_dir.h"
#include "velto/velto.h"

namespace velto {
namespace {

class ModelSetTest : public testing::Test {
 protected:
  void SetUp() override {
    test::Random random(1);
    test::writeModelDirectory(directory.path(), test::usualRandomModel(random));
  }

  std::string parameters(int index) const {
    return readClassAt(index).parameterPath(directory.path());
  }
  std::string matrix(int index) const { return readClassAt(index).matrixPath(directory.path()); }

  // Replaces the given line (1-based) of a file; an empty text takes the line away.
  static void replaceLine(const std::string& file, int line, const std::string& text) {
    std::string content = test::readFile(file);
    size_t begin = 0;
    for (int i = 1; i < line; ++i) begin = content.find('\n', begin) + 1;
    const size_t end = content.find('\n', begin) + 1;
    content.replace(begin, end - begin, text.empty() ? "" : text + "\n");
    test::writeFile(file, content);
  }

  std::string message() const {
    try {
      const ModelSet models{FolderSource(directory.path())};
      return "";
    } catch (const ModelError& error) {
      return error.what();
    }
  }

  test::TempDir directory;
};

TEST_F(ModelSetTest, LoadsAllModelsWithTheirWindows) {
  const ModelSet models{FolderSource(directory.path())};
  for (int i = 0; i < kReadClasses; ++i) {
    const ModelView view = models.model(readClassAt(i)).view();
    EXPECT_EQ(view.windowWidth, i < 4 ? 96 : 196);
    EXPECT_EQ(view.tables.fh.size(), 500U);
  }
}

TEST_F(ModelSetTest, MissingFileIsNamed) {
  std::filesystem::remove(matrix(3));
  EXPECT_EQ(message(), matrix(3) + ": cannot be opened");
}

TEST_F(ModelSetTest, DirectoryInPlaceOfAFileIsNamed) {
  std::filesystem::remove(matrix(3));
  std::filesystem::create_directory(matrix(3));
  EXPECT_EQ(message(), matrix(3) + ": is a directory");
}

TEST_F(ModelSetTest, MissingLineIsNamed) {
  replaceLine(parameters(0), 3784, "");
  EXPECT_EQ(message(), parameters(0) + ": line 3785: the file ends early");
}

TEST_F(ModelSetTest, LineTooManyIsNamed) {
  test::writeFile(matrix(2), test::readFile(matrix(2)) + "0,0,0,0\n");
  EXPECT_EQ(message(), matrix(2) + ": line 5: there are more lines than the format has");
}

TEST_F(ModelSetTest, FieldTooManyIsNamed) {
  replaceLine(parameters(7), 501, "1,0.5,3");
  EXPECT_EQ(message(), parameters(7) + ": line 501: there are more fields than the format has");
}

TEST_F(ModelSetTest, IndexOutOfRangeIsNamed) {
  replaceLine(parameters(15), 500, "2,21,0,0,0,0.1");
  EXPECT_EQ(message(), parameters(15) + ": line 500: an index points outside its table");
}

TEST_F(ModelSetTest, UnknownKindIsNamed) {
  replaceLine(parameters(1), 17, "1,0,0,0,0,0.1");
  EXPECT_EQ(message(),
            parameters(1) + ": line 17: a hypothesis of a kind that never votes: not 0, 2 or 3");
}

TEST_F(ModelSetTest, NumberThatIsNotFiniteIsNamed) {
  replaceLine(matrix(4), 2, "0,nan,0,0");
  EXPECT_EQ(message(), matrix(4) + ": line 2: a number is not finite");
}

}  // namespace
}  // namespace velto
