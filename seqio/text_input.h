// A text file as a stream: plain, gzip or BGZF, told apart by content like every input.
#pragma once

#include <istream>
#include <streambuf>
#include <string>
#include <vector>

#include "seqio/byte_source.h"

namespace velto {

// For one thread at a time.
class TextInput {
 public:
  // Opens `path`, "-" being standard input. Throws InputError if it cannot be read.
  explicit TextInput(const std::string& path);

  // Reading from it throws InputError with the line if the file is damaged or truncated.
  std::istream& stream() { return stream_; }

 private:
  class Buffer : public std::streambuf {
   public:
    explicit Buffer(const std::string& path);

   protected:
    int_type underflow() override;

   private:
    const std::string path_;  // for messages
    ByteSource bytes_;
    std::vector<char> block_;
    long line_ = 1;  // of the byte after block_
  };

  Buffer buffer_;
  std::istream stream_;
};

}  // namespace velto
