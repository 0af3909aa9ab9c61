#include "workbench/default_model.h"

#include <filesystem>

namespace velto {
namespace {

namespace fs = std::filesystem;

// The installation may have been moved as a whole, so that the program's own place comes first.
fs::path besideProgram() {
  std::error_code unknown;
  const fs::path program = fs::canonical("/proc/self/exe", unknown);
  return unknown ? fs::path()
                 : (program.parent_path() / VELTO_MODEL_FROM_PROGRAM).lexically_normal();
}

}  // namespace

std::string defaultModelDirectory() {
  for (const fs::path& directory : {fs::path("./param-human"), besideProgram()}) {
    std::error_code unreadable;
    if (fs::is_directory(directory, unreadable)) return directory.string();
  }
  return VELTO_INSTALLED_MODEL;
}

}  // namespace velto
