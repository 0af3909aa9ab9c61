// Cuts a byte source into lines of any length without holding a line in memory.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "seqio/byte_stream.h"

namespace velto {

// The first line's end decides for the whole file: a lone carriage return, as old Macs wrote it, or
// a line feed, with or without a carriage return before it. The other byte is then part of its
// line.
class LineSplitter {
 public:
  struct Piece {
    std::string_view text;  // without the bytes that end the line
    bool endsLine;          // true if the line (or the file) ends after it
  };
  static constexpr int kEnd = ByteStream::kEnd;

  // `bytes` is not null; its first line has the number `firstLine`.
  explicit LineSplitter(std::unique_ptr<ByteStream> bytes, long firstLine = 1);

  // The next byte, left in place, or kEnd. Throws ByteError.
  int peek();

  // The next part of the current line, valid until the next call. The end of the file ends a line
  // like a line feed does. Throws ByteError.
  Piece take();

  // Number of the line that the next byte belongs to.
  long line() const { return line_; }

 private:
  enum class Ends { kNotSeen, kLineFeeds, kCarriageReturns };

  bool refill();
  Piece takeToFirstEnd();
  Piece takeToLineFeed();
  Piece takeToCarriageReturn();
  Piece takeUntil(std::size_t textEnd, std::size_t next, bool endsLine);

  std::unique_ptr<ByteStream> bytes_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0;  // the bytes not yet taken are [begin_, end_) of buffer_
  std::size_t end_ = 0;
  long line_;
  Ends ends_ = Ends::kNotSeen;
};

}  // namespace velto
