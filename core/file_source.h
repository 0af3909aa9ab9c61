// The files of a model by their names, wherever they are kept.
#pragma once

#include <istream>
#include <map>
#include <memory>
#include <string>

namespace velto {

// Constant after construction; any number of threads may use one.
class FileSource {
 public:
  virtual ~FileSource() = default;

  // Whether there is a file `name`; folders in it are separated by '/'.
  virtual bool has(const std::string& name) const = 0;

  // The bytes of the file from its begin. Throws ModelError for one that cannot be opened.
  virtual std::unique_ptr<std::istream> open(const std::string& name) const = 0;

  // The file as a message names it.
  virtual std::string path(const std::string& name) const = 0;
};

// The files below a folder.
class FolderSource : public FileSource {
 public:
  explicit FolderSource(std::string folder) : folder_(std::move(folder)) {}

  bool has(const std::string& name) const override;
  std::unique_ptr<std::istream> open(const std::string& name) const override;
  std::string path(const std::string& name) const override { return folder_ + '/' + name; }

 private:
  std::string folder_;
};

// Texts in memory.
class MemorySource : public FileSource {
 public:
  explicit MemorySource(std::map<std::string, std::string> texts) : texts_(std::move(texts)) {}

  bool has(const std::string& name) const override { return texts_.contains(name); }
  std::unique_ptr<std::istream> open(const std::string& name) const override;
  std::string path(const std::string& name) const override { return name; }

 private:
  std::map<std::string, std::string> texts_;  // [name]
};

}  // namespace velto
