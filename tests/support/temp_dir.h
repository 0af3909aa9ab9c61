// A directory of its own for one test, and whole files as strings.
#pragma once

#include <cstddef>
#include <string>

namespace velto::test {

// Made on construction, removed with all that is in it on destruction.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }
  // Path of a file in the directory.
  std::string file(const std::string& name) const { return path_ + "/" + name; }
  // How many files and directories are in it.
  std::size_t entries() const;

 private:
  std::string path_;
};

// The bytes of a file; a file that cannot be read fails the running test.
std::string readFile(const std::string& path);

// Writes a file and the directories that lead to it.
void writeFile(const std::string& path, const std::string& text);

bool fileExists(const std::string& path);

}  // namespace velto::test
