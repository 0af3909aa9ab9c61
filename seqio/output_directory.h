// An output folder that appears under its name only when all its files are whole.
#pragma once

#include <map>
#include <string>

#include "seqio/output_error.h"
#include "seqio/temporary_path.h"

namespace velto {

// Builds a temporary folder with a random name beside the target; commit() renames it, the
// destructor without commit() removes it with all it holds. A signal removes it with all that
// write() made (see signal_cleanup.h). For one thread at a time.
class OutputDirectory {
 public:
  // Makes the temporary folder. An existing `path` must be an empty folder. Throws OutputError.
  explicit OutputDirectory(const std::string& path);
  OutputDirectory(const OutputDirectory&) = delete;
  OutputDirectory& operator=(const OutputDirectory&) = delete;

  // The temporary folder.
  const std::string& path() const { return temporary_.name(); }

  // Makes a file of the folder; `name` may begin with the names of folders in it, which are made
  // where missing. Throws OutputError.
  void write(const std::string& name, const std::string& text);

  // Renames the folder to its name. Throws OutputError; the target is then as it was before. To be
  // called once, as the last call.
  void commit();

 private:
  void makeFolders(const std::string& name);
  void checkTarget() const;

  const std::string target_;  // absolute, links followed, without '/' at its end
  const TemporaryPath temporary_;
  std::map<std::string, RemovedAtSignal> contents_;  // what write() made, by its path
};

}  // namespace velto
