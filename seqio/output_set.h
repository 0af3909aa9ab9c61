// The outputs of a run, which get their names together once all of them are whole.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "seqio/output_file.h"

namespace velto {

// For one thread at a time.
class OutputSet {
 public:
  // Opens one more output, which lives as long as the set. Throws OutputError.
  OutputFile& add(const std::string& path, OutputFile::Format format = OutputFile::Format::kByName);

  // Writes and closes every output before the first one gets its name, so that a full disk or a
  // closed pipe leaves all files as they were; so does a name that cannot be given, as
  // OutputFile::takeBack says. Throws OutputError. To be called once.
  void commit();

  // In place of commit() after a failure: streams, pipes and devices get what was written, files
  // stay as they were. Throws OutputError.
  void finishStreams();

 private:
  std::vector<std::unique_ptr<OutputFile>> files_;
};

}  // namespace velto
