#include "core/file_source.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "velto/velto.h"

namespace velto {

bool FolderSource::has(const std::string& name) const {
  std::error_code ignored;
  return std::filesystem::exists(path(name), ignored);
}

std::unique_ptr<std::istream> FolderSource::open(const std::string& name) const {
  const std::string file = path(name);
  std::error_code unknown;
  if (std::filesystem::is_directory(file, unknown)) throw ModelError(file, 0, 0, "is a directory");
  auto in = std::make_unique<std::ifstream>(file, std::ios::binary);
  if (!*in) throw ModelError(file, 0, 0, "cannot be opened");
  return in;
}

std::unique_ptr<std::istream> MemorySource::open(const std::string& name) const {
  const auto text = texts_.find(name);
  if (text == texts_.end()) throw ModelError(name, 0, 0, "is missing");
  return std::make_unique<std::istringstream>(text->second);
}

}  // namespace velto
