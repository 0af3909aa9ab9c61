// Bytes that are in memory already.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "seqio/byte_stream.h"

namespace velto {

class MemoryBytes : public ByteStream {
 public:
  explicit MemoryBytes(std::string bytes) : bytes_(std::move(bytes)) {}

  std::size_t read(char* into, std::size_t size) override {
    const std::size_t count = std::min(size, bytes_.size() - taken_);
    std::memcpy(into, bytes_.data() + taken_, count);
    taken_ += count;
    return count;
  }

 private:
  const std::string bytes_;
  std::size_t taken_ = 0;
};

}  // namespace velto
