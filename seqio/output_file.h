// An output file that appears under its name only when it is whole.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

#include "seqio/output_error.h"
#include "seqio/temporary_path.h"

namespace velto {

// Writes to a temporary file beside the target, with a random name; commit() renames it, the
// destructor without commit() removes it, and so does a signal (see signal_cleanup.h). A symbolic
// link is followed, so that its target is replaced or made; what is replaced hands its permissions
// on. Standard output and existing pipes and devices are written directly. For one thread at a
// time.
class OutputFile {
 public:
  enum class Format { kByName, kPlain, kGzip };  // kByName: gzip if `path` ends in ".gz"

  // Opens `path`, "-" being standard output. kGzip writes BGZF, which every gzip reader takes.
  // Throws OutputError, for a file that must not be written too.
  explicit OutputFile(std::string path, Format format = Format::kByName);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // True if the bytes go straight to a stream, pipe or device, before commit() too.
  bool isDirect() const { return !temporary_; }

  // Throws OutputError, for this or for earlier text, since text is written in blocks.
  void write(std::string_view text);

  // Writes what is left and closes. Nothing is to be written after that. Throws OutputError.
  void finish();

  // Gives the file its name, after finish() if that has not been called. Throws OutputError if any
  // of it fails; the target is then as it was before. A file that is replaced is kept under the
  // temporary name as long as the object. To be called once.
  void commit();

  // After commit(): what stood under the name stands there again, or nothing if nothing did. Where
  // the file system cannot exchange two names, a file that was replaced cannot come back. The last
  // call.
  void takeBack() noexcept;

 private:
  enum class Committed { kNo, kNew, kExchanged, kReplaced };

  void open();
  void openTemporary(mode_t mode);
  Committed rename();
  bool exchangeNames() const noexcept;
  void flushBlock();
  void writeCompressed(std::string_view block);
  void writeAll(std::string_view bytes);
  [[noreturn]] void throwFor(const char* action) const;

  const std::string path_;  // as given, for messages
  const bool compressed_;
  std::string target_;                      // file that temporary_ is to become
  std::optional<TemporaryPath> temporary_;  // none if the target is written directly
  std::string block_;                       // text not yet written, less than a block
  std::string packed_;                      // scratch: one compressed block
  int descriptor_ = -1;
  Committed committed_ = Committed::kNo;
};

}  // namespace velto
