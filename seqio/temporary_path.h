// The name under which a file or folder is built before it gets its own.
#pragma once

#include <string>

#include "seqio/signal_cleanup.h"

namespace velto {

// A short random name in the folder of a target, so that it fits however long the target's name is
// and what a killed process has left is in nobody's way. Whatever stands under the name is removed,
// with all it holds, when the object goes; by a signal, only a file or an empty folder.
class TemporaryPath {
 public:
  // Makes up the name and nothing else.
  explicit TemporaryPath(const std::string& target);
  ~TemporaryPath();
  TemporaryPath(const TemporaryPath&) = delete;
  TemporaryPath& operator=(const TemporaryPath&) = delete;

  const std::string& name() const { return name_; }

 private:
  const std::string name_;
  const RemovedAtSignal removal_;
};

}  // namespace velto
