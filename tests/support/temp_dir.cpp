#include "tests/support/temp_dir.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace velto::test {

TempDir::TempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "velto-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot create " + pattern);
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::size_t TempDir::entries() const {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << "cannot read " << path;
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

void writeFile(const std::string& path, const std::string& text) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream out(path, std::ios::binary);
  out << text;
  EXPECT_TRUE(out.good()) << "cannot write " << path;
}

bool fileExists(const std::string& path) { return std::filesystem::exists(path); }

}  // namespace velto::test
