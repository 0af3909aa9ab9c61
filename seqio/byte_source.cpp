#include "seqio/byte_source.h"

#include <fcntl.h>
#include <htslib/bgzf.h>
#include <htslib/hts_log.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace velto {
namespace {

std::string systemReason() { return std::strerror(errno); }

// By descriptor, not by htslib's open, which would take some names for network addresses.
int openDescriptor(const std::string& path) {
  const int descriptor = path == "-" ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                     : open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) throw ByteError("cannot open: " + systemReason());
  struct stat status;
  if (fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
    close(descriptor);
    throw ByteError("is a directory");
  }
  return descriptor;
}

// A plain gzip member is known to be good only at its end, a BGZF block before it is handed out.
[[noreturn]] void throwDamaged(const BGZF& file) {
  if (file.is_gzip) {
    throw ByteError(
        "gzip data truncated or corrupt, here or earlier; do not use any result from this file");
  }
  if (file.is_compressed) throw ByteError("compressed data truncated or corrupt");
  throw ByteError("cannot read: " + systemReason());
}

}  // namespace

ByteSource::ByteSource(const std::string& path) {
  hts_set_log_level(HTS_LOG_OFF);
  const int descriptor = openDescriptor(path);
  file_.reset(bgzf_dopen(descriptor, "r"));
  if (file_) return;
  const std::string reason = systemReason();
  close(descriptor);
  throw ByteError("cannot read: " + reason);
}

int ByteSource::peek() {
  const int byte = bgzf_peek(file_.get());
  if (byte >= 0) return byte;
  if (byte != -1) throwDamaged(*file_);
  requireWholeFile();
  return kEnd;
}

std::string_view ByteSource::held() const {
  const auto* block = static_cast<const char*>(file_->uncompressed_block);
  return {block + file_->block_offset,
          static_cast<std::size_t>(file_->block_length - file_->block_offset)};
}

// Asks for no more than the decompressed block holds: a request that reaches into a damaged block
// loses its good part as well.
std::size_t ByteSource::read(char* into, std::size_t size) {
  if (peek() == kEnd) return 0;
  const ssize_t count = bgzf_read(file_.get(), into, std::min(size, held().size()));
  if (count <= 0) throwDamaged(*file_);
  return static_cast<std::size_t>(count);
}

void ByteSource::requireWholeFile() const {
  if (file_->no_eof_block) throw ByteError("truncated: the BGZF end-of-file block is missing");
}

void ByteSource::Close::operator()(BGZF* file) const { bgzf_close(file); }

}  // namespace velto
