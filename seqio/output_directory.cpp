#include "seqio/output_directory.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "seqio/output_file.h"

namespace velto {
namespace {

namespace fs = std::filesystem;

std::string fullName(const std::string& path) {
  std::error_code error;
  fs::path full = fs::weakly_canonical(fs::absolute(path, error), error);
  if (error || path.empty()) throw OutputError(path, "cannot make folder", ENOENT);
  if (!full.has_filename()) full = full.parent_path();
  return full.string();
}

}  // namespace

OutputDirectory::OutputDirectory(const std::string& path)
    : target_(fullName(path)), temporary_(target_) {
  checkTarget();
  if (mkdir(temporary_.name().c_str(), 0777) != 0) {
    throw OutputError(path, "cannot make folder", errno);
  }
}

void OutputDirectory::write(const std::string& name, const std::string& text) {
  makeFolders(name);
  const std::string file = path() + "/" + name;
  contents_.emplace(file, file);
  OutputFile output(file, OutputFile::Format::kPlain);
  output.write(text);
  output.commit();
}

void OutputDirectory::makeFolders(const std::string& name) {
  for (std::size_t slash = 0; (slash = name.find('/', slash)) != name.npos; ++slash) {
    const std::string folder = path() + "/" + name.substr(0, slash);
    contents_.emplace(folder, folder);
    if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) {
      throw OutputError(folder, "cannot make folder", errno);
    }
  }
}

void OutputDirectory::commit() {
  checkTarget();
  if (std::rename(path().c_str(), target_.c_str()) != 0) {
    throw OutputError(target_, "cannot rename to this name", errno);
  }
}

void OutputDirectory::checkTarget() const {
  std::error_code error;
  const fs::file_status status = fs::status(target_, error);
  if (!fs::exists(status)) return;
  if (!fs::is_directory(status)) throw OutputError(target_, "cannot replace", ENOTDIR);
  const bool empty = fs::is_empty(target_, error);
  if (error) throw OutputError(target_, "cannot read", error.value());
  if (!empty) throw OutputError(target_, "will not replace", ENOTEMPTY);
}

}  // namespace velto
