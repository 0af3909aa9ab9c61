#include "seqio/line_splitter.h"

#include <cstring>
#include <utility>

namespace velto {
namespace {

constexpr std::size_t kBufferBytes = std::size_t{1} << 18;

}  // namespace

LineSplitter::LineSplitter(std::unique_ptr<ByteStream> bytes, long firstLine)
    : bytes_(std::move(bytes)), buffer_(kBufferBytes), line_(firstLine) {}

int LineSplitter::peek() {
  if (begin_ == end_ && !refill()) return kEnd;
  return static_cast<unsigned char>(buffer_[begin_]);
}

LineSplitter::Piece LineSplitter::take() {
  if (begin_ == end_ && !refill()) return {{}, true};
  if (ends_ == Ends::kNotSeen) return takeToFirstEnd();
  return ends_ == Ends::kLineFeeds ? takeToLineFeed() : takeToCarriageReturn();
}

LineSplitter::Piece LineSplitter::takeToFirstEnd() {
  const std::string_view held(buffer_.data() + begin_, end_ - begin_);
  const std::size_t at = held.find_first_of("\r\n");
  if (at == held.npos) return takeUntil(end_, end_, false);
  if (held[at] == '\n') {
    ends_ = Ends::kLineFeeds;
  } else if (at + 1 < held.size()) {
    ends_ = held[at + 1] == '\n' ? Ends::kLineFeeds : Ends::kCarriageReturns;
  } else if (at > 0) {
    return takeUntil(begin_ + at, begin_ + at, false);
  } else if (!refill()) {
    ends_ = Ends::kCarriageReturns;
  }
  return take();
}

LineSplitter::Piece LineSplitter::takeToLineFeed() {
  const char* bytes = buffer_.data();
  const void* feed = std::memchr(bytes + begin_, '\n', end_ - begin_);
  if (feed != nullptr) {
    const auto at = static_cast<std::size_t>(static_cast<const char*>(feed) - bytes);
    const bool carriageReturn = at > begin_ && bytes[at - 1] == '\r';
    return takeUntil(carriageReturn ? at - 1 : at, at + 1, true);
  }
  // A carriage return at the buffer's end may belong to a line feed not yet read.
  if (bytes[end_ - 1] != '\r') return takeUntil(end_, end_, false);
  if (end_ - begin_ > 1) return takeUntil(end_ - 1, end_ - 1, false);
  if (refill()) return takeToLineFeed();
  return takeUntil(begin_, end_, true);
}

LineSplitter::Piece LineSplitter::takeToCarriageReturn() {
  const char* bytes = buffer_.data();
  const void* end = std::memchr(bytes + begin_, '\r', end_ - begin_);
  if (end == nullptr) return takeUntil(end_, end_, false);
  const auto at = static_cast<std::size_t>(static_cast<const char*>(end) - bytes);
  return takeUntil(at, at + 1, true);
}

// Moves the bytes not yet taken (at most one carriage return) to the front and reads behind them.
bool LineSplitter::refill() {
  const std::size_t kept = end_ - begin_;
  std::memmove(buffer_.data(), buffer_.data() + begin_, kept);
  begin_ = 0;
  end_ = kept;
  const std::size_t count = bytes_->read(buffer_.data() + kept, buffer_.size() - kept);
  end_ += count;
  return count > 0;
}

LineSplitter::Piece LineSplitter::takeUntil(std::size_t textEnd, std::size_t next, bool endsLine) {
  const Piece piece{{buffer_.data() + begin_, textEnd - begin_}, endsLine};
  begin_ = next;
  if (endsLine) ++line_;
  return piece;
}

}  // namespace velto
