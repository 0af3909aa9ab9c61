#include "seqio/text_input.h"

#include <algorithm>

#include "seqio/input_error.h"

namespace velto {
namespace {

constexpr std::size_t kBlockBytes = std::size_t{1} << 16;

}  // namespace

TextInput::TextInput(const std::string& path) : buffer_(path), stream_(&buffer_) {
  stream_.exceptions(std::ios::badbit);  // else a stream swallows what its buffer throws
}

TextInput::Buffer::Buffer(const std::string& path) try
    : path_(path), bytes_(path), block_(kBlockBytes) {
} catch (const ByteError& error) {
  throw InputError(path, 0, 0, error.what());
}

TextInput::Buffer::int_type TextInput::Buffer::underflow() try {
  const std::size_t count = bytes_.read(block_.data(), block_.size());
  if (count == 0) return traits_type::eof();
  setg(block_.data(), block_.data(), block_.data() + count);
  line_ += std::count(gptr(), egptr(), '\n');
  return traits_type::to_int_type(*gptr());
} catch (const ByteError& error) {
  throw InputError(path_, 0, line_, error.what());
}

}  // namespace velto
