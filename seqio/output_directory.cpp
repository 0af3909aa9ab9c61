#include "seqio/output_directory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

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

std::string besides(const std::string& target, const char* suffix) {
  return target + suffix + std::to_string(getpid());
}

}  // namespace

OutputDirectory::OutputDirectory(const std::string& path, bool replace)
    : target_(fullName(path)), temporary_(besides(target_, ".tmp-")), replace_(replace) {
  checkTarget();
  if (mkdir(temporary_.c_str(), 0777) != 0) {
    throw OutputError(path, "cannot make " + temporary_, errno);
  }
}

OutputDirectory::~OutputDirectory() {
  std::error_code ignored;
  if (pending_) fs::remove_all(temporary_, ignored);
}

void OutputDirectory::commit() {
  checkTarget();
  std::error_code ignored;
  if (replace_ && fs::exists(target_, ignored)) {
    replaceTarget();
  } else {
    renameOrThrow(temporary_, target_);
  }
  pending_ = false;
}

void OutputDirectory::checkTarget() const {
  std::error_code error;
  const fs::file_status status = fs::status(target_, error);
  if (!fs::exists(status)) return;
  if (!fs::is_directory(status)) throw OutputError(target_, "cannot replace", ENOTDIR);
  const bool empty = fs::is_empty(target_, error);
  if (error) throw OutputError(target_, "cannot read", error.value());
  if (!empty && !replace_) throw OutputError(target_, "will not replace", ENOTEMPTY);
}

void OutputDirectory::replaceTarget() {
  const std::string old = besides(target_, ".old-");
  renameOrThrow(target_, old);
  try {
    renameOrThrow(temporary_, target_);
  } catch (const OutputError&) {
    std::rename(old.c_str(), target_.c_str());
    throw;
  }
  std::error_code ignored;
  fs::remove_all(old, ignored);
}

void OutputDirectory::renameOrThrow(const std::string& from, const std::string& to) const {
  if (std::rename(from.c_str(), to.c_str()) != 0) {
    throw OutputError(target_, "cannot rename to this name", errno);
  }
}

}  // namespace velto
