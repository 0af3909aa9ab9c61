#include "workbench/installed_models.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "predict/model_card.h"

namespace velto {
namespace {

namespace fs = std::filesystem;

bool isDirectory(const fs::path& path) {
  std::error_code unreadable;
  return fs::is_directory(path, unreadable);
}

// The installation may have been moved as a whole, so that the program's own place comes first.
fs::path besideProgram() {
  std::error_code unknown;
  const fs::path program = fs::canonical("/proc/self/exe", unknown);
  return unknown ? fs::path()
                 : (program.parent_path() / VELTO_MODEL_FROM_PROGRAM).lexically_normal();
}

std::vector<InstalledModel> directoriesIn(const fs::path& folder) {
  std::vector<InstalledModel> models;
  std::error_code unreadable;
  for (fs::directory_iterator entry(folder, unreadable), end; entry != end;
       entry.increment(unreadable)) {
    if (!fs::exists(entry->path() / kModelCardFile, unreadable)) continue;
    models.push_back({entry->path().filename().string(), entry->path().string()});
  }
  std::sort(models.begin(), models.end(),
            [](const InstalledModel& a, const InstalledModel& b) { return a.name < b.name; });
  return models;
}

}  // namespace

std::string defaultModelDirectory() {
  for (const fs::path& directory : {fs::path("./param-human"), besideProgram()}) {
    if (isDirectory(directory)) return directory.string();
  }
  return VELTO_INSTALLED_MODEL;
}

std::vector<InstalledModel> installedModels() {
  const fs::path human = defaultModelDirectory();
  std::vector<InstalledModel> models = directoriesIn(human.parent_path() / "models");
  if (isDirectory(human)) models.insert(models.begin(), {"human", human.string()});
  return models;
}

CLI::Validator modelDirectory() {
  const auto resolve = [](std::string& name) -> std::string {
    if (name.find('/') != std::string::npos) return "";
    for (const InstalledModel& model : installedModels()) {
      if (model.name != name) continue;
      name = model.directory;
      return "";
    }
    std::error_code unreadable;
    if (fs::exists(name, unreadable)) return "";
    return "'" + name + "' is no model directory and no installed model; velto models lists those";
  };
  return CLI::Validator(resolve, "");
}

}  // namespace velto
