// Unfinished files and folders do not outlive the process when a signal ends it.
#pragma once

#include <string>

namespace velto {

// From now on SIGHUP, SIGINT, SIGTERM and SIGXFSZ remove what is registered and then end the
// process as they do by default. One that is ignored stays ignored. For main().
void cleanUpAtSignals();

// Registers a file, or a folder that is empty once the registered files are gone, while the object
// lives. The last name counts only if there are at most 256 at a time and it fits PATH_MAX; others
// are not removed. Any thread may make and destroy objects.
class RemovedAtSignal {
 public:
  explicit RemovedAtSignal(const std::string& path);
  ~RemovedAtSignal();
  RemovedAtSignal(const RemovedAtSignal&) = delete;
  RemovedAtSignal& operator=(const RemovedAtSignal&) = delete;

 private:
  int slot_;  // -1: not registered
};

}  // namespace velto
