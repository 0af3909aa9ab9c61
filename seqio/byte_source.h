// The bytes of an input file after decompression: plain, gzip (several members too) or BGZF.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "seqio/byte_stream.h"

struct BGZF;

namespace velto {

// Reads one file from its start to its end; for one thread at a time. Switches off htslib's own
// messages in the whole process, since every failure comes back as a ByteError.
class ByteSource : public ByteStream {
 public:
  // Opens `path`, "-" being standard input. Throws ByteError.
  explicit ByteSource(const std::string& path);

  // The next byte, left in place, or kEnd. Throws ByteError.
  int peek();

  // The bytes that are decompressed already and come next; after peek() none only at the end. Valid
  // until the next call.
  std::string_view held() const;

  // 0 only at the end of a complete file. Throws ByteError, after all bytes before the damaged
  // block were handed out. The bytes of a plain gzip member are handed out before its checksum, and
  // wrong ones if it is damaged.
  std::size_t read(char* into, std::size_t size) override;

  // Throws ByteError if the file is BGZF and stopped without its end-of-file block. To be asked
  // once a reader of handle() has met the end; peek() and read() ask by themselves.
  void requireWholeFile() const;

  // For htslib's own readers; stays owned by this object.
  BGZF* handle() { return file_.get(); }

 private:
  struct Close {
    void operator()(BGZF* file) const;
  };
  std::unique_ptr<BGZF, Close> file_;
};

}  // namespace velto
