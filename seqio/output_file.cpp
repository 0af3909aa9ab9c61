#include "seqio/output_file.h"

#include <fcntl.h>
#include <htslib/bgzf.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

namespace velto {
namespace {

constexpr std::size_t kBlockBytes = BGZF_BLOCK_SIZE;  // largest that one BGZF block takes
constexpr int kDefaultLevel = -1;                     // of compression
constexpr mode_t kMode = 0666;                        // less the umask

bool endsWithGz(const std::string& path) {
  return path.size() >= 3 && path.compare(path.size() - 3, 3, ".gz") == 0;
}

// The descriptor that a name such as /dev/stdout stands for, else -1. Opening such a name anew
// would overwrite what a redirection has already put into the file.
int namedDescriptor(const std::string& path) {
  if (path == "-" || path == "/dev/stdout") return STDOUT_FILENO;
  if (path == "/dev/stderr") return STDERR_FILENO;
  for (const std::string folder : {"/dev/fd/", "/proc/self/fd/"}) {
    const std::string number =
        path.substr(0, folder.size()) == folder ? path.substr(folder.size()) : std::string();
    const bool digits = number.find_first_not_of("0123456789") == number.npos;
    if (!number.empty() && number.size() < 6 && digits) return std::stoi(number);
  }
  return -1;
}

// The file that `path` leads to over symbolic links; `path` itself if there is none yet.
std::string followLinks(const std::string& path) {
  std::error_code missing;
  const std::filesystem::path real = std::filesystem::canonical(path, missing);
  return missing ? path : real.string();
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
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void OutputFile::write(std::string_view text) {
  while (!text.empty()) {
    const std::size_t part = std::min(text.size(), kBlockBytes - block_.size());
    block_.append(text.substr(0, part));
    text.remove_prefix(part);
    if (block_.size() == kBlockBytes) flushBlock();
  }
}

void OutputFile::commit() {
  if (!block_.empty()) flushBlock();
  if (compressed_) writeCompressed({});  // an empty block marks the end of a BGZF file
  if (close(std::exchange(descriptor_, -1)) != 0) throwFor("cannot write");
  if (temporary_.empty()) return;
  if (rename(temporary_.c_str(), target_.c_str()) != 0) throwFor("cannot rename to this name");
  temporary_.clear();
}

void OutputFile::open() {
  const int named = namedDescriptor(path_);
  struct stat status;
  if (path_.empty()) {
    errno = ENOENT;
  } else if (named >= 0) {
    descriptor_ = fcntl(named, F_DUPFD_CLOEXEC, 0);
  } else if (stat(path_.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
    descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC);
  } else {
    openTemporary();
  }
}

void OutputFile::openTemporary() {
  target_ = followLinks(path_);
  const std::string name = target_ + ".tmp-" + std::to_string(getpid());
  descriptor_ = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kMode);
  if (descriptor_ < 0) throw OutputError(path_, "cannot make " + name, errno);
  temporary_ = name;
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
