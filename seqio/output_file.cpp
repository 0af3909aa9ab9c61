#include "seqio/output_file.h"

#include <fcntl.h>
#include <htslib/bgzf.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "seqio/file_identity.h"

namespace velto {
namespace {

constexpr std::size_t kBlockBytes = BGZF_BLOCK_SIZE;  // largest that one BGZF block takes
constexpr int kDefaultLevel = -1;                     // of compression
constexpr mode_t kNewMode = 0666;                     // less the umask

bool endsWithGz(const std::string& path) {
  return path.size() >= 3 && path.compare(path.size() - 3, 3, ".gz") == 0;
}

// What must hold of an existing file before it is replaced: this process could write it. To the
// system's administrator everything is writable, hence the look at the mode.
bool mayBeWritten(const std::string& path, const struct stat& status) {
  constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
  if (access(path.c_str(), W_OK) != 0) return false;
  errno = EACCES;
  return (status.st_mode & kAnyWrite) != 0;
}

}  // namespace

OutputFile::OutputFile(std::string path, Format format)
    : path_(std::move(path)),
      compressed_(format == Format::kGzip || (format == Format::kByName && endsWithGz(path_))) {
  open();
  if (descriptor_ < 0) throwFor("cannot open");
  block_.reserve(kBlockBytes);
}

OutputFile::~OutputFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

void OutputFile::write(std::string_view text) {
  while (!text.empty()) {
    const std::size_t part = std::min(text.size(), kBlockBytes - block_.size());
    block_.append(text.substr(0, part));
    text.remove_prefix(part);
    if (block_.size() == kBlockBytes) flushBlock();
  }
}

void OutputFile::finish() {
  if (!block_.empty()) flushBlock();
  if (compressed_) writeCompressed({});  // an empty block marks the end of a BGZF file
  if (close(std::exchange(descriptor_, -1)) != 0) throwFor("cannot write");
}

void OutputFile::commit() {
  if (descriptor_ >= 0) finish();
  if (!isDirect()) committed_ = rename();
}

void OutputFile::takeBack() noexcept {
  if (committed_ == Committed::kNew) ::rename(target_.c_str(), temporary_->name().c_str());
  if (committed_ == Committed::kExchanged) exchangeNames();
}

// The file that is replaced becomes the temporary one, and goes with it.
OutputFile::Committed OutputFile::rename() {
  struct stat replaced;
  if (exchangeNames()) {
    if (lstat(temporary_->name().c_str(), &replaced) == 0 && S_ISREG(replaced.st_mode)) {
      return Committed::kExchanged;
    }
    exchangeNames();
    errno = EEXIST;
    throwFor("cannot rename to this name");
  }
  const bool isNew = errno == ENOENT;
  if (::rename(temporary_->name().c_str(), target_.c_str()) != 0) {
    throwFor("cannot rename to this name");
  }
  return isNew ? Committed::kNew : Committed::kReplaced;
}

// False, with errno set, if there is no file of the target's name or the file system cannot do it.
bool OutputFile::exchangeNames() const noexcept {
#ifdef RENAME_EXCHANGE
  return renameat2(AT_FDCWD, temporary_->name().c_str(), AT_FDCWD, target_.c_str(),
                   RENAME_EXCHANGE) == 0;
#else
  errno = ENOSYS;
  return false;
#endif
}

void OutputFile::open() {
  const int named = outputDescriptor(path_);
  struct stat status;
  if (path_.empty()) {
    errno = ENOENT;
  } else if (named >= 0) {
    // Opening the name anew would overwrite what a redirection has already put into the file.
    descriptor_ = fcntl(named, F_DUPFD_CLOEXEC, 0);
  } else if (stat(path_.c_str(), &status) != 0) {
    if (errno == ENOENT) openTemporary(kNewMode);
  } else if (!S_ISREG(status.st_mode)) {
    descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC);
  } else if (mayBeWritten(path_, status)) {
    const mode_t mode = status.st_mode & ALLPERMS;
    openTemporary(mode);
    if (descriptor_ >= 0 && fchmod(descriptor_, mode) != 0) throwFor("cannot set permissions");
  }
}

void OutputFile::openTemporary(mode_t mode) {
  target_ = resolvedPath(path_);
  temporary_.emplace(target_);
  descriptor_ = ::open(temporary_->name().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
}

void OutputFile::flushBlock() {
  if (compressed_) {
    writeCompressed(block_);
  } else {
    writeAll(block_);
  }
  block_.clear();
}

void OutputFile::writeCompressed(std::string_view block) {
  packed_.resize(BGZF_MAX_BLOCK_SIZE);
  std::size_t size = packed_.size();
  errno = ENOMEM;  // bgzf_compress() gives no reason of its own
  if (bgzf_compress(packed_.data(), &size, block.data(), block.size(), kDefaultLevel) != 0) {
    throwFor("cannot compress");
  }
  writeAll(std::string_view(packed_).substr(0, size));
}

void OutputFile::writeAll(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throwFor("cannot write");
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void OutputFile::throwFor(const char* action) const { throw OutputError(path_, action, errno); }

}  // namespace velto
