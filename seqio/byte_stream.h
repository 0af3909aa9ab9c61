// Bytes from wherever they are kept.
#pragma once

#include <cstddef>

#include "velto/velto.h"

namespace velto {

// Why bytes could not be read. It knows no place: readers make an InputError of it, which has file,
// record and line.
class ByteError : public Error {
 public:
  using Error::Error;
};

// Hands out bytes from their start to their end; for one thread at a time.
class ByteStream {
 public:
  static constexpr int kEnd = -1;

  virtual ~ByteStream() = default;

  // Copies at least one and at most `size` bytes into `into` (`size` > 0); 0 only at the end.
  // Throws ByteError.
  virtual std::size_t read(char* into, std::size_t size) = 0;
};

}  // namespace velto
