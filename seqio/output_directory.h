// An output folder that appears under its name only when all its files are whole.
#pragma once

#include <string>

#include "seqio/output_error.h"

namespace velto {

// Builds "PATH.tmp-PID" beside the target; commit() renames it, the destructor without commit()
// removes it with all it holds. For one thread at a time.
class OutputDirectory {
 public:
  // Makes the temporary folder. An existing `path` must be an empty folder, or any folder if
  // `replace`. Throws OutputError.
  explicit OutputDirectory(const std::string& path, bool replace = false);
  ~OutputDirectory();
  OutputDirectory(const OutputDirectory&) = delete;
  OutputDirectory& operator=(const OutputDirectory&) = delete;

  // The temporary folder, for the caller to fill before commit().
  const std::string& path() const { return temporary_; }

  // Renames the folder to its name. A folder to be replaced is moved aside to "PATH.old-PID"
  // first, moved back if the renaming fails, and removed at last. Throws OutputError; the target
  // is then as it was before. To be called once, as the last call.
  void commit();

 private:
  void checkTarget() const;
  void replaceTarget();
  void renameOrThrow(const std::string& from, const std::string& to) const;

  const std::string target_;  // absolute, links followed, without '/' at its end
  const std::string temporary_;
  const bool replace_;
  bool pending_ = true;  // temporary_ is to be removed
};

}  // namespace velto
